#include "call/Call.h"

#include "call/HelpPage.h"
#include "commands/RowChoice.h"
#include "texts/L.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace vellmoor::cli {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

TEST(Calls, AreReadWithOptionsInAnyPlaceBehindTheCommand) {
    const auto call = parseCall({"--language", "zh", "clean", "--yes", "systemJunk", "--tick", "one", "--tick", "two",
                                 "--only", "--for-good", "--memory", "--json", "--quiet"});
    ASSERT_TRUE(call) << call.error();
    EXPECT_EQ(call->command, Command::Clean);
    EXPECT_EQ(call->module, CleanerModule::systemJunk);
    EXPECT_EQ(call->language, AppLanguage::chinese);
    EXPECT_THAT(call->ticks, ElementsAre("one", "two"));
    EXPECT_TRUE(call->isConfirmed && call->onlyTicked && call->mayRemoveForGood && call->mayFreeMemory);
    EXPECT_TRUE(call->wantsJson && call->isQuiet);
    EXPECT_FALSE(call->isDryRun);
}

TEST(Calls, AScanIsASmartScanUnlessAModuleIsNamed) {
    EXPECT_EQ(parseCall({"scan"})->module, CleanerModule::smartScan);
    EXPECT_EQ(parseCall({"scan", "trash"})->module, CleanerModule::trash);
}

TEST(Calls, PathsAreAbsoluteAndWithoutClimbing) {
    const auto current = std::filesystem::current_path();
    EXPECT_THAT(parseCall({"keep", "a", "/tmp/../b"})->paths, ElementsAre(current / "a", "/b"));
}

TEST(Calls, BehindTwoDashesEverythingIsAWord) {
    EXPECT_THAT(parseCall({"keep", "--", "--json"})->paths, ElementsAre(std::filesystem::current_path() / "--json"));
}

TEST(Calls, HelpAndVersionComeBeforeWhateverElseIsWrong) {
    EXPECT_EQ(parseCall({"--help"})->command, Command::Help);
    EXPECT_EQ(parseCall({"clean", "--help"})->command, Command::Help);
    EXPECT_EQ(parseCall({"--version"})->command, Command::Version);
}

TEST(Calls, OnlySomeChangeFiles) {
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"clean", "trash", "--yes"}, {"put-back"}, {"keep", "a"}, {"offer", "a"}}) {
        EXPECT_TRUE(parseCall(words)->changesFiles()) << words.front();
    }
    for (const std::vector<std::string>& words : {std::vector<std::string>{"clean", "trash", "--yes", "--dry-run"},
                                                  {"put-back", "--dry-run"},
                                                  {"scan"},
                                                  {"kept"},
                                                  {"history"}}) {
        EXPECT_FALSE(parseCall(words)->changesFiles()) << words.front();
    }
}

class WrongCalls : public ::testing::TestWithParam<std::vector<std::string>> {};

TEST_P(WrongCalls, AreToldInOneLineInBothLanguages) {
    std::string english;
    for (const AppLanguage language : {AppLanguage::english, AppLanguage::chinese}) {
        L::setLanguage(language);
        const auto call = parseCall(GetParam());
        ASSERT_FALSE(call);
        EXPECT_THAT(call.error(), Not(IsEmpty()));
        EXPECT_THAT(call.error(), Not(HasSubstr("\n")));
        EXPECT_NE(call.error(), english);
        english = call.error();
    }
    L::setLanguage(AppLanguage::english);
}

INSTANTIATE_TEST_SUITE_P(
    Cli, WrongCalls,
    ::testing::Values(std::vector<std::string>{}, std::vector<std::string>{"fly"}, std::vector<std::string>{"clean"},
                      std::vector<std::string>{"clean", "--yes"}, std::vector<std::string>{"clean", "trash"},
                      std::vector<std::string>{"clean", "Trash", "--yes"},
                      std::vector<std::string>{"clean", "trash", "privacy", "--yes"},
                      std::vector<std::string>{"clean", "trash", "--yes", "--tick"},
                      std::vector<std::string>{"clean", "trash", "--yes", "--only"},
                      std::vector<std::string>{"clean", "trash", "--force"}, std::vector<std::string>{"scan", "--yes"},
                      std::vector<std::string>{"scan", "--tick", "a"}, std::vector<std::string>{"scan", "everything"},
                      std::vector<std::string>{"--json", "scan"}, std::vector<std::string>{"--language"},
                      std::vector<std::string>{"--language", "fr", "scan"}, std::vector<std::string>{"keep"},
                      std::vector<std::string>{"keep", ""}, std::vector<std::string>{"offer"},
                      std::vector<std::string>{"kept", "a"}, std::vector<std::string>{"history", "a"},
                      std::vector<std::string>{"put-back", "a", "b"}));

