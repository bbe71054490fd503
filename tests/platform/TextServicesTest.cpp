#include "TextServices.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

namespace vellmoor::texts {
namespace {

using namespace std::chrono_literals;

const TimePoint noon = std::chrono::sys_days{std::chrono::year{2025} / 6 / 15} + 12h;

std::string english(TimePoint date) {
    return relativeDate(date, noon, AppLanguage::english);
}
std::string chinese(TimePoint date) {
    return relativeDate(date, noon, AppLanguage::chinese);
}
TimePoint day(int year, unsigned month, unsigned day) {
    return std::chrono::sys_days{std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day)} + 12h;
}

TEST(RelativeDate, IsToldInHoursUntilItIsADay) {
    for (int hours = 1; hours < 24; ++hours) {
        EXPECT_EQ(english(noon - std::chrono::hours(hours)), std::to_string(hours) + " hr. ago");
        EXPECT_EQ(english(noon - std::chrono::hours(hours) - 59min), std::to_string(hours) + " hr. ago");
    }
    EXPECT_EQ(english(noon - 60s), "1 min. ago");
    EXPECT_EQ(english(noon + 90s), "in 1 min.");
}

TEST(RelativeDate, IsTheSameWheneverItIsAskedFor) {
    for (int again = 0; again < 2; ++again) {
        EXPECT_EQ(english(noon - 48h), "2 days ago");
        EXPECT_EQ(chinese(noon - 48h), "2天前");
        EXPECT_EQ(english(noon + 48h), "in 2 days");
    }
}

TEST(PlainLetters, AreTreatedAsAllOthers) {
    const std::string plain = "Some-Name_2.0 (Beta)";
    EXPECT_EQ(lowerCase(plain), "some-name_2.0 (beta)");
    EXPECT_EQ(lettersAndDigits(plain), "somename20beta");
    EXPECT_EQ(lettersAndDigits(plain + "É"), "somename20betaé");
    EXPECT_TRUE(containsPhrase(plain, "NAME_2"));
    EXPECT_TRUE(containsPhrase(plain + "É", "NAME_2"));
    EXPECT_FALSE(containsPhrase(plain, ""));
    EXPECT_TRUE(isUtf8(plain));
}

TEST(RelativeDate, TakesTheLargestUnitOfWhichThereIsOne) {
    EXPECT_EQ(english(noon - 30s), "30 sec. ago");
    EXPECT_EQ(english(noon - 59min - 59s), "59 min. ago");
    EXPECT_EQ(english(noon - 3h), "3 hr. ago");
    EXPECT_EQ(english(noon - 24h), "1 day ago");
    EXPECT_EQ(english(noon - 47h), "1 day ago");
    EXPECT_EQ(english(noon - 48h), "2 days ago");
    EXPECT_EQ(english(noon - 15 * 24h), "2 wk. ago");
    EXPECT_EQ(english(day(2025, 5, 15)), "1 mo. ago");
    EXPECT_EQ(english(day(2025, 5, 16)), "4 wk. ago");
    EXPECT_EQ(english(day(2024, 6, 16)), "11 mo. ago");
    EXPECT_EQ(english(day(2023, 6, 15)), "2 yr. ago");
}

TEST(RelativeDate, SpeaksChinese) {
    EXPECT_EQ(chinese(noon - 48h), "2天前");
    EXPECT_EQ(chinese(noon - 3h), "3小时前");
    EXPECT_EQ(chinese(day(2023, 6, 15)), "2年前");
}

TEST(RelativeDate, TheSameMomentIsPastAndLaterIsFuture) {
    EXPECT_EQ(english(noon), "0 sec. ago");
    EXPECT_EQ(english(noon + 48h), "in 2 days");
}

TEST(RelativeDate, DatesFarOutStillGiveAText) {
    EXPECT_EQ(english(TimePoint()), "55 yr. ago");
    EXPECT_FALSE(english(TimePoint::min()).empty());
    EXPECT_FALSE(english(TimePoint::max()).empty());
}

TEST(Names, SortAsAPersonWouldIgnoringCase) {
    std::vector<std::string> names{"b", "Zoo", "émile", "A", "a", "Emil", "zebra", "B"};
    std::ranges::stable_sort(names, [](const auto& a, const auto& b) { return compareNames(a, b) < 0; });
    EXPECT_EQ(names, (std::vector<std::string>{"A", "a", "b", "B", "Emil", "émile", "zebra", "Zoo"}));
}

TEST(Names, DifferingInCaseAreEqualAndInAccentsAreNot) {
    EXPECT_EQ(compareNames("README", "readme"), 0);
    EXPECT_LT(compareNames("resume", "résumé"), 0);
    EXPECT_LT(compareNames("", "a"), 0);
    EXPECT_EQ(compareNames("caf\xe9", "caf\xe9"), 0);
}

TEST(Phrases, AreFoundWhateverTheirCase) {
    EXPECT_TRUE(containsPhrase("purge: Operation Not Permitted", "operation not permitted"));
    EXPECT_TRUE(containsPhrase("STRASSE", "straße"));
    EXPECT_TRUE(containsPhrase("e\xcc\x81t\xc3\xa9", "ÉTÉ"));
    EXPECT_FALSE(containsPhrase("été", "ete"));
    EXPECT_FALSE(containsPhrase("short", "shorter"));
}

TEST(Phrases, TheEmptyOneIsInNoText) {
    EXPECT_FALSE(containsPhrase("text", ""));
    EXPECT_FALSE(containsPhrase("", ""));
}

TEST(LowerCase, ChangesLettersOfEveryScript) {
    EXPECT_EQ(lowerCase("ÄÖÜ Ж ABC 1"), "äöü ж abc 1");
    EXPECT_EQ(lowerCase("I"), "i");
}

TEST(LettersAndDigits, LosePunctuationAndBlanks) {
    EXPECT_EQ(lettersAndDigits("My-App 2.0 (beta)"), "myapp20beta");
    EXPECT_EQ(lettersAndDigits("网易云音乐 ♪"), "网易云音乐");
    EXPECT_EQ(lettersAndDigits("😀_"), "");
    EXPECT_EQ(lettersAndDigits("𝐀1"), "𝐀1");
}

TEST(Utf8, IsToldFromOtherBytes) {
    EXPECT_TRUE(isUtf8(""));
    EXPECT_TRUE(isUtf8("plain 网 😀"));
    EXPECT_TRUE(isUtf8(std::string_view("a\0b", 3)));
    EXPECT_FALSE(isUtf8("caf\xe9"));
    EXPECT_FALSE(isUtf8("cut \xe7\xbd"));
    EXPECT_FALSE(isUtf8("\xc0\xaf"));
    EXPECT_FALSE(isUtf8("\xed\xa0\x80"));
}

} // namespace
} // namespace vellmoor::texts
