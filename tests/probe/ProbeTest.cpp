// The probe as it is called, on throw-away homes.
#include "TemporaryFolder.h"
#include "programs/Commands.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iterator>
#include <pwd.h>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using nlohmann::json;
using test::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;

constexpr std::int64_t mebibyte = 1 << 20;

class Probe : public ::testing::Test {
protected:
    Probe() {
        folder_.folder("home");
        folder_.folder("root");
    }

    // Sanitizers report leaks on standard error, which would be taken for the probe's.
    static void SetUpTestSuite() { ::setenv("ASAN_OPTIONS", "detect_leaks=0", 1); }

    [[nodiscard]] CommandResult call(const std::vector<std::string>& words) const {
        return commands::result(VELLMOOR_PROBE, words);
    }
    [[nodiscard]] CommandResult callOn(const std::string& layout, std::vector<std::string> words) const {
        std::vector<std::string> all{
            "--layout", layout, "--home", home_.string(), "--root", (folder_ / "root").string(), "--language", "en"};
        all.insert(all.end(), words.begin(), words.end());
        return call(all);
    }
    [[nodiscard]] json answer(const std::string& layout, const std::vector<std::string>& words) const {
        const CommandResult result = callOn(layout, words);
        EXPECT_EQ(result.status, 0) << result.output;
        return json::parse(result.output);
    }
    [[nodiscard]] bool has(const fs::path& path) const { return fs::exists(fs::symlink_status(home_ / path)); }

    // Two preselected caches and an old installer that is not preselected.
    void makeMacJunk() const {
        folder_.file("home/Library/Caches/org.one/data", mebibyte);
        folder_.file("home/Library/Caches/org.two", mebibyte);
        folder_.file("home/Downloads/old.dmg", mebibyte);
        folder_.setModified("home/Downloads/old.dmg", std::chrono::system_clock::now() - 24h * 30);
    }
    void makeLinuxJunk() const {
        folder_.file("home/.cache/one/data", mebibyte);
        folder_.file("home/Downloads/old.deb", mebibyte);
        folder_.setModified("home/Downloads/old.deb", std::chrono::system_clock::now() - 24h * 30);
    }

    TemporaryFolder folder_;
    fs::path home_ = folder_ / "home";
};

const json& itemTitled(const json& snapshot, const std::string& title) {
    static const json none;
    for (const json& item : snapshot.at("cleanupItems")) {
        if (item.at("title") == title) {
            return item;
        }
    }
    ADD_FAILURE() << "no item is titled " << title;
    return none;
}

TEST_F(Probe, AWrongCallPrintsOneLineAndExitsWithTwo) {
    for (const std::vector<std::string>& words : {std::vector<std::string>{},
                                                  {"fly"},
                                                  {"scan", "nothing"},
                                                  {"clean", "trash"},
                                                  {"--home", "/x", "scan", "trash"}}) {
        const CommandResult result = call(words);
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.output, EndsWith("\n"));
        EXPECT_EQ(std::ranges::count(result.output, '\n'), 1) << result.output;
    }
}

