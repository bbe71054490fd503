// What a screen reader is told beyond what Qt Quick says by itself.
#include "WindowFixture.h"

#include <QAccessible>
#include <QtGlobal>

namespace vellmoor {
namespace {

class SpokenTest : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        QAccessible::setActive(true);
    }
    void TearDown() override {
        WindowTest::TearDown();
        QAccessible::setActive(false);
    }
    [[nodiscard]] QAccessibleInterface* spoken(const char* objectName) {
        QQuickItem* item = window().item(QString::fromUtf8(objectName));
        return item == nullptr ? nullptr : nearest(*item);
    }
    /// Of the item, or of the row that it holds.
    static QAccessibleInterface* nearest(QQuickItem& item) {
        QAccessibleInterface* own = QAccessible::queryAccessibleInterface(&item);
        // To Qt 6.8 what a list makes is an object of its own, around the row.
        if (own != nullptr && own->role() != QAccessible::Client) {
            return own;
        }
        for (QQuickItem* child : item.childItems()) {
            if (QAccessibleInterface* found = nearest(*child)) {
                return found;
            }
        }
        return nullptr;
    }
    [[nodiscard]] QAccessible::State state(const char* objectName) {
        QAccessibleInterface* found = spoken(objectName);
        EXPECT_NE(found, nullptr) << objectName;
        return found == nullptr ? QAccessible::State() : found->state();
    }
};
INSTANTIATE_IN_BOTH_LANGUAGES(SpokenTest);

/// The names of the rows below it that a reader comes to.
QStringList spokenRows(QAccessibleInterface* above) {
    QStringList names;
    for (int place = 0; place < above->childCount(); ++place) {
        QAccessibleInterface* child = above->child(place);
        if (child == nullptr || child->state().invisible) {
            continue;
        }
        if (child->role() == QAccessible::ListItem) {
            names << child->text(QAccessible::Name);
        }
        names << spokenRows(child);
    }
    return names;
}

TEST_P(SpokenTest, ARowThatFadesIsNotRead) {
    desktop().setLook({.reducedMotion = false});
    openScanned(CleanerModule::largeFiles);
    CleanupListModel& files = *window().main().model().largeFiles();
    const QStringList all = spokenRows(spoken("cleanupList"));
    ASSERT_GT(all.size(), 3);
    files.setSearch(files.index(0).data(CleanupListModel::TitleRole).toString());
    window().settle();
    EXPECT_EQ(spokenRows(spoken("cleanupList")), QStringList{all.front()});
}

TEST_P(SpokenTest, AButtonThatIsOfNoUseIsDisabled) {
    open();
    EXPECT_TRUE(state("cleanButton").disabled);
    EXPECT_FALSE(state("scanButton").disabled);
    window().scan();
    EXPECT_FALSE(state("cleanButton").disabled);
}

TEST_P(SpokenTest, ABoxThatStartsTickedIsToldWhenItIsUnticked) {
    openScanned(CleanerModule::systemJunk);
    EXPECT_TRUE(state("item.0.toggle").checked);
    EXPECT_TRUE(state("item.0").checked);
    ASSERT_TRUE(window().click(QStringLiteral("item.0.toggle")));
    EXPECT_FALSE(state("item.0.toggle").checked);
    EXPECT_FALSE(state("item.0").checked);
    EXPECT_TRUE(state("item.0").checkable);
}

TEST_P(SpokenTest, APartlyTickedCategoryIsMixed) {
    openScanned(CleanerModule::systemJunk);
    ASSERT_TRUE(window().click(QStringLiteral("item.0.expand")));
    ASSERT_TRUE(window().click(QStringLiteral("item.0.target.0.toggle")));
    EXPECT_TRUE(state("item.0").checkStateMixed);
    EXPECT_FALSE(state("item.0").checked);
}

TEST_P(SpokenTest, ACategoryTellsWhetherItIsUnfolded) {
    openScanned(CleanerModule::systemJunk);
    EXPECT_TRUE(state("item.0").expandable);
    EXPECT_TRUE(state("item.0").collapsed);
    ASSERT_TRUE(window().click(QStringLiteral("item.0.expand")));
    EXPECT_TRUE(state("item.0").expanded);
    EXPECT_FALSE(state("item.0").collapsed);
}

TEST_P(SpokenTest, WhatIsLockedCannotBeTicked) {
    openScanned(CleanerModule::privacy);
    EXPECT_FALSE(state("item.0").checkable);
}

