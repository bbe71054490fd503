// The command line as a process of its own, on throw-away homes.
#include "CliHome.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vellmoor::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using nlohmann::json;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

using Words = std::vector<std::string>;

constexpr int done = 0;
constexpr int failed = 1;
constexpr int wrongCall = 2;
constexpr int nothingToDo = 3;

class Cli : public ::testing::Test {
protected:
    /// A preselected cache and log, a developer cache and an old installer that are not preselected, an item in the
    /// Trash.
    void makeJunk() const {
        home_.file(".cache/app/data", 1 << 20);
        home_.file(".local/state/tool/run.log");
        home_.file(".cache/pip/wheel", 1 << 20);
        const fs::path old = home_.file("Downloads/old.deb", 1 << 20);
        fs::last_write_time(old, fs::file_time_type::clock::now() - 24h * 30);
        home_.file(".local/share/Trash/files/item");
        home_.text(".local/share/Trash/info/item.trashinfo",
                   "[Trash Info]\nPath=" + home_.place("item").string() + "\nDeletionDate=2026-01-01T00:00:00\n");
    }
    [[nodiscard]] json answer(const Words& words) const {
        const Ended ended = home_.call(words);
        EXPECT_EQ(ended.status, done) << ended.err;
        return json::parse(ended.out);
    }

    CliHome home_;
};

std::vector<std::string> keysOf(const json& snapshot) {
    std::vector<std::string> keys;
    for (const json& row : snapshot.at("cleanupItems")) {
        keys.push_back(row.at("key"));
    }
    return keys;
}

TEST_F(Cli, HelpAndVersionAreNoFailuresInBothLanguages) {
    EXPECT_THAT(home_.call({"--help"}).out, StartsWith("Usage: vellmoor-cli"));
    EXPECT_THAT(home_.call({"--help", "--language", "zh"}).out, StartsWith("用法：vellmoor-cli"));
    home_.language = "zh_CN.UTF-8";
    EXPECT_THAT(home_.call({"clean", "--help"}).out, StartsWith("用法：vellmoor-cli"));
    const Ended version = home_.call({"--version"});
    EXPECT_EQ(version.status, done);
    EXPECT_THAT(version.out, StartsWith("vellmoor-cli 0."));
}

TEST_F(Cli, AWrongCallSaysSoInOneLineAndExitsWithTwo) {
    for (const Words& words : {Words{}, {"fly"}, {"scan", "nothing"}, {"clean", "systemJunk"}}) {
        const Ended ended = home_.call(words);
        EXPECT_EQ(ended.status, wrongCall);
        EXPECT_THAT(ended.out, IsEmpty());
        EXPECT_EQ(std::ranges::count(ended.err, '\n'), 1) << ended.err;
    }
    home_.language = "zh_CN.UTF-8";
    EXPECT_THAT(home_.call({"fly"}).err, HasSubstr("没有名为 fly 的命令"));
}

TEST_F(Cli, AScanPrintsEachRowWithItsKeyAndChangesNothing) {
    makeJunk();
    const auto before = home_.inventory();
    const Ended ended = home_.call({"scan", "systemJunk"});
    EXPECT_EQ(ended.status, done);
    EXPECT_THAT(ended.out, ::testing::ContainsRegex("\\[x\\]  User Caches +1 MB +1 file +Safe +systemJunk/userCaches"));
    EXPECT_THAT(ended.out, ::testing::ContainsRegex("\\[ \\]  Developer Caches .*systemJunk/developerCaches"));
    EXPECT_THAT(ended.out + ended.err, Not(HasSubstr("\x1b"))) << "no terminal, no control codes";
    EXPECT_EQ(home_.inventory(), before);
    EXPECT_FALSE(home_.has(".local/state/vellmoor"));
}

TEST_F(Cli, KeysAreTheSameInBothLanguages) {
    makeJunk();
    const auto english = keysOf(answer({"scan", "--json"}));
    EXPECT_THAT(english, Contains("systemJunk/userCaches"));
    EXPECT_THAT(english, Contains("trash/home"));
    const json chinese = answer({"scan", "--json", "--language", "zh"});
    EXPECT_EQ(keysOf(chinese), english);
    EXPECT_EQ(chinese.at("cleanupItems").at(0).at("title"), "用户缓存");
}

