// The whole program, from its start to its end: it is quit in the middle of what it does.
#include "Application.h"
#include "L.h"
#include "ThrowAwayHome.h"

#include <QApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <grp.h>
#include <unistd.h>

namespace vellmoor::journey {
namespace {

/// What a test does once the program's window stands.
std::function<void(QQuickWindow&)>& script() {
    static std::function<void(QQuickWindow&)> steps;
    return steps;
}

void startScript() {
    QTimer::singleShot(0, qApp, [] {
        const QWindowList windows = QGuiApplication::topLevelWindows();
        auto* window = windows.isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(windows.front());
        if (window == nullptr || !script()) {
            QCoreApplication::exit(EXIT_FAILURE);
            return;
        }
        script()(*window);
    });
}
Q_COREAPP_STARTUP_FUNCTION(startScript)

QQuickItem* findBelow(QQuickItem* item, const QString& name) {
    if (item->objectName() == name && item->isVisible()) {
        return item;
    }
    for (QQuickItem* child : item->childItems()) {
        if (QQuickItem* found = findBelow(child, name)) {
            return found;
        }
    }
    return nullptr;
}

QQuickItem* find(const QQuickWindow& window, const char* name) {
    return findBelow(window.contentItem(), QString::fromLatin1(name));
}

QString textOf(const QQuickWindow& window, const char* name) {
    const QQuickItem* item = find(window, name);
    return item == nullptr ? QString() : item->property("text").toString();
}

QString tr(const char* key) {
    return QString::fromStdString(L::tr(key));
}

bool click(QQuickWindow& window, const char* name) {
    const auto isReady = [&] {
        const QQuickItem* item = find(window, name);
        return item != nullptr && item->isEnabled();
    };
    if (!QTest::qWaitFor(isReady, 30'000)) {
        return false;
    }
    window.grabWindow(); // places what was just shown
    const QQuickItem* item = find(window, name);
    const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(&window, Qt::LeftButton, Qt::NoModifier, centre.toPoint());
    return true;
}

class ShutDownJourney : public ::testing::Test {
protected:
    static constexpr int folders = 60;
    static constexpr int filesInEach = 40;

    ShutDownJourney() {
        emptiedHome();
        for (int folder = 0; folder < folders; ++folder) {
            for (int number = 0; number < filesInEach; ++number) {
                makeFile(".cache/program-" + std::to_string(folder) + "/" + std::to_string(number), 100);
            }
        }
        makeFile("Documents/letter.txt", 5'000);
    }

    /// Runs the program through `steps` to its end; its exit status.
    static int runThrough(std::function<void(QQuickWindow&)> steps) {
        script() = std::move(steps);
        int count = 1;
        std::string name = "vellmoor";
        char* arguments[] = {name.data(), nullptr};
        return runApplication(count, static_cast<char**>(arguments));
    }
};

TEST_F(ShutDownJourney, ClosingTheWindowDuringAScanEndsTheProgramAndTouchesNothing) {
    const auto before = tree();
    bool wasScanning = false;
    std::chrono::steady_clock::time_point closed;
    const int status = runThrough([&](QQuickWindow& window) {
        ASSERT_TRUE(click(window, "scanButton"));
        wasScanning = textOf(window, "scanButton") == tr("取消扫描");
        closed = std::chrono::steady_clock::now();
        window.close(); // there is no tray here to stay in
    });
    EXPECT_EQ(status, EXIT_SUCCESS);
    EXPECT_TRUE(wasScanning);
    EXPECT_LT(std::chrono::steady_clock::now() - closed, std::chrono::seconds(10));
    EXPECT_EQ(tree(), before);
}

TEST_F(ShutDownJourney, QuittingByTheKeyboardDuringAScanEndsTheProgram) {
    const auto before = tree();
    bool wasScanning = false;
    const int status = runThrough([&](QQuickWindow& window) {
        window.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        ASSERT_TRUE(click(window, "scanButton"));
        wasScanning = textOf(window, "scanButton") == tr("取消扫描");
        QTest::keyClick(&window, Qt::Key_Q, Qt::ControlModifier);
    });
    EXPECT_EQ(status, EXIT_SUCCESS);
    EXPECT_TRUE(wasScanning);
    EXPECT_EQ(tree(), before);
}

TEST_F(ShutDownJourney, ACleanThatWasConfirmedIsFinishedBeforeTheProgramEnds) {
    bool wasCleaning = false;
    const int status = runThrough([&](QQuickWindow& window) {
        ASSERT_TRUE(click(window, "sidebar.systemJunk"));
        ASSERT_TRUE(click(window, "scanButton"));
        ASSERT_TRUE(click(window, "cleanButton"));
        ASSERT_TRUE(click(window, "confirm.accept"));
        wasCleaning = textOf(window, "cleanButton") == tr("清理中...");
        window.close();
    });
    EXPECT_EQ(status, EXIT_SUCCESS);
    EXPECT_TRUE(wasCleaning);
    for (int folder = 0; folder < folders; ++folder) {
        const std::string name = "program-" + std::to_string(folder);
        EXPECT_TRUE(isTrashed(name)) << name;
        EXPECT_FALSE(has(".cache/" + name)) << name;
    }
    const auto trashed = tree(".local/share/Trash/files");
    EXPECT_EQ(trashed.size(), std::size_t{folders} * (filesInEach + 1)) << "nothing was lost on the way";
    EXPECT_TRUE(has("Documents/letter.txt"));
}

TEST_F(ShutDownJourney, AQuietProgramEndsWhenItsWindowIsClosed) {
    const auto before = tree();
    EXPECT_EQ(runThrough([](QQuickWindow& window) { window.close(); }), EXIT_SUCCESS);
    EXPECT_EQ(tree(), before) << "it keeps no file but its one setting, which was not changed";
}

TEST_F(ShutDownJourney, RootIsToldThatItLooksAtItsOwnHome) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "needs root";
    }
    QString notice;
    runThrough([&](QQuickWindow& window) {
        ASSERT_TRUE(QTest::qWaitFor([&] { return find(window, "rootNotice") != nullptr; }, 30'000));
        notice = textOf(window, "rootNotice");
        window.close();
    });
    EXPECT_EQ(notice, tr("Vellmoor 正以 root 身份运行"));
}

TEST_F(ShutDownJourney, AnOrdinaryUserSeesNoNoticeOfRoot) {
    if (::geteuid() == 0) {
        constexpr uid_t nobody = 65534;
        for (const auto& entry : fs::recursive_directory_iterator(home())) {
            ASSERT_EQ(::lchown(entry.path().c_str(), nobody, nobody), 0);
        }
        ASSERT_EQ(::chown(home().c_str(), nobody, nobody), 0);
        ASSERT_EQ(::setgroups(0, nullptr), 0);
        ASSERT_EQ(::setresgid(nobody, nobody, nobody), 0);
        ASSERT_EQ(::setresuid(nobody, nobody, nobody), 0);
    }
    bool isTold = true;
    const int status = runThrough([&](QQuickWindow& window) {
        ASSERT_TRUE(QTest::qWaitFor([&] { return find(window, "scanButton") != nullptr; }, 30'000));
        isTold = find(window, "rootNotice") != nullptr;
        window.close();
    });
    EXPECT_EQ(status, EXIT_SUCCESS);
    EXPECT_FALSE(isTold);
}

} // namespace
} // namespace vellmoor::journey

int main(int argc, char** argv) {
    const vellmoor::journey::ThrowAwayHome home;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("GSETTINGS_BACKEND", "memory"); // the desktop's own store would make a file
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
