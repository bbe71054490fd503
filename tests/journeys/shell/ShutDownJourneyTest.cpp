// The whole program, from its start to its end: it is quit in the middle of what it does.
#include "OwnQt.h"
#include "ThrowAwayHome.h"
#include "start/Application.h"
#include "texts/L.h"

#include <QApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <grp.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace vellmoor::journey {
namespace {

/// What a test does once the program's window stands.
std::function<void(QQuickWindow&)>& script() {
    static std::function<void(QQuickWindow&)> steps;
    return steps;
}

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

void startScript() {
    QTimer::singleShot(0, qApp, [] {
        const QWindowList windows = QGuiApplication::topLevelWindows();
        auto* window = windows.isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(windows.front());
        // The window stands before its views do.
        if (window == nullptr || !script() ||
            !QTest::qWaitFor([&] { return find(*window, "scanButton") != nullptr; }, 30'000)) {
            QCoreApplication::exit(EXIT_FAILURE);
            return;
        }
        script()(*window);
        if (::testing::Test::HasFatalFailure()) {
            QCoreApplication::exit(EXIT_FAILURE); // else it would wait for a hand that never comes
        }
    });
}
Q_COREAPP_STARTUP_FUNCTION(startScript)

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

    /// Runs the program through `steps` in a process of its own, as `user`. It must come to its own end, successfully:
    /// the way out past a worker that does not answer has another status.
    static void runThrough(std::function<void(QQuickWindow&)> steps, uid_t user = ::geteuid()) {
        std::fflush(nullptr);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            script() = std::move(steps);
            becomeUser(user);
            runProgram();
            std::fflush(nullptr);
            std::_Exit(HasFailure() ? EXIT_FAILURE : cameToItsEnd);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status), cameToItsEnd);
    }

private:
    static constexpr int cameToItsEnd = 42;

    static void runProgram() {
        int count = 1;
        std::string name = "vellmoor";
        char* arguments[] = {name.data(), nullptr};
        EXPECT_EQ(runApplication(count, static_cast<char**>(arguments)), EXIT_SUCCESS);
    }
    static void becomeUser(uid_t user) {
        if (user == ::geteuid()) {
            return;
        }
        for (const auto& entry : fs::recursive_directory_iterator(home())) {
            ASSERT_EQ(::lchown(entry.path().c_str(), user, user), 0);
        }
        ASSERT_EQ(::chown(home().c_str(), user, user), 0);
        ASSERT_EQ(::setgroups(0, nullptr), 0);
        ASSERT_EQ(::setresgid(user, user, user), 0);
        ASSERT_EQ(::setresuid(user, user, user), 0);
    }
};

TEST_F(ShutDownJourney, ClosingTheWindowDuringAScanEndsTheProgramAndTouchesNothing) {
    const auto before = tree();
    const auto started = std::chrono::steady_clock::now();
    runThrough([](QQuickWindow& window) {
        ASSERT_TRUE(click(window, "scanButton"));
        EXPECT_EQ(textOf(window, "scanButton"), tr("取消扫描"));
        window.close(); // there is no tray here to stay in
    });
    EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(30));
    EXPECT_EQ(tree(), before);
}

TEST_F(ShutDownJourney, QuittingByTheKeyboardDuringAScanEndsTheProgram) {
    const auto before = tree();
    runThrough([](QQuickWindow& window) {
        window.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        ASSERT_TRUE(click(window, "scanButton"));
        EXPECT_EQ(textOf(window, "scanButton"), tr("取消扫描"));
        QTest::keyClick(&window, Qt::Key_Q, Qt::ControlModifier);
    });
    EXPECT_EQ(tree(), before);
}

TEST_F(ShutDownJourney, ACleanThatWasConfirmedIsFinishedBeforeTheProgramEnds) {
    runThrough([](QQuickWindow& window) {
        ASSERT_TRUE(click(window, "sidebar.systemJunk"));
        ASSERT_TRUE(click(window, "scanButton"));
        ASSERT_TRUE(click(window, "cleanButton"));
        ASSERT_TRUE(click(window, "details.clean"));
        ASSERT_TRUE(click(window, "confirm.accept"));
        EXPECT_EQ(textOf(window, "cleanButton"), tr("清理中..."));
        window.close();
        // It asks first; a clean that came to its end meanwhile leaves nothing to ask.
        if (window.isVisible() && find(window, "closing.finish") != nullptr) {
            click(window, "closing.finish");
        } else if (window.isVisible()) {
            window.close();
        }
    });
    for (int folder = 0; folder < folders; ++folder) {
        const std::string name = "program-" + std::to_string(folder);
        EXPECT_TRUE(isTrashed(name)) << name;
        EXPECT_FALSE(has(".cache/" + name)) << name;
    }
    const auto trashed = tree(".local/share/Trash/files");
    EXPECT_EQ(trashed.size(), std::size_t{folders} * (filesInEach + 1)) << "nothing was lost on the way";
    EXPECT_TRUE(has("Documents/letter.txt"));
}

TEST_F(ShutDownJourney, ASessionThatEndsDuringACleanWaitsForThePathAtHandOnly) {
    constexpr int many = 3'000;
    for (int folder = 0; folder < many; ++folder) {
        makeFile(".cache/small-" + std::to_string(folder) + "/part", 10);
    }
    runThrough([](QQuickWindow& window) {
        ASSERT_TRUE(click(window, "sidebar.systemJunk"));
        ASSERT_TRUE(click(window, "scanButton"));
        ASSERT_TRUE(click(window, "cleanButton"));
        ASSERT_TRUE(click(window, "details.clean"));
        ASSERT_TRUE(click(window, "confirm.accept"));
        EXPECT_EQ(textOf(window, "cleanButton"), tr("清理中..."));
        ::raise(SIGTERM);
    });
    int moved = 0;
    for (int folder = 0; folder < many; ++folder) {
        const std::string name = "small-" + std::to_string(folder);
        const bool isThere = has(".cache/" + name + "/part");
        EXPECT_NE(isThere, has(".local/share/Trash/files/" + name + "/part")) << name << " is in two places or none";
        EXPECT_NE(isThere, isTrashed(name)) << name;
        moved += isThere ? 0 : 1;
    }
    EXPECT_LT(moved, many) << "it went on although the session ended";
    EXPECT_TRUE(has("Documents/letter.txt"));
}

TEST_F(ShutDownJourney, AQuietProgramEndsWhenItsWindowIsClosed) {
    const auto before = tree();
    runThrough([](QQuickWindow& window) { window.close(); });
    EXPECT_EQ(tree(), before) << "it keeps nothing but its own state";
}

TEST_F(ShutDownJourney, RootIsToldThatItLooksAtItsOwnHome) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "needs root";
    }
    runThrough([](QQuickWindow& window) {
        EXPECT_EQ(textOf(window, "rootNotice"), tr("Vellmoor 正以 root 身份运行"));
        window.close();
    });
}

TEST_F(ShutDownJourney, AnOrdinaryUserSeesNoNoticeOfRoot) {
    constexpr uid_t nobody = 65534;
    runThrough(
        [](QQuickWindow& window) {
            EXPECT_EQ(find(window, "rootNotice"), nullptr);
            window.close();
        },
        ::geteuid() == 0 ? nobody : ::geteuid());
}

} // namespace
} // namespace vellmoor::journey

int main(int argc, char** argv) {
    const vellmoor::journey::ThrowAwayHome home;
    vellmoor::test::useOwnQt();
    qputenv("GSETTINGS_BACKEND", "memory"); // the desktop's own store would make a file
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
