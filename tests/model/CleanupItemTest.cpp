#include "found/CleanupItem.h"

#include "LanguageScope.h"

#include <gmock/gmock.h>

#include <limits>

namespace vellmoor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();

CleanupTarget target(const std::string& name, std::int64_t bytes, std::int64_t files, bool selected = true) {
    CleanupTarget made;
    made.name = name;
    made.bytes = bytes;
    made.files = files;
    made.isSelected = selected;
    return made;
}

/// A cleanable, ticked, safe row.
CleanupItem itemOf(std::vector<CleanupTarget> targets) {
    CleanupItem item;
    item.module = CleanerModule::systemJunk;
    item.risk = CleanupRisk::safe;
    item.isCleanable = true;
    item.isSelected = true;
    item.targets = std::move(targets);
    return item;
}

TEST(CleanupItem, GetsAnIdentityOfItsOwn) {
    EXPECT_NE(CleanupItem().id, CleanupItem().id);
    EXPECT_NE(CleanupTarget().id, CleanupTarget().id);
}

TEST(CleanupItem, KeepsItsIdentityWhenCopied) {
    const CleanupItem item = itemOf({target("a", 1, 1)});
    const CleanupItem copy = item;
    EXPECT_EQ(copy.id, item.id);
    EXPECT_EQ(copy.targets.front().id, item.targets.front().id);
}

TEST(CleanupItem, ACopySharesItsTargetsUntilOneIsEdited) {
    CleanupItem item = itemOf({target("a", 1, 1), target("b", 2, 1)});
    CleanupItem copy = item;
    EXPECT_TRUE(copy.targets.isSharedWith(item.targets));
    copy.selectAll(false);
    EXPECT_FALSE(copy.targets.isSharedWith(item.targets));
    EXPECT_EQ(copy.selectedTargetCount(), 0);
    EXPECT_EQ(item.selectedTargetCount(), 2) << "the other one's ticks are its own";
    EXPECT_EQ(copy.targets.at(1).id, item.targets.at(1).id);
}

TEST(CleanupItem, TargetsThatNobodySharesAreEditedWhereTheyAre) {
    CleanupItem item = itemOf({target("a", 1, 1)});
    const CleanupTarget* const before = &item.targets.front();
    item.selectAll(false);
    EXPECT_EQ(&item.targets.front(), before);
    {
        const CleanupItem copy = item;
        EXPECT_EQ(&copy.targets.front(), before);
    }
    item.selectAll(true);
    EXPECT_EQ(&item.targets.front(), before) << "the copy is gone";
}

TEST(CleanupItem, WithoutTargetsItCanBeEdited) {
    CleanupItem item;
    EXPECT_THAT(item.targets, IsEmpty());
    item.targets.edit().push_back(target("a", 1, 1));
    EXPECT_EQ(item.targets.size(), 1U);
    EXPECT_THAT(CleanupItem().targets, IsEmpty());
}

TEST(CleanupItem, ASizeThatMayBeMoreSaysSo) {
    const LanguageScope english(AppLanguage::english);
    CleanupItem item = itemOf({target("a", 2000, 1)});
    item.bytes = 2000;
    EXPECT_EQ(item.sizeText(), "2 KB");
    EXPECT_EQ(item.targets.front().sizeText(), "2 KB");
    item.isAtLeast = true;
    item.targets.edit().front().isAtLeast = true;
    EXPECT_EQ(item.sizeText(), "at least 2 KB");
    EXPECT_EQ(item.targets.front().sizeText(), "at least 2 KB");
}

TEST(CleanupItem, SelectedBytesAreThoseOfTheTickedTargets) {
    EXPECT_EQ(itemOf({target("a", 10, 1), target("b", 20, 1, false), target("c", 40, 1)}).selectedBytes(), 50);
}

TEST(CleanupItem, SelectsNothingWithoutTargets) {
    CleanupItem item = itemOf({});
    item.bytes = 100;
    EXPECT_EQ(item.selectedBytes(), 0);
    EXPECT_EQ(item.selectedFiles(), 0);
}

TEST(CleanupItem, SelectsNothingWhileItIsUnticked) {
    CleanupItem item = itemOf({target("a", 10, 3)});
    item.isSelected = false;
    EXPECT_EQ(item.selectedBytes(), 0);
    EXPECT_EQ(item.selectedFiles(), 0);
}

TEST(CleanupItem, SelectsNothingWhenItIsNotCleanable) {
    CleanupItem item = itemOf({target("a", 10, 3)});
    item.isCleanable = false;
    EXPECT_EQ(item.selectedBytes(), 0);
    EXPECT_EQ(item.selectedFiles(), 0);
}

TEST(CleanupItem, SelectedFilesAreThoseOfTheTickedTargets) {
    EXPECT_EQ(itemOf({target("a", 1, 2), target("b", 1, 7, false), target("c", 1, 3)}).selectedFiles(), 5);
}

TEST(CleanupItem, ATickedTargetWithoutFilesCountsAsOneFile) {
    EXPECT_EQ(itemOf({target("empty", 0, 0), target("a", 1, 2)}).selectedFiles(), 3);
    EXPECT_EQ(itemOf({target("odd", 0, -5)}).selectedFiles(), 1);
}

