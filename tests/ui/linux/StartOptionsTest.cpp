// What the words after the program's name ask for, and how a wish travels over the bus.
#include "start/StartOptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace vellmoor {
namespace {

using ::testing::HasSubstr;

std::expected<StartOptions, std::string> read(const std::vector<const char*>& words) {
    return readStartOptions(words);
}

TEST(StartOptions, WithoutWordsTheWindowOpensAsItWas) {
    const auto options = read({});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->kind, StartOptions::Kind::window);
    EXPECT_EQ(options->wish, Wish());
}

TEST(StartOptions, AModuleIsNamedInOneWordOrInTwo) {
    EXPECT_EQ(read({"--module", "trash"})->wish.module, CleanerModule::trash);
    EXPECT_EQ(read({"--module=systemJunk"})->wish.module, CleanerModule::systemJunk);
}

TEST(StartOptions, TheDeedsAreReadAndAreOneAtATime) {
    EXPECT_EQ(read({"--scan"})->wish.deed, Wish::Deed::scan);
    EXPECT_EQ(read({"--empty-trash"})->wish.deed, Wish::Deed::offerEmptyTrash);
    EXPECT_FALSE(read({"--scan", "--empty-trash"}));
}

TEST(StartOptions, HelpAndVersionComeBeforeEverythingElse) {
    EXPECT_EQ(read({"--help"})->kind, StartOptions::Kind::help);
    EXPECT_EQ(read({"-h"})->kind, StartOptions::Kind::help);
    EXPECT_EQ(read({"--module", "trash", "--version"})->kind, StartOptions::Kind::version);
}

TEST(StartOptions, AFaultIsOneLineThatNamesTheWord) {
    for (const auto& [words, named] : std::vector<std::pair<std::vector<const char*>, const char*>>{
             {{"--modul", "trash"}, "unknown option '--modul'"},
             {{"--module", "bin"}, "no module 'bin'"},
             {{"--module="}, "no module ''"},
             {{"--module"}, "--module wants a name"},
             {{"-x"}, "unknown option '-x'"},
             {{"/tmp"}, "it takes no '/tmp'"}}) {
        const auto options = read(words);
        ASSERT_FALSE(options) << named;
        EXPECT_THAT(options.error(), HasSubstr(named));
        EXPECT_EQ(options.error().find('\n'), std::string::npos);
    }
}

TEST(StartOptions, ASessionManagersWordsAreLeftToQt) {
    const auto options = read({"-session", "10f7a2e1", "--scan"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->wish.deed, Wish::Deed::scan);
    EXPECT_TRUE(read({"-session"}));
}

TEST(StartOptions, TheHelpNamesEveryModule) {
    for (const CleanerModule module : allCleanerModules) {
        EXPECT_THAT(helpText(), HasSubstr(std::string(rawValue(module))));
    }
}

TEST(Wish, ArrivesOverTheBusAsItWasSent) {
    for (const Wish& wish :
         {Wish{.module = CleanerModule::trash, .deed = Wish::Deed::none}, Wish{.module = {}, .deed = Wish::Deed::scan},
          Wish{.module = CleanerModule::privacy, .deed = Wish::Deed::scan},
          Wish{.module = {}, .deed = Wish::Deed::offerEmptyTrash}}) {
        const WishedAction action = actionOf(wish);
        EXPECT_EQ(wishOf(action.name, action.module), wish);
    }
    EXPECT_EQ(actionOf(Wish()).name, "") << "only shows the window";
}

TEST(Wish, AnUnknownActionIsNone) {
    EXPECT_EQ(wishOf("clean", ""), std::nullopt);
    EXPECT_EQ(wishOf("module", "bin"), Wish()) << "the window is shown all the same";
}

} // namespace
} // namespace vellmoor
