#include "programs/Commands.h"

#include "LinuxPlatform.h"
#include "TemporaryFolder.h"
#include "disk/Files.h"

#include <gmock/gmock.h>

#include <csignal>
#include <thread>
#include <vector>

namespace vellmoor {
namespace {

using ::testing::Eq;
using ::testing::HasSubstr;
using ::testing::Optional;

class Commands : public ::testing::Test {
protected:
    // A small program; the shell is only its interpreter.
    [[nodiscard]] Path tool(const std::string& body) const {
        const Path path = folder_.text("tool " + std::to_string(++count_), "#!/bin/sh\n" + body + "\n");
        folder_.setMode(path.filename(), 0755);
        return path;
    }

    test::TemporaryFolder folder_;
    LinuxPlatform platform_;
    mutable int count_ = 0;
};

TEST_F(Commands, AMissingToolAnswersTheLaunchError) {
    EXPECT_FALSE(platform_.commandOutput("/nowhere/tool", {}));
    const CommandResult result = platform_.commandResult("/nowhere/tool", {});
    EXPECT_EQ(result.status, -1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errorMessage, "No such file or directory");
    EXPECT_EQ(result.combinedOutput(), result.errorMessage);
}

TEST_F(Commands, AFileThatIsNoProgramAnswersTheLaunchError) {
    const CommandResult result = platform_.commandResult(folder_.text("text", "text"), {});
    EXPECT_EQ(result.status, -1);
    EXPECT_EQ(result.errorMessage, "Permission denied");
}

TEST_F(Commands, AToolThatFailsOnStandardErrorGivesItsTextAndNoOutput) {
    const Path failing = tool("echo went wrong >&2; exit 1");
    EXPECT_FALSE(platform_.commandOutput(failing, {}));
    const CommandResult result = platform_.commandResult(failing, {});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "went wrong\n");
    EXPECT_EQ(result.errorMessage, "");
}

TEST_F(Commands, AToolWithoutOutputAnswersTheEmptyText) {
    EXPECT_THAT(platform_.commandOutput(tool("exit 0"), {}), Optional(Eq("")));
}

TEST_F(Commands, TheTwoStreamsArriveAsWritten) {
    const Path mixed = tool("echo one; echo two >&2; echo three");
    EXPECT_EQ(platform_.commandResult(mixed, {}).output, "one\ntwo\nthree\n");
    EXPECT_THAT(platform_.commandOutput(mixed, {}), Optional(Eq("one\nthree\n")));
}

TEST_F(Commands, ArgumentsArriveAsTheyAre) {
    const Path echo = tool(R"(printf '<%s>' "$@")");
    EXPECT_THAT(platform_.commandOutput(echo, {"a b", "", "$HOME", "*", "'q' \"q\""}),
                Optional(Eq("<a b><><$HOME><*><'q' \"q\">")));
}

TEST_F(Commands, OutputLargerThanAPipeIsReadWhole) {
    const auto output = platform_.commandOutput(tool("head -c 3000000 /dev/zero | tr '\\0' x"), {});
    ASSERT_TRUE(output);
    EXPECT_EQ(output->size(), 3'000'000U);
}

TEST_F(Commands, OutputThatIsNotUtf8IsNoText) {
    const Path odd = tool(R"(printf 'caf\351\n')");
    EXPECT_FALSE(platform_.commandOutput(odd, {}));
    const CommandResult result = platform_.commandResult(odd, {});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errorMessage, "");
}

TEST_F(Commands, AToolEndedByASignalHas128AndItsNumber) {
    EXPECT_EQ(platform_.commandResult(tool("kill -9 $$"), {}).status, 128 + SIGKILL);
    EXPECT_FALSE(platform_.commandOutput(tool("echo text; kill -15 $$"), {}));
}

TEST_F(Commands, TheToolInheritsTheEnvironment) {
    ::setenv("VELLMOOR_TEST_VALUE", "handed down", 1);
    EXPECT_THAT(platform_.commandOutput(tool("printf %s \"$VELLMOOR_TEST_VALUE\""), {}), Optional(Eq("handed down")));
    ::unsetenv("VELLMOOR_TEST_VALUE");
}

TEST_F(Commands, AToolSpeaksEnglishWhenItIsToBeUnderstood) {
    ::setenv("LC_ALL", "zh_CN.UTF-8", 1);
    ::setenv("VELLMOOR_TEST_VALUE", "handed down", 1);
    const Path speaking = tool("printf '%s, %s' \"$LC_ALL\" \"$VELLMOOR_TEST_VALUE\"");
    EXPECT_EQ(platform_.untranslatedResult(speaking, {}).output, "C, handed down");
    EXPECT_EQ(platform_.commandResult(speaking, {}).output, "zh_CN.UTF-8, handed down");
    ::unsetenv("VELLMOOR_TEST_VALUE");
    ::unsetenv("LC_ALL");
}

TEST_F(Commands, NoDescriptorIsLeftOpenHereOrGivenToTheTool) {
    const std::size_t before = platform_.entries("/proc/self/fd")->size();
    for (int run = 0; run < 20; ++run) {
        (void)platform_.commandResult(tool("exit 3"), {});
        (void)platform_.commandOutput("/nowhere/tool", {});
    }
    EXPECT_EQ(platform_.entries("/proc/self/fd")->size(), before);
    // 0, 1 and 2, and the one by which ls lists; the shell itself has its script closed before.
    const auto listed = platform_.commandOutput("/bin/ls", {"/proc/self/fd"});
    EXPECT_THAT(listed, Optional(Eq("0\n1\n2\n3\n")));
}

TEST_F(Commands, ToolsOfSeveralThreadsDoNotWaitForEachOther) {
    // The long tool ends only after the short one has: it would wait for ever if it kept the other's pipe open.
    const Path mark = folder_ / "mark";
    const Path longTool = tool("while [ ! -e '" + mark.string() + "' ]; do sleep 0.02; done; echo long");
    const Path shortTool = tool("echo short");
    std::optional<std::string> longOutput;
    std::thread other([&] { longOutput = platform_.commandOutput(longTool, {}); });
    EXPECT_THAT(platform_.commandOutput(shortTool, {}), Optional(Eq("short\n")));
    folder_.file("mark");
    other.join();
    EXPECT_THAT(longOutput, Optional(Eq("long\n")));
}

TEST(CombinedOutput, JoinsOutputAndErrorWithOneLineFeed) {
    EXPECT_EQ((CommandResult{1, "out", "err"}).combinedOutput(), "out\nerr");
    EXPECT_EQ((CommandResult{1, "out\n", ""}).combinedOutput(), "out\n");
    EXPECT_EQ((CommandResult{1, "", ""}).combinedOutput(), "");
}

} // namespace
} // namespace vellmoor