TEST(CleanupItem, SelectedTargetsAreTheTickedOnesInOrderWhateverTheRow) {
    CleanupItem item = itemOf({target("a", 1, 1), target("b", 1, 1, false), target("c", 1, 1)});
    item.isSelected = false;
    item.isCleanable = false;
    std::vector<std::string> names;
    for (const CleanupTarget& each : item.selectedTargets()) {
        names.push_back(each.name);
    }
    EXPECT_THAT(names, ElementsAre("a", "c"));
}

TEST(CleanupItem, HasNoSelectedTargetsWhenNoneIsTicked) {
    EXPECT_THAT(itemOf({target("a", 1, 1, false)}).selectedTargets(), IsEmpty());
}

TEST(CleanupItem, SumsUpToTheLargestAmount) {
    EXPECT_EQ(itemOf({target("a", most - 1, most - 1), target("b", 1, 1)}).selectedBytes(), most);
    EXPECT_EQ(itemOf({target("a", most - 1, most - 1), target("b", 1, 1)}).selectedFiles(), most);
}

TEST(CleanupItemDeath, SelectedBytesThatOverflowEndTheProgram) {
    EXPECT_DEATH((void)itemOf({target("a", most, 1), target("b", 1, 1)}).selectedBytes(), "overflow");
}

TEST(CleanupItemDeath, SelectedFilesThatOverflowEndTheProgram) {
    EXPECT_DEATH((void)itemOf({target("a", 1, most), target("b", 1, 0)}).selectedFiles(), "overflow");
}

TEST(CleanupFilters, HaveTheirCaseNamesAsRawValues) {
    EXPECT_EQ(rawValue(CleanupFilter::all), "all");
    EXPECT_EQ(rawValue(CleanupFilter::recommended), "recommended");
    EXPECT_EQ(rawValue(CleanupFilter::selected), "selected");
    EXPECT_THAT(allCleanupFilters,
                ElementsAre(CleanupFilter::all, CleanupFilter::recommended, CleanupFilter::selected));
}

TEST(CleanupFilters, HaveTitlesInBothLanguages) {
    {
        const LanguageScope english(AppLanguage::english);
        EXPECT_EQ(title(CleanupFilter::all), "All");
        EXPECT_EQ(title(CleanupFilter::recommended), "Recommended");
        EXPECT_EQ(title(CleanupFilter::selected), "Selected");
    }
    const LanguageScope chinese(AppLanguage::chinese);
    EXPECT_EQ(title(CleanupFilter::all), "全部");
    EXPECT_EQ(title(CleanupFilter::recommended), "推荐");
    EXPECT_EQ(title(CleanupFilter::selected), "已选择");
}

TEST(CleanupFilters, AllMatchesEveryItem) {
    EXPECT_TRUE(matches(CleanupFilter::all, CleanupItem()));
    EXPECT_TRUE(matches(CleanupFilter::all, itemOf({target("a", 1, 1)})));
}

TEST(CleanupFilters, RecommendedMatchesCleanableSafeItemsTickedOrNot) {
    CleanupItem item = itemOf({});
    EXPECT_TRUE(matches(CleanupFilter::recommended, item));
    item.isSelected = false;
    EXPECT_TRUE(matches(CleanupFilter::recommended, item));
}

TEST(CleanupFilters, RecommendedMatchesNoItemThatCannotBeCleaned) {
    CleanupItem item = itemOf({});
    item.isCleanable = false;
    EXPECT_FALSE(matches(CleanupFilter::recommended, item));
}

TEST(CleanupFilters, RecommendedMatchesNoItemOfAHigherRisk) {
    CleanupItem item = itemOf({});
    for (const CleanupRisk risk : {CleanupRisk::cautious, CleanupRisk::high, CleanupRisk::previewOnly}) {
        item.risk = risk;
        EXPECT_FALSE(matches(CleanupFilter::recommended, item)) << rawValue(risk);
    }
}

TEST(CleanupFilters, SelectedMatchesTickedItemsWithTickedBytesOfAnyRisk) {
    CleanupItem item = itemOf({target("a", 1, 1)});
    EXPECT_TRUE(matches(CleanupFilter::selected, item));
    item.risk = CleanupRisk::high;
    EXPECT_TRUE(matches(CleanupFilter::selected, item));
}

TEST(CleanupFilters, SelectedMatchesNoTickedItemThatCannotBeCleaned) {
    CleanupItem item = itemOf({target("a", 1, 1)});
    item.isCleanable = false;
    EXPECT_FALSE(matches(CleanupFilter::selected, item));
}

TEST(CleanupFilters, SelectedMatchesNoUntickedItem) {
    CleanupItem item = itemOf({target("a", 1, 1)});
    item.isSelected = false;
    EXPECT_FALSE(matches(CleanupFilter::selected, item));
}

TEST(CleanupFilters, SelectedMatchesNoItemWithoutTickedBytes) {
    EXPECT_FALSE(matches(CleanupFilter::selected, itemOf({target("a", 1, 1, false)})));
    EXPECT_FALSE(matches(CleanupFilter::selected, itemOf({target("empty", 0, 1)})));
    EXPECT_FALSE(matches(CleanupFilter::selected, itemOf({})));
}

TEST(CleanupItem, BelongsToItsModuleAndToSmartScan) {
    const CleanupItem item = itemOf({});
    for (const CleanerModule module : allCleanerModules) {
        const bool expected = module == CleanerModule::smartScan || module == CleanerModule::systemJunk;
        EXPECT_EQ(belongs(item, module), expected) << rawValue(module);
    }
}

} // namespace
} // namespace vellmoor
