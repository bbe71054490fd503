#include "done/HistoryItems.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace vellmoor {
namespace {

HistoryItem trashed(std::size_t index, const std::string& name) {
    return {.index = index,
            .path = "/home/anna/.cache/" + name,
            .title = "Other Caches",
            .bytes = 40,
            .fate = CleanupFate::Trashed,
            .place = "/home/anna/.local/share/Trash/files/" + name};
}

std::vector<HistoryItem> copied(const HistoryItems& items) {
    std::vector<HistoryItem> copy;
    for (const HistoryItem& item : items.all()) {
        copy.push_back(item);
    }
    return copy;
}

TEST(HistoryItems, GivesBackEachItemAsItWasPutIn) {
    const std::vector<HistoryItem> wanted = {
        trashed(0, "pip"),
        {.index = 3, .path = "/home/anna/.cache/pip", .title = "Python", .bytes = -1, .reason = "Busy"},
        trashed(7, "pip"),
        {.index = 8,
         .path = "/home/anna/.cache/a\xff 名",
         .title = "Python",
         .fate = CleanupFate::Trashed,
         .place = "/media/disk/.Trash-1000/files/a\xff 名.2",
         .isPutBack = true,
         .reason = "Busy"},
        {.index = 9, .fate = CleanupFate::Failed, .reason = "不"},
        {.path = "/"},
        {.path = "name", .place = "/folder/"},
        {},
    };
    HistoryItems items;
    for (const HistoryItem& item : wanted) {
        items.push_back(item);
    }
    EXPECT_EQ(copied(items), wanted);
    EXPECT_EQ(items[3].place, wanted[3].place);
}

TEST(HistoryItems, OfNoItemsAreEmpty) {
    const HistoryItems items;
    EXPECT_TRUE(items.empty());
    EXPECT_EQ(copied(items), std::vector<HistoryItem>());
    EXPECT_EQ(items, HistoryItems({}));
}

TEST(HistoryItems, AreEqualWhenTheirItemsAre) {
    const HistoryItems items = {trashed(0, "pip"), trashed(1, "npm")};
    EXPECT_EQ(items, HistoryItems({trashed(0, "pip"), trashed(1, "npm")}));
    EXPECT_NE(items, HistoryItems({trashed(0, "pip"), trashed(1, "gem")}));
    EXPECT_NE(items, HistoryItems({trashed(0, "pip")}));
}

TEST(HistoryItems, ACopyStaysAsItIsWhenTheOtherGrows) {
    HistoryItems items = {trashed(0, "pip")};
    const HistoryItems copy = items;
    items.push_back(trashed(1, "npm"));
    EXPECT_EQ(copied(copy), std::vector({trashed(0, "pip")}));
    EXPECT_EQ(copied(items), std::vector({trashed(0, "pip"), trashed(1, "npm")}));
}

TEST(HistoryItems, CanBeFilledAgainAfterTheyWereHandedOver) {
    HistoryItems items = {trashed(0, "pip")};
    const HistoryItems taken = std::exchange(items, {});
    items.push_back(trashed(1, "npm"));
    EXPECT_EQ(copied(taken), std::vector({trashed(0, "pip")}));
    EXPECT_EQ(copied(items), std::vector({trashed(1, "npm")}));
}

TEST(HistoryItems, HoldWhatRepeatsItselfOnce) {
    HistoryItems one;
    one.push_back(trashed(0, "cache-of-application-0000"));
    HistoryItems many;
    constexpr std::size_t count = 1000;
    for (std::size_t number = 0; number < count; ++number) {
        many.push_back(trashed(number, "cache-of-application-" + std::to_string(1000 + number)));
    }
    constexpr std::size_t nameAndEnd = 26;
    EXPECT_EQ(many.textBytes(), one.textBytes() + (count - 1) * nameAndEnd);
}

} // namespace
} // namespace vellmoor
