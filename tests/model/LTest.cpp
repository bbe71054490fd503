#include "texts/L.h"

#include "LanguageScope.h"
#include "texts/TextTables.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <limits>
#include <set>
#include <thread>

namespace vellmoor {
namespace {

using ::testing::ElementsAre;

/// The placeholders of a text, in order: "@d@".
std::string placeholders(std::string_view text) {
    std::string found;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == '%') {
            found += text[i + 1];
        }
    }
    return found;
}

std::string_view englishOf(std::string_view chinese) {
    const auto found = std::ranges::find(englishTexts(), chinese, &TextEntry::chinese);
    return found == englishTexts().end() ? std::string_view() : found->english;
}

bool isKey(std::string_view chinese) {
    return std::ranges::find(englishTexts(), chinese, &TextEntry::chinese) != englishTexts().end();
}

TEST(AppLanguages, AreChineseAndEnglish) {
    EXPECT_THAT(allAppLanguages, ElementsAre(AppLanguage::chinese, AppLanguage::english));
    EXPECT_EQ(rawValue(AppLanguage::chinese), "zh");
    EXPECT_EQ(rawValue(AppLanguage::english), "en");
}

TEST(AppLanguages, AreFoundByTheirRawValuesOnly) {
    EXPECT_EQ(appLanguage("zh"), AppLanguage::chinese);
    EXPECT_EQ(appLanguage("en"), AppLanguage::english);
    for (const char* other : {"", "fr", "ZH", "zh-Hans", "english"}) {
        EXPECT_EQ(appLanguage(other), std::nullopt) << other;
    }
}

TEST(EnglishTable, HasExactlyThreeHundredAndSixteenEntries) {
    EXPECT_EQ(englishTexts().size(), 316U);
}

TEST(EnglishTable, HasNoKeyTwice) {
    std::set<std::string_view> keys;
    for (const TextEntry& entry : englishTexts()) {
        EXPECT_TRUE(keys.insert(entry.chinese).second) << entry.chinese;
    }
}

TEST(EnglishTable, HasNoEmptyText) {
    for (const TextEntry& entry : englishTexts()) {
        EXPECT_FALSE(entry.chinese.empty());
        EXPECT_FALSE(entry.english.empty()) << entry.chinese;
    }
}

TEST(EnglishTable, KeepsThePlaceholdersOfEachKeyInOrder) {
    for (const TextEntry& entry : englishTexts()) {
        EXPECT_EQ(placeholders(entry.english), placeholders(entry.chinese)) << entry.chinese;
    }
}

TEST(EnglishTable, UsesNoOtherPlaceholderThanTextAndInteger) {
    for (const TextEntry& entry : englishTexts()) {
        EXPECT_EQ(placeholders(entry.chinese).find_first_not_of("@d"), std::string::npos) << entry.chinese;
    }
}

TEST(FurtherTexts, ReplaceKeysOfTheMainTableOnly) {
    for (const FurtherTextEntry& entry : furtherTexts()) {
        EXPECT_TRUE(entry.replaces.empty() || isKey(entry.replaces)) << entry.replaces;
    }
}

TEST(FurtherTexts, ReplaceNoKeyTwice) {
    std::set<std::string_view> replaced;
    for (const FurtherTextEntry& entry : furtherTexts()) {
        EXPECT_TRUE(entry.replaces.empty() || replaced.insert(entry.replaces).second) << entry.replaces;
    }
}

TEST(FurtherTexts, AreNewAndEachThereOnce) {
    std::set<std::string_view> keys;
    for (const FurtherTextEntry& entry : furtherTexts()) {
        EXPECT_FALSE(isKey(entry.chinese)) << entry.chinese;
        EXPECT_TRUE(keys.insert(entry.chinese).second) << entry.chinese;
        EXPECT_FALSE(entry.english.empty()) << entry.chinese;
    }
}