TEST_F(Probe, HelpIsNoFailure) {
    const CommandResult result = call({"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("startup list | disable ID | enable ID"));
}

TEST_F(Probe, RefusesToChangeTheRealHomeAndAllAboveIt) {
    // With --select none nothing would be removed even if this went wrong.
    const fs::path account = ::getpwuid(::getuid())->pw_dir;
    for (const fs::path& home : {account, account.parent_path(), fs::path("/")}) {
        const CommandResult result = call({"--home", home.string(), "clean", "systemJunk", "--select", "none"});
        EXPECT_EQ(result.status, 2) << home;
        EXPECT_THAT(result.output, HasSubstr("real home"));
    }
    ::setenv("HOME", home_.c_str(), 1);
    EXPECT_EQ(callOn("linux", {"clean", "systemJunk", "--select", "none"}).status, 2);
    ::setenv("HOME", account.c_str(), 1);
}

TEST_F(Probe, AScanPrintsTheRecordsFields) {
    makeMacJunk();
    const json snapshot = answer("macos", {"scan", "systemJunk"});
    for (const char* field :
         {"cleanupItems", "fileCandidates", "storageSegments", "diskSummary", "startupCount", "backgroundCount",
          "privacyCount", "memorySnapshot", "memoryApps", "startupItems", "permissionHints"}) {
        EXPECT_TRUE(snapshot.contains(field)) << field;
    }
    const json& caches = itemTitled(snapshot, "User Caches");
    EXPECT_EQ(caches.at("module"), "systemJunk");
    EXPECT_EQ(caches.at("risk"), "safe");
    EXPECT_EQ(caches.at("tint"), "teal");
    EXPECT_EQ(caches.at("bytes"), 2 * mebibyte);
    EXPECT_EQ(caches.at("files"), 2);
    EXPECT_EQ(caches.at("isSelected"), true);
    EXPECT_TRUE(caches.at("appInfo").is_null());
    EXPECT_THAT(caches.at("id").get<std::string>(), SizeIs(36));
    ASSERT_EQ(caches.at("targets").size(), 2U);
    EXPECT_THAT(caches.at("targets").at(0).at("url").get<std::string>(), HasSubstr("/home/Library/Caches/org."));
    const json& old = itemTitled(snapshot, "Download Leftovers").at("targets").at(0);
    const auto monthAgo =
        std::chrono::duration<double>((std::chrono::system_clock::now() - 24h * 30).time_since_epoch());
    EXPECT_NEAR(old.at("modifiedAt").get<double>(), monthAgo.count(), 600);
}

TEST_F(Probe, ProgressComesLineByLineOnStandardError) {
    const fs::path script = folder_.text("call.sh", "#!/bin/sh\nexec \"$@\" 2>&1 >/dev/null\n");
    folder_.setMode("call.sh", 0755);
    const CommandResult result =
        commands::result(script, {VELLMOOR_PROBE, "--home", home_.string(), "scan", "trash", "--progress"});
    ASSERT_EQ(result.status, 0) << result.output;
    double last = 0;
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);) {
        const json update = json::parse(line);
        EXPECT_NE(update.at("stage"), "");
        EXPECT_GE(update.at("fraction").get<double>(), 0);
        last = update.at("fraction").get<double>();
    }
    EXPECT_GT(last, 0.5);
}

TEST_F(Probe, MeasuresPathsWithAllocatedBytes) {
    folder_.file("home/folder/a", mebibyte);
    folder_.file("home/folder/.hidden", mebibyte);
    folder_.sparse("home/sparse", mebibyte);
    EXPECT_EQ(answer("linux", {"measure", home_ / "folder", home_ / "sparse", home_ / "missing"}),
              json::parse(R"([{"path": ")" + (home_ / "folder").string() + R"(", "bytes": 1048576, "files": 1},
                              {"path": ")" +
                          (home_ / "sparse").string() + R"(", "bytes": 0, "files": 1},
                              {"path": ")" +
                          (home_ / "missing").string() + R"(", "bytes": 0, "files": 0}])"));
}

TEST_F(Probe, CleansTheDefaultSelectionOfAMacHomeIntoItsTrash) {
    makeMacJunk();
    folder_.file("home/.Trash/org.two");
    const json report = answer("macos", {"clean", "systemJunk"});
    EXPECT_EQ(report.at("removedCount"), 2);
    EXPECT_EQ(report.at("failedCount"), 0);
    EXPECT_EQ(report.at("freedBytes"), 2 * mebibyte);
    EXPECT_EQ(report.at("message"), "Processed 2 items, estimated 2.1 MB freed.");
    EXPECT_FALSE(has("Library/Caches/org.one"));
    EXPECT_TRUE(has(".Trash/org.one/data"));
    EXPECT_EQ(std::distance(fs::directory_iterator(home_ / ".Trash"), {}), 3) << "a clash must not replace";
    EXPECT_TRUE(has("Downloads/old.dmg"));
}