TEST_F(Cli, ACleanMovesThePreselectedSafeRowsToTheTrashAndNothingElse) {
    makeJunk();
    const Ended ended = home_.call({"clean", "smartScan", "--yes"});
    EXPECT_EQ(ended.status, done) << ended.err;
    EXPECT_FALSE(home_.has(".cache/app"));
    EXPECT_FALSE(home_.has(".local/state/tool/run.log"));
    EXPECT_TRUE(home_.has(".local/share/Trash/files/app/data"));
    for (const char* stays : {".cache/pip/wheel", "Downloads/old.deb", ".local/share/Trash/files/item"}) {
        EXPECT_TRUE(home_.has(stays)) << stays;
    }
    EXPECT_THAT(ended.out, StartsWith("Processed 2 items"));
    EXPECT_THAT(ended.err, HasSubstr("--for-good"));
}

TEST_F(Cli, ACleansReportIsJsonWhenAskedFor) {
    makeJunk();
    const json report = answer({"clean", "systemJunk", "--yes", "--json"});
    EXPECT_EQ(report.at("removedCount"), 2);
    EXPECT_EQ(report.at("outcomes").at(0).at("fate"), "trashed");
}

TEST_F(Cli, WithoutYesNothingIsCleaned) {
    makeJunk();
    const auto before = home_.inventory();
    const Ended ended = home_.call({"clean", "systemJunk"});
    EXPECT_EQ(ended.status, wrongCall);
    EXPECT_THAT(ended.err, HasSubstr("--yes"));
    EXPECT_EQ(home_.inventory(), before);
}

TEST_F(Cli, RowsAreTickedByKeyAndByTitleInEitherLanguage) {
    for (const char* tick : {"systemJunk/downloadLeftovers", "Download Leftovers", "下载残留"}) {
        makeJunk();
        EXPECT_EQ(home_.call({"clean", "systemJunk", "--yes", "--only", "--tick", tick}).status, done);
        EXPECT_FALSE(home_.has("Downloads/old.deb")) << tick;
        EXPECT_TRUE(home_.has(".cache/app")) << tick;
    }
}

TEST_F(Cli, ARowThatIsNotThereIsAWrongCallAndNothingIsCleaned) {
    makeJunk();
    const auto before = home_.inventory();
    EXPECT_EQ(home_.call({"clean", "systemJunk", "--yes", "--tick", "No Such Row"}).status, wrongCall);
    EXPECT_EQ(home_.inventory(), before);
}

TEST_F(Cli, ADryRunShowsWhatWouldGoAndChangesNothing) {
    makeJunk();
    const auto before = home_.inventory();
    const Ended ended = home_.call(
        {"clean", "smartScan", "--dry-run", "--yes", "--for-good", "--memory", "--tick", "Developer Caches"});
    EXPECT_EQ(ended.status, done);
    EXPECT_THAT(ended.out, HasSubstr("To the Trash: User Caches"));
    EXPECT_THAT(ended.out, HasSubstr("To the Trash: Developer Caches"));
    EXPECT_THAT(ended.out, HasSubstr("Gone for good: "));
    EXPECT_THAT(ended.out, HasSubstr(home_.place(".cache/app").string()));
    EXPECT_EQ(home_.inventory(), before);
    EXPECT_EQ(home_.trashedCount(), 1U);
    EXPECT_FALSE(home_.has(".local/state/vellmoor"));
    const json plan = answer({"clean", "systemJunk", "--dry-run", "--json"});
    EXPECT_EQ(keysOf(plan), (std::vector<std::string>{"systemJunk/userCaches", "systemJunk/systemLogs"}));
}

TEST_F(Cli, TheTrashIsEmptiedOnlyForGood) {
    makeJunk();
    EXPECT_EQ(home_.call({"clean", "trash", "--yes", "--only", "--tick", "trash/home"}).status, wrongCall);
    EXPECT_EQ(home_.trashedCount(), 1U);
    EXPECT_EQ(home_.call({"clean", "trash", "--yes", "--only", "--tick", "trash/home", "--for-good"}).status, done);
    EXPECT_EQ(home_.trashedCount(), 0U);
}

TEST_F(Cli, NothingToCleanIsAStatusOfItsOwn) {
    const Ended ended = home_.call({"clean", "systemJunk", "--yes"});
    EXPECT_EQ(ended.status, nothingToDo);
    EXPECT_THAT(ended.err, HasSubstr("nothing to clean"));
}

TEST_F(Cli, AFailureIsToldWithItsReasonAndExitsWithOne) {
    home_.file(".local/state/tool/run.log");
    ::chmod(home_.place(".local/state/tool").c_str(), 0555);
    const Ended ended = home_.call({"clean", "systemJunk", "--yes"});
    ::chmod(home_.place(".local/state/tool").c_str(), 0755);
    EXPECT_EQ(ended.status, failed);
    EXPECT_THAT(ended.err, HasSubstr("run.log: Permission denied"));
    EXPECT_TRUE(home_.has(".local/state/tool/run.log"));
}