TEST(FurtherTexts, KeepThePlaceholdersOfEachKeyAndOfTheKeyItReplaces) {
    for (const FurtherTextEntry& entry : furtherTexts()) {
        EXPECT_EQ(placeholders(entry.english), placeholders(entry.chinese)) << entry.chinese;
        if (!entry.replaces.empty()) {
            EXPECT_EQ(placeholders(entry.chinese), placeholders(entry.replaces)) << entry.chinese;
        }
    }
}

TEST(FurtherTexts, NeverNameThePiecesOfAnotherSystem) {
    for (const FurtherTextEntry& entry : furtherTexts()) {
        for (const char* foreign :
             {"macOS", "Mac ", "Finder", "LaunchAgents", "Activity Monitor", "Library", "purge"}) {
            EXPECT_EQ(entry.english.find(foreign), std::string_view::npos) << entry.english;
        }
    }
}

TEST(Lookup, AnswersTheKeyInChinese) {
    const LanguageScope chinese(AppLanguage::chinese);
    for (const TextEntry& entry : englishTexts()) {
        EXPECT_EQ(L::tr(entry.chinese), entry.chinese);
    }
}

TEST(Lookup, AnswersTheEntryInEnglish) {
    const LanguageScope english(AppLanguage::english);
    for (const TextEntry& entry : englishTexts()) {
        EXPECT_EQ(L::tr(entry.chinese), entry.english);
    }
}

TEST(Lookup, AnswersAnUnknownKeyUnchangedInBothLanguages) {
    for (const AppLanguage language : allAppLanguages) {
        const LanguageScope scope(language);
        EXPECT_EQ(L::tr("没有这个条目"), "没有这个条目");
        EXPECT_EQ(L::tr(""), "");
        EXPECT_EQ(L::tr("Trash"), "Trash");
    }
}

TEST(Lookup, FormatsAnUnknownKeyAlsoInEnglish) {
    const LanguageScope english(AppLanguage::english);
    EXPECT_EQ(L::tr("没有 %@ 这个条目 %d", "那个", 3), "没有 那个 这个条目 3");
}

TEST(Lookup, TellsTheLanguage) {
    const LanguageScope chinese(AppLanguage::chinese);
    EXPECT_EQ(L::language(), AppLanguage::chinese);
    L::setLanguage(AppLanguage::english);
    EXPECT_EQ(L::language(), AppLanguage::english);
}

TEST(Lookup, TurnsTheListSeparatorIntoACommaAndASpace) {
    {
        const LanguageScope english(AppLanguage::english);
        EXPECT_EQ(L::tr("、"), ", ");
        EXPECT_EQ(L::tr("，"), ", ");
    }
    const LanguageScope chinese(AppLanguage::chinese);
    EXPECT_EQ(L::tr("、"), "、");
}

TEST(Lookup, PutsTheArgumentsInOrder) {
    const LanguageScope english(AppLanguage::english);
    EXPECT_EQ(L::tr("显示来自%@的缓存结果，上次扫描：%@。", "Smart Scan", "just now"),
              "Showing cached results from Smart Scan. Last scan: just now.");
    EXPECT_EQ(L::tr("已处理 %d 项，%d 项失败，预计释放 %@。", 5, 2, "1 KB"),
              "Processed 5 items, 2 failed, estimated 1 KB freed.");
}

TEST(Lookup, KeepsEachLanguagesPunctuation) {
    {
        const LanguageScope chinese(AppLanguage::chinese);
        EXPECT_EQ(L::tr("风险级别：%@。", "安全"), "风险级别：安全。");
    }
    const LanguageScope english(AppLanguage::english);
    EXPECT_EQ(L::tr("风险级别：%@。", "Safe"), "Risk level: Safe.");
}

TEST(Lookup, ShowsIntegersPlainly) {
    EXPECT_EQ(L::tr("%d 文件 · %@", 1'234'567, "x"), "1234567 files · x");
    EXPECT_EQ(L::tr("%d 项", std::numeric_limits<std::int64_t>::min()), "-9223372036854775808 items");
    EXPECT_EQ(L::tr("%d 项", std::size_t{7}), "7 items");
}

