#include "Arguments.h"

#include "TemporaryFolder.h"

#include <gmock/gmock.h>

namespace vellmoor::probe {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

const test::TemporaryFolder& home() {
    static const test::TemporaryFolder folder;
    return folder;
}

TEST(ProbeArguments, AreReadInAnyOrderOfOptions) {
    const auto arguments = parse({"--layout", "macos", "--home", home().path().string(), "--language", "zh", "clean",
                                  "systemJunk", "--tick", "User Caches", "--select", "none", "--tick", "B"});
    ASSERT_TRUE(arguments) << arguments.error();
    EXPECT_EQ(arguments->layout, Layout::Mac);
    EXPECT_EQ(arguments->home, home().path());
    EXPECT_EQ(arguments->language, AppLanguage::chinese);
    EXPECT_EQ(arguments->command, Command::Clean);
    EXPECT_EQ(arguments->module, CleanerModule::systemJunk);
    EXPECT_EQ(arguments->selection, Selection::None);
    EXPECT_THAT(arguments->ticks, ElementsAre("User Caches", "B"));
}

TEST(ProbeArguments, AnOptionMayStandBeforeTheModule) {
    const auto arguments = parse({"scan", "--progress", "trash"});
    ASSERT_TRUE(arguments) << arguments.error();
    EXPECT_TRUE(arguments->showsProgress);
    EXPECT_EQ(arguments->module, CleanerModule::trash);
}

TEST(ProbeArguments, AHomeIsTakenWithItsLinksResolved) {
    home().folder("real");
    const auto link = home().link("real", "link");
    EXPECT_EQ(parse({"--home", link.string(), "scan", "trash"})->home, home() / "real");
}

class WrongCall : public ::testing::TestWithParam<std::vector<std::string>> {};

TEST_P(WrongCall, IsToldInOneLine) {
    const auto arguments = parse(GetParam());
    ASSERT_FALSE(arguments);
    EXPECT_NE(arguments.error(), "");
    EXPECT_THAT(arguments.error(), Not(HasSubstr("\n")));
}

INSTANTIATE_TEST_SUITE_P(
    Probe, WrongCall,
    ::testing::Values(std::vector<std::string>{}, std::vector<std::string>{"--layout"},
                      std::vector<std::string>{"--layout", "windows", "scan", "trash"},
                      std::vector<std::string>{"--home", "/nowhere at all", "scan", "trash"},
                      std::vector<std::string>{"--home", "/etc/passwd", "scan", "trash"},
                      std::vector<std::string>{"--root", "", "scan", "trash"},
                      std::vector<std::string>{"--language", "fr", "scan", "trash"},
                      std::vector<std::string>{"--unknown", "scan", "trash"},
                      std::vector<std::string>{"--running", "file", "scan", "trash"}, std::vector<std::string>{"fly"},
                      std::vector<std::string>{"scan"}, std::vector<std::string>{"scan", "Trash"},
                      std::vector<std::string>{"scan", "trash", "privacy"},
                      std::vector<std::string>{"scan", "trash", "--select", "all"},
                      std::vector<std::string>{"report", "trash", "--progress"}, std::vector<std::string>{"measure"},
                      std::vector<std::string>{"clean", "trash"},
                      std::vector<std::string>{"--home", "/tmp", "clean", "trash", "--select", "some"},
                      std::vector<std::string>{"--home", "/tmp", "clean", "trash", "--tick"},
                      std::vector<std::string>{"startup"}, std::vector<std::string>{"startup", "list", "more"},
                      std::vector<std::string>{"startup", "disable", "id"},
                      std::vector<std::string>{"--home", "/tmp", "startup", "enable"}));

} // namespace
} // namespace vellmoor::probe