TEST_F(Cli, AsRootItOnlyReads) {
    makeJunk();
    const Ended look = home_.call({"scan", "systemJunk"}, Who::Root);
    if (look.status == 127) {
        GTEST_SKIP() << "this user cannot become root, not even of a name space";
    }
    EXPECT_EQ(look.status, done);
    const auto before = home_.inventory();
    for (const Words& words : {Words{"clean", "systemJunk", "--yes"}, {"keep", "x"}, {"offer", "x"}, {"put-back"}}) {
        const Ended ended = home_.call(words, Who::Root);
        EXPECT_EQ(ended.status, failed) << words.front();
        EXPECT_THAT(ended.err, HasSubstr("as root nothing is changed"));
    }
    EXPECT_EQ(home_.call({"clean", "systemJunk", "--dry-run"}, Who::Root).status, done);
    EXPECT_EQ(home_.inventory(), before);
    EXPECT_FALSE(home_.has(".local/state/vellmoor"));
}

TEST_F(Cli, WhatIsKeptIsNotCleanedUntilItIsOfferedAgain) {
    makeJunk();
    home_.file(".cache/app/mine/data");
    const std::string mine = home_.place(".cache/app/mine").string();
    EXPECT_EQ(home_.call({"keep", ".cache/app/mine"}).status, done);
    EXPECT_EQ(home_.call({"keep", mine}).status, nothingToDo);
    EXPECT_EQ(home_.call({"kept"}).out, mine + "\n");
    EXPECT_EQ(answer({"kept", "--json"}), json::parse(R"([{"path": ")" + mine + R"(", "exists": true}])"));
    EXPECT_EQ(home_.call({"clean", "systemJunk", "--yes"}).status, done);
    EXPECT_TRUE(home_.has(".cache/app/mine/data"));
    EXPECT_FALSE(home_.has(".cache/app/data"));
    EXPECT_EQ(home_.call({"offer", mine}).status, done);
    EXPECT_EQ(home_.call({"offer", mine}).status, nothingToDo);
    EXPECT_EQ(home_.call({"clean", "systemJunk", "--yes"}).status, done);
    EXPECT_FALSE(home_.has(".cache/app/mine"));
}

TEST_F(Cli, HomeAndUserFoldersCannotBeKept) {
    home_.file("Documents/letter");
    for (const fs::path& path : {fs::path("/"), home_.home(), home_.place("Documents")}) {
        const Ended ended = home_.call({"keep", path.string()});
        EXPECT_EQ(ended.status, failed) << path;
        EXPECT_THAT(ended.err, HasSubstr("never removed"));
    }
    EXPECT_THAT(home_.call({"kept"}).out, IsEmpty());
}

TEST_F(Cli, ProgressIsOneLineOnATerminalAndPlainLinesElsewhere) {
    makeJunk();
    EXPECT_THAT(home_.call({"scan", "trash"}).err, HasSubstr("Reading"));
    EXPECT_THAT(home_.call({"scan", "trash", "--quiet"}).err, IsEmpty());
    const int ours = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_TRUE(ours >= 0 && ::grantpt(ours) == 0 && ::unlockpt(ours) == 0);
    const int its = ::open(::ptsname(ours), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(its, 0);
    EXPECT_EQ(home_.start({"scan", "trash"}, Who::User, its).ended().status, done);
    std::string seen(4096, '\0');
    const ssize_t count = ::read(ours, seen.data(), seen.size());
    seen.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    ::close(its);
    ::close(ours);
    EXPECT_THAT(seen, HasSubstr("\r\x1b[K"));
    EXPECT_THAT(seen, EndsWith("\r\x1b[K")) << "the line is taken away again";
}

TEST_F(Cli, TheInstalledProgramLinksNeitherQtNorTheStandIn) {
    const std::string listed = (home_.home() / "libraries").string();
    ASSERT_EQ(std::system(("ldd " VELLMOOR_CLI " > '" + listed + "'").c_str()), 0);
    std::ifstream in(listed);
    const std::string libraries{std::istreambuf_iterator<char>(in), {}};
    EXPECT_THAT(libraries, HasSubstr("libgio"));
    EXPECT_THAT(libraries, Not(HasSubstr("Qt")));
    EXPECT_THAT(libraries, Not(HasSubstr("plist")));
}

} // namespace
} // namespace vellmoor::test