TEST(Lookup, NeverReadsPlaceholdersInsideAnArgument) {
    EXPECT_EQ(L::tr("%@ %d 项", "100%d and %@", 3), "100%d and %@ 3 items");
}

TEST(Lookup, LeavesAPlaceholderWithoutArgumentAndDropsAnArgumentWithoutPlaceholder) {
    EXPECT_EQ(L::tr("%@ %d 项", "x"), "x %d items");
    EXPECT_EQ(L::tr("完成", "extra"), "Done");
}

TEST(Lookup, LeavesOtherPercentSignsAlone) {
    EXPECT_EQ(L::tr("100% %@ %", "x"), "100% x %");
}

TEST(Lookup, UsesTheLinuxWordingOnLinuxInBothLanguages) {
    for (const FurtherTextEntry& entry : furtherTexts()) {
        if (entry.replaces.empty()) {
            continue;
        }
        {
            const LanguageScope english(AppLanguage::english, TextSet::Linux);
            EXPECT_EQ(L::tr(entry.replaces), entry.english);
        }
        const LanguageScope chinese(AppLanguage::chinese, TextSet::Linux);
        EXPECT_EQ(L::tr(entry.replaces), entry.chinese);
    }
}

TEST(Lookup, UsesTheLinuxWordingOnLinuxOnly) {
    for (const FurtherTextEntry& entry : furtherTexts()) {
        if (entry.replaces.empty()) {
            continue;
        }
        {
            const LanguageScope english(AppLanguage::english, TextSet::Mac);
            EXPECT_EQ(L::tr(entry.replaces), englishOf(entry.replaces));
        }
        const LanguageScope chinese(AppLanguage::chinese, TextSet::Mac);
        EXPECT_EQ(L::tr(entry.replaces), entry.replaces);
        EXPECT_NE(entry.chinese, entry.replaces);
    }
}

TEST(Lookup, KeepsEveryOtherTextOnLinux) {
    const LanguageScope english(AppLanguage::english, TextSet::Linux);
    std::set<std::string_view> replaced;
    for (const FurtherTextEntry& entry : furtherTexts()) {
        replaced.insert(entry.replaces);
    }
    for (const TextEntry& entry : englishTexts()) {
        if (!replaced.contains(entry.chinese)) {
            EXPECT_EQ(L::tr(entry.chinese), entry.english);
        }
    }
}

TEST(Lookup, TranslatesALinuxTextThatReplacesNothing) {
    const LanguageScope english(AppLanguage::english, TextSet::Linux);
    EXPECT_EQ(L::tr("%@ 中的文件", "~/.local/share/Trash"), "Files in ~/.local/share/Trash");
}

TEST(Lookup, FormatsTheLinuxWording) {
    const LanguageScope english(AppLanguage::english, TextSet::Linux);
    EXPECT_EQ(L::tr("%@ 未响应退出请求，可在活动监视器中结束。", "Editor"),
              "Editor did not respond to the quit request. It may be waiting for you.");
}

TEST(Lookup, AnswersWholeTextsWhileTheLanguageChanges) {
    const LanguageScope scope(AppLanguage::english);
    std::atomic<bool> stop{false};
    std::atomic<int> answered{0};
    std::atomic<int> broken{0};
    std::vector<std::thread> workers;
    for (int i = 0; i < 3; ++i) {
        workers.emplace_back([&] {
            while (!stop) {
                const std::string text = L::tr("正在扫描 %@...", "x");
                broken += text != "正在扫描 x..." && text != "Scanning x..." ? 1 : 0;
                ++answered;
            }
        });
    }
    for (int i = 0; i < 2'000 || answered < 2'000; ++i) {
        L::setLanguage(i % 2 == 0 ? AppLanguage::chinese : AppLanguage::english);
    }
    stop = true;
    for (std::thread& worker : workers) {
        worker.join();
    }
    EXPECT_EQ(broken, 0);
}

} // namespace
} // namespace vellmoor