TEST_F(Probe, CleansTheDefaultSelectionOfALinuxHomeIntoItsTrash) {
    makeLinuxJunk();
    EXPECT_EQ(answer("linux", {"clean", "systemJunk"}).at("removedCount"), 1);
    EXPECT_FALSE(has(".cache/one"));
    EXPECT_TRUE(has(".local/share/Trash/files/one/data"));
    EXPECT_TRUE(has(".local/share/Trash/info/one.trashinfo"));
    EXPECT_TRUE(has("Downloads/old.deb"));
}

TEST_F(Probe, CleansEveryRowOrNoneOrThoseTicked) {
    makeLinuxJunk();
    EXPECT_EQ(answer("linux", {"clean", "systemJunk", "--select", "none"}).at("attemptedCount"), 0);
    EXPECT_TRUE(has(".cache/one"));
    EXPECT_EQ(
        answer("linux", {"clean", "systemJunk", "--select", "none", "--tick", "Download Leftovers"}).at("removedCount"),
        1);
    EXPECT_FALSE(has("Downloads/old.deb"));
    EXPECT_TRUE(has(".cache/one"));
    makeLinuxJunk();
    EXPECT_EQ(answer("linux", {"clean", "systemJunk", "--select", "all"}).at("removedCount"), 2);
    EXPECT_FALSE(has("Downloads/old.deb"));
    EXPECT_FALSE(has(".cache/one"));
}

TEST_F(Probe, ARowThatIsNotThereCannotBeTicked) {
    makeLinuxJunk();
    const CommandResult result = callOn("linux", {"clean", "systemJunk", "--tick", "No Such Row"});
    EXPECT_EQ(result.status, 2);
    EXPECT_TRUE(has(".cache/one"));
}

TEST_F(Probe, EmptiesTheTrashForGood) {
    folder_.file("home/.local/share/Trash/files/item/inner", mebibyte);
    folder_.text("home/.local/share/Trash/info/item.trashinfo", "[Trash Info]\n");
    EXPECT_EQ(answer("linux", {"clean", "trash"}).at("removedCount"), 1);
    EXPECT_FALSE(has(".local/share/Trash/files/item"));
    EXPECT_FALSE(has(".local/share/Trash/info/item.trashinfo"));
}

TEST_F(Probe, CleansNothingOutsideHomeAndRoot) {
    folder_.file("elsewhere/old.deb", mebibyte);
    folder_.setModified("elsewhere/old.deb", std::chrono::system_clock::now() - 24h * 30);
    folder_.text("home/.config/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"" + (folder_ / "elsewhere").string() + "\"\n");
    EXPECT_EQ(itemTitled(answer("linux", {"scan", "systemJunk"}), "Download Leftovers").at("targets").size(), 1U);
    EXPECT_EQ(answer("linux", {"clean", "systemJunk", "--select", "all"}).at("attemptedCount"), 0);
    EXPECT_TRUE(fs::exists(folder_ / "elsewhere/old.deb"));
}

TEST_F(Probe, TheVariablesOfTheRealUserDoNotCount) {
    makeLinuxJunk();
    folder_.file("other/three", mebibyte);
    ::setenv("XDG_CACHE_HOME", (folder_ / "other").c_str(), 1);
    ::setenv("CARGO_HOME", (folder_ / "other").c_str(), 1);
    const json snapshot = answer("linux", {"scan", "systemJunk"});
    ::unsetenv("XDG_CACHE_HOME");
    ::unsetenv("CARGO_HOME");
    EXPECT_EQ(itemTitled(snapshot, "User Caches").at("targets").size(), 1U);
    EXPECT_THAT(snapshot.dump(), Not(HasSubstr("/other")));
}

