// The window for languages that are read from right to left: everything changes sides.
#include "WindowFixture.h"

#include <QGuiApplication>
#include <QQuickWindow>

#include <algorithm>
#include <cmath>
#include <map>

namespace vellmoor {
namespace {

class MirroredTest : public WindowTest {
protected:
    void TearDown() override {
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
        WindowTest::TearDown();
    }
};
INSTANTIATE_IN_BOTH_LANGUAGES(MirroredTest);

/// Where an item is drawn in the window; of a text, where its letters are.
QRectF drawnPlace(const QQuickItem& item) {
    QRectF place(0, 0, item.width(), item.height());
    const QVariant alignment = item.property("effectiveHorizontalAlignment");
    const QVariant letters = item.property("contentWidth");
    const QVariant padding = item.property("leftPadding");
    if (alignment.isValid() && letters.isValid() && padding.isValid()) {
        place.adjust(padding.toReal(), 0, -item.property("rightPadding").toReal(), 0);
        const double room = std::max(0.0, place.width() - letters.toReal());
        if (alignment.toInt() == Qt::AlignRight) {
            place.setLeft(place.left() + room);
        } else if (alignment.toInt() == Qt::AlignHCenter) {
            place.adjust(room / 2, 0, -room / 2, 0);
        } else {
            place.setRight(place.right() - room);
        }
    }
    return item.mapRectToScene(place);
}

/// What a user sees of it, for a message.
QString described(const QQuickItem& item) {
    QString path;
    for (const QQuickItem* at = &item; at != nullptr && path.count(QLatin1Char('<')) < 4; at = at->parentItem()) {
        path += QStringLiteral(" < %1").arg(
            at->objectName().isEmpty()
                ? QString::fromLatin1(at->metaObject()->className()).section(QStringLiteral("_QML"), 0, 0)
                : at->objectName());
    }
    return QStringLiteral("\"%1\"%2").arg(item.property("text").toString(), path);
}

/// Where everything of one description is drawn: a list may make its rows anew when it changes sides.
using Places = std::multimap<QString, QRectF>;

/// Texts, pictures and whatever has a name, as far as it is shown.
void collect(const QQuickItem& item, Places& places) {
    const bool forReadersOnly = item.objectName().startsWith(QLatin1String("announcer."));
    if (!item.isVisible() || item.opacity() == 0 || forReadersOnly) {
        return;
    }
    const bool isText = item.property("effectiveHorizontalAlignment").isValid();
    if (item.width() > 0 && item.height() > 0 &&
        (isText || item.inherits("QQuickImage") || !item.objectName().isEmpty())) {
        places.emplace(described(item), drawnPlace(item));
    }
    for (const QQuickItem* child : item.childItems()) {
        collect(*child, places);
    }
}

Places placesIn(const QQuickWindow& window) {
    Places places;
    collect(*window.contentItem(), places);
    return places;
}

/// Not seen: a label in the middle of a button stands on a whole pixel, and so does the button. Qt 6.8 has texts whose
/// width is none.
constexpr double rounding = 2;

bool isMirrored(const Places& before, const QString& what, QRectF place, double width) {
    const auto [first, last] = before.equal_range(what);
    return std::any_of(first, last, [&](const auto& other) {
        return std::abs(place.top() - other.second.top()) < rounding &&
               std::abs(place.left() - (width - other.second.right())) < rounding;
    });
}

TEST_P(MirroredTest, EverythingChangesSides) {
    constexpr std::size_t sheet = allCleanerModules.size(); // what is below it is seen through its shade
    const auto look = [this] {
        open();
        std::vector<Places> seen;
        for (const CleanerModule module : allCleanerModules) {
            window().show(module);
            window().scan();
            window().settle();
            seen.push_back(placesIn(window().main().window()));
        }
        window().show(CleanerModule::smartScan);
        EXPECT_TRUE(window().click(QStringLiteral("previewButton")));
        window().settle();
        seen.push_back(placesIn(window().main().window()));
        return seen;
    };
    const std::vector<Places> before = look();
    const double width = window().main().window().width();
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    const std::vector<Places> after = look();
    for (std::size_t view = 0; view <= sheet; ++view) {
        EXPECT_GT(after[view].size(), 100U);
        EXPECT_EQ(after[view].size(), before[view].size());
        for (const auto& [what, place] : after[view]) {
            EXPECT_TRUE(isMirrored(before[view], what, place, width))
                << what.toStdString() << " at " << place.left() << "," << place.top() << " on "
                << (view == sheet ? "the sheet" : rawValue(allCleanerModules[view]));
        }
    }
}

} // namespace
} // namespace vellmoor