TEST(HelpPages, NameEveryCommandAndOption) {
    for (const AppLanguage language : {AppLanguage::chinese, AppLanguage::english}) {
        L::setLanguage(language);
        for (const char* word :
             {"scan",      "clean",     "history",   "put-back",          "keep",     "kept",   "offer",   "--yes",
              "--dry-run", "--tick",    "--only",    "--for-good",        "--memory", "--json", "--quiet", "--language",
              "--help",    "--version", "smartScan", "memoryOptimization"}) {
            EXPECT_THAT(helpPage(), HasSubstr(word));
        }
    }
}

CleanupItem rowOf(const std::string& key, const std::string& title, bool isPreselected,
                  CleanerModule module = CleanerModule::systemJunk) {
    CleanupItem row{.module = module, .key = key, .title = title};
    row.isCleanable = true;
    row.risk = isPreselected ? CleanupRisk::safe : CleanupRisk::cautious;
    row.isSelected = isPreselected;
    row.targets.edit().resize(2);
    for (CleanupTarget& target : row.targets.edit()) {
        target.bytes = 1;
        target.isSelected = isPreselected;
    }
    return row;
}

class RowChoices : public ::testing::Test {
protected:
    std::vector<CleanupItem> rows_{rowOf("caches", "User Caches", true), rowOf("developer", "Developer Caches", false),
                                   rowOf("trash/home", "Trash", true, CleanerModule::trash),
                                   rowOf("memory", "Memory", true, CleanerModule::memoryOptimization)};
    RowFacts facts_{.otherTitles = [] { return std::map<std::string, std::string>{{"developer", "开发缓存"}}; },
                    .goesForGood = [](const CleanupItem& row) { return row.module == CleanerModule::trash; }};

    std::vector<std::string> chosen(const Call& call) {
        const auto choice = chooseRows(call, rows_, facts_);
        std::vector<std::string> keys;
        for (const CleanupItem& row : choice.value_or(ChosenRows()).rows) {
            keys.push_back(row.key);
        }
        return choice ? keys : std::vector<std::string>{choice.error()};
    }
};

TEST_F(RowChoices, ArePreselectedSafeRowsOnly) {
    EXPECT_THAT(chosen({}), ElementsAre("caches"));
    const auto choice = chooseRows({}, rows_, facts_);
    EXPECT_TRUE(choice->leftForGood);
    EXPECT_TRUE(choice->leftMemory);
}

TEST_F(RowChoices, AreAlsoForGoodAndMemoryWhenTheCallAllowsThem) {
    EXPECT_THAT(chosen({.mayRemoveForGood = true, .mayFreeMemory = true}),
                ElementsAre("caches", "trash/home", "memory"));
}

TEST_F(RowChoices, AreNamedByKeyOrTitleInEitherLanguage) {
    for (const char* name : {"developer", "Developer Caches", "开发缓存"}) {
        EXPECT_THAT(chosen({.ticks = {name}}), ElementsAre("caches", "developer")) << name;
    }
}

TEST_F(RowChoices, AreOnlyTheNamedOnesWhenTheCallSaysSo) {
    EXPECT_THAT(chosen({.ticks = {"developer"}, .onlyTicked = true}), ElementsAre("developer"));
}

TEST_F(RowChoices, ANamedRowIsTakenWhole) {
    const auto choice = chooseRows({.ticks = {"developer"}, .onlyTicked = true}, rows_, facts_);
    EXPECT_EQ(choice->rows.front().selectedBytes(), 2);
}

TEST_F(RowChoices, ANameThatTwoRowsBearNeedsAKey) {
    rows_[1].title = "User Caches";
    EXPECT_THAT(chosen({.ticks = {"User Caches"}}).front(), HasSubstr("take a key"));
    EXPECT_THAT(chosen({.ticks = {"developer"}, .onlyTicked = true}), ElementsAre("developer"));
}

TEST_F(RowChoices, ANamedRowThatGoesForGoodNeedsItsOption) {
    EXPECT_THAT(chosen({.ticks = {"trash/home"}}).front(), HasSubstr("--for-good"));
    EXPECT_THAT(chosen({.ticks = {"memory"}}).front(), HasSubstr("--memory"));
}

TEST_F(RowChoices, ARowThatCannotBeCleanedOrIsNotThereIsNoChoice) {
    rows_[1].isCleanable = false;
    EXPECT_THAT(chosen({.ticks = {"developer"}}).front(), HasSubstr("cannot be cleaned"));
    EXPECT_THAT(chosen({.ticks = {"nothing"}}).front(), HasSubstr("no row is called"));
}

TEST_F(RowChoices, APreselectedRowThatIsNotSafeIsLeftOut) {
    rows_[0].risk = CleanupRisk::cautious;
    EXPECT_THAT(chosen({}), IsEmpty());
}

TEST_F(RowChoices, WhatIsHeldBackIsNotTaken) {
    rows_[1].targets.edit().front().heldBack = "kept";
    const auto choice = chooseRows({.ticks = {"developer"}, .onlyTicked = true}, rows_, facts_);
    EXPECT_EQ(choice->rows.front().selectedTargetCount(), 1);
}

} // namespace
} // namespace vellmoor::cli
