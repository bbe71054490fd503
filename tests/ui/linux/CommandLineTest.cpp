// What the words after the program's name ask for, and how a wish travels over the bus.
#include "CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace vellmoor {
namespace {

using ::testing::HasSubstr;

std::expected<CommandLine, std::string> read(const std::vector<const char*>& words) {
    return readCommandLine(words);
}

TEST(CommandLine, WithoutWordsTheWindowOpensAsItWas) {
    const auto line = read({});
    ASSERT_TRUE(line);
    EXPECT_EQ(line->kind, CommandLine::Kind::window);
    EXPECT_EQ(line->wish, Wish());
}

TEST(CommandLine, AModuleIsNamedInOneWordOrInTwo) {
    EXPECT_EQ(read({"--module", "trash"})->wish.module, CleanerModule::trash);
    EXPECT_EQ(read({"--module=systemJunk"})->wish.module, CleanerModule::systemJunk);
}

TEST(CommandLine, TheDeedsAreReadAndAreOneAtATime) {
    EXPECT_EQ(read({"--scan"})->wish.deed, Wish::Deed::scan);
    EXPECT_EQ(read({"--empty-trash"})->wish.deed, Wish::Deed::offerEmptyTrash);
    EXPECT_FALSE(read({"--scan", "--empty-trash"}));
}

TEST(CommandLine, HelpAndVersionComeBeforeEverythingElse) {
    EXPECT_EQ(read({"--help"})->kind, CommandLine::Kind::help);
    EXPECT_EQ(read({"-h"})->kind, CommandLine::Kind::help);
    EXPECT_EQ(read({"--module", "trash", "--version"})->kind, CommandLine::Kind::version);
}

TEST(CommandLine, AFaultIsOneLineThatNamesTheWord) {
    for (const auto& [words, named] : std::vector<std::pair<std::vector<const char*>, const char*>>{
             {{"--modul", "trash"}, "unknown option '--modul'"},
             {{"--module", "bin"}, "no module 'bin'"},
             {{"--module="}, "no module ''"},
             {{"--module"}, "--module wants a name"},
             {{"-x"}, "unknown option '-x'"},
             {{"/tmp"}, "it takes no '/tmp'"}}) {
        const auto line = read(words);
        ASSERT_FALSE(line) << named;
        EXPECT_THAT(line.error(), HasSubstr(named));
        EXPECT_EQ(line.error().find('\n'), std::string::npos);
    }
}

TEST(CommandLine, ASessionManagersWordsAreLeftToQt) {
    const auto line = read({"-session", "10f7a2e1", "--scan"});
    ASSERT_TRUE(line);
    EXPECT_EQ(line->wish.deed, Wish::Deed::scan);
    EXPECT_TRUE(read({"-session"}));
}

TEST(CommandLine, TheHelpNamesEveryModule) {
    for (const CleanerModule module : allCleanerModules) {
        EXPECT_THAT(helpText(), HasSubstr(std::string(rawValue(module))));
    }
}

TEST(Wish, ArrivesOverTheBusAsItWasSent) {
    for (const Wish& wish : {Wish{.module = CleanerModule::trash, .deed = Wish::Deed::none},
                             Wish{.module = {}, .deed = Wish::Deed::scan},
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