TEST_F(Probe, AMacRootHasItsVolumesAndTools) {
    folder_.file("root/Volumes/Stick/.Trashes/" + std::to_string(::getuid()) + "/item", mebibyte);
    folder_.text("root/usr/sbin/sysctl", "#!/bin/sh\necho 8589934592\n");
    folder_.setMode("root/usr/sbin/sysctl", 0755);
    const json snapshot = answer("macos", {"scan", "trash"});
    EXPECT_EQ(itemTitled(snapshot, "Stick Trash").at("bytes"), mebibyte);
    EXPECT_EQ(snapshot.at("memorySnapshot").at("totalBytes"), 8589934592);
}

TEST_F(Probe, TheRunningApplicationsOfAMacAreGiven) {
    folder_.text("running.json", R"([{"name": "A"}, 7])");
    EXPECT_EQ(callOn("macos", {"--running", folder_ / "running.json", "scan", "trash"}).status, 2);
    folder_.text("running.json", R"([{"name": "A", "bundleIdentifier": null, "bundlePath": "/Applications/A.app",
                                      "pid": 7, "isActive": true}])");
    EXPECT_EQ(callOn("macos", {"--running", folder_ / "running.json", "scan", "trash"}).status, 0);
}

TEST_F(Probe, ListsAndSwitchesLoginItems) {
    folder_.text("home/.config/autostart/org.example.Tool.desktop",
                 "[Desktop Entry]\nType=Application\nName=Tool\nExec=/usr/bin/tool\n");
    const json items = answer("linux", {"startup", "list"});
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items.at(0).at("name"), "Tool");
    EXPECT_EQ(items.at(0).at("isEnabled"), true);
    const std::string id = items.at(0).at("id");
    EXPECT_EQ(answer("linux", {"startup", "disable", id}).at("succeeded"), true);
    EXPECT_FALSE(has(".config/autostart/org.example.Tool.desktop"));
    EXPECT_TRUE(has(".config/autostart.disabled/org.example.Tool.desktop"));
    const std::string disabled = answer("linux", {"startup", "list"}).at(0).at("id");
    EXPECT_EQ(answer("linux", {"startup", "enable", disabled}).at("succeeded"), true);
    EXPECT_TRUE(has(".config/autostart/org.example.Tool.desktop"));
    EXPECT_EQ(callOn("linux", {"startup", "disable", "no such id"}).status, 2);
}

TEST_F(Probe, AFailedSwitchExitsWithOneAndTellsWhy) {
    const std::string entry = "[Desktop Entry]\nType=Application\nName=A\nExec=/bin/a\n";
    folder_.text("home/.config/autostart/a.desktop", entry);
    folder_.text("home/.config/autostart.disabled/a.desktop", entry);
    const json items = answer("linux", {"startup", "list"});
    ASSERT_EQ(items.size(), 2U);
    ASSERT_EQ(items.at(1).at("isEnabled"), false);
    const CommandResult result = callOn("linux", {"startup", "enable", items.at(1).at("id")});
    EXPECT_EQ(result.status, 1) << result.output;
    EXPECT_EQ(json::parse(result.output).at("succeeded"), false);
    EXPECT_TRUE(has(".config/autostart.disabled/a.desktop"));
}

TEST_F(Probe, AReportIsATableInTheChosenLanguage) {
    makeLinuxJunk();
    const CommandResult english = callOn("linux", {"report", "systemJunk"});
    EXPECT_EQ(english.status, 0);
    EXPECT_THAT(english.output, HasSubstr("\nSystem Junk · 2.1 MB\n"));
    EXPECT_THAT(english.output, ::testing::ContainsRegex("\\[x\\]  User Caches  +1 MB  +1 file  Safe +Regenerable"));
    EXPECT_THAT(english.output, ::testing::ContainsRegex("\\[ \\]  Download Leftovers  +1 MB  +1 file  Caution"));
    EXPECT_THAT(english.output, Not(HasSubstr("\x1b")));
    EXPECT_THAT(callOn("linux", {"--language", "zh", "report", "systemJunk"}).output,
                HasSubstr("\n系统垃圾 · 2.1 MB\n"));
}

} // namespace
} // namespace vellmoor