TEST_P(SpokenTest, TheGaugeOfMemoryHasAValue) {
    openScanned(CleanerModule::memoryOptimization);
    QQuickItem* text = window().item(QStringLiteral("pressure"));
    ASSERT_NE(text, nullptr);
    QAccessibleInterface* gauge = QAccessible::queryAccessibleInterface(text->parentItem()->parentItem());
    ASSERT_NE(gauge, nullptr);
    EXPECT_EQ(gauge->role(), QAccessible::ProgressBar);
    ASSERT_NE(gauge->valueInterface(), nullptr);
    const double share = gauge->valueInterface()->currentValue().toDouble();
    EXPECT_NEAR(share, store().memorySnapshot().usagePercent() / 100.0, 0.001);
}

TEST_P(SpokenTest, AFilterIsNamedByWhatItChoosesAndNotByItsValueAlone) {
    openScanned(CleanerModule::largeFiles);
    EXPECT_EQ(spoken("kindFilter")->text(QAccessible::Name), tr("种类") + QLatin1Char(' ') + tr("全部"));
    EXPECT_TRUE(state("kindFilter").expandable);
}

TEST_P(SpokenTest, AScanIsToldFromItsStartByQuartersToItsEnd) {
    service().onScan([](CleanerModule module, const ProgressCallback& progress, const CancelToken&) {
        for (const double fraction : {0.1, 0.3, 0.31, 0.55, 0.8}) {
            progress({"stage", fraction});
        }
        return sample::snapshot(module);
    });
    std::vector<QString> told;
    open();
    QObject::connect(&window().main().model(), &WindowModel::announced, &window().main().model(),
                     [&](const QString& text, bool urgent) {
                         EXPECT_FALSE(urgent) << qPrintable(text);
                         told.push_back(text);
                     });
    window().scan();
    window().settle();
    const QString start = tr("正在扫描 %@", title(CleanerModule::smartScan));
    EXPECT_THAT(told, ::testing::ElementsAre(start, start + QStringLiteral(" 30%"), start + QStringLiteral(" 55%"),
                                             start + QStringLiteral(" 80%"),
                                             QString::fromStdString(store().statusMessage())));
}

TEST_P(SpokenTest, WhatIsToldAppearsAsANotificationAndStaysForAWhile) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    GTEST_SKIP() << "since 6.8 Qt sends events, which the journeys by ear hear";
#endif
    open();
    WindowModel& model = window().main().model();
    model.showNotice(QStringLiteral("first"), false);
    Q_EMIT model.announced(QStringLiteral("second"), true);
    EXPECT_EQ(spoken("announcer.0")->role(), QAccessible::Notification);
    EXPECT_EQ(spoken("announcer.0")->text(QAccessible::Name), QStringLiteral("first"));
    EXPECT_EQ(spoken("announcer.1")->text(QAccessible::Name), QStringLiteral("second"));
    EXPECT_EQ(spoken("notice")->role(), QAccessible::StaticText);
    EXPECT_TRUE(window().waitFor([this] { return !isVisible("announcer.0") && !isVisible("announcer.1"); }, 10));
}

TEST_P(SpokenTest, AFailureIsUrgentAndItsNoticeAnAlert) {
    open();
    bool wasUrgent = false;
    QObject::connect(&window().main().model(), &WindowModel::announced, &window().main().model(),
                     [&](const QString&, bool urgent) { wasUrgent = urgent; });
    desktop().fail("文件管理器没有打开。");
    EXPECT_TRUE(wasUrgent);
    ASSERT_TRUE(isVisible("notice"));
    EXPECT_EQ(spoken("notice")->role(), QAccessible::AlertMessage);
}

TEST_P(SpokenTest, ACleanIsToldFromItsStartToItsEnd) {
    service().onClean([](const std::vector<CleanupItem>&) { return sample::cleanReport(); });
    openScanned(CleanerModule::systemJunk);
    std::vector<QString> told;
    QObject::connect(&window().main().model(), &WindowModel::announced, &window().main().model(),
                     [&](const QString& text, bool) { told.push_back(text); });
    cleanConfirmed();
    EXPECT_THAT(told, ::testing::Contains(tr("正在清理选中项目...")));
    EXPECT_THAT(told, ::testing::Contains(QString::fromStdString(sample::cleanReport().message())));
}

TEST_P(SpokenTest, ItsFamilyIsTheOneOfQt) {
    openScanned(CleanerModule::systemJunk);
    QAccessibleInterface* row = spoken("item.0");
    ASSERT_NE(row, nullptr);
    QAccessibleInterface* around = row->parent();
    ASSERT_NE(around, nullptr);
    EXPECT_GE(around->indexOfChild(row), 0);
    EXPECT_EQ(around->child(around->indexOfChild(row)), row);
    EXPECT_EQ(row->text(QAccessible::Name).left(2), tr("用户缓存").left(2));
    EXPECT_NE(row->actionInterface(), nullptr);
}

} // namespace
} // namespace vellmoor
