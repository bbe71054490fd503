// Cleans that are taken back by the command line: after their end, after a kill, beside another one.
#include "CliHome.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <random>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace vellmoor::test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

using Words = std::vector<std::string>;

constexpr int done = 0;
constexpr int failed = 1;
constexpr int wrongCall = 2;
constexpr int nothingToDo = 3;

/// All rows of all modules that go to the Trash.
const Words& everything() {
    static const Words words{"clean",
                             "smartScan",
                             "--yes",
                             "--tick",
                             "systemJunk/developerCaches",
                             "--tick",
                             "systemJunk/downloadLeftovers",
                             "--tick",
                             "privacy/chromium/cookies",
                             "--tick",
                             "performance/sessionStates"};
    return words;
}

class CliHistory : public ::testing::Test {
protected:
    CliHistory() {
        for (int index = 0; index < apps; ++index) {
            const std::string app = ".cache/app" + std::to_string(index);
            home_.file(app + "/data", 8192);
            home_.text(app + "/deep/er/file", "words " + std::to_string(index));
            fs::create_symlink("data", home_.place(app + "/link"));
            fs::permissions(home_.place(app + "/deep"), fs::perms::owner_all);
        }
        home_.text(".cache/odd \n \xE6\x96\x87%41/f", "odd");
        home_.text(".local/state/tool/run.log", "log");
        home_.text(".cache/pip/wheel", "wheel");
        home_.text(".config/chromium/Default/Preferences", "{}");
        home_.text(".config/chromium/Default/Cookies", "cookies");
        home_.text(".cache/sessions/xfce4-session-host:0", "session");
        home_.text("Downloads/old.deb", "package");
        home_.text("Documents/letter", "dear");
        home_.text(".local/share/program/data", "else the Trash makes the folder above it");
        for (const auto& entry : fs::recursive_directory_iterator(home_.home())) {
            if (entry.is_regular_file() && !entry.is_symlink()) {
                fs::last_write_time(entry, fs::file_time_type::clock::now() - std::chrono::hours(24 * 30));
            }
        }
        home_.handOver();
        before_ = home_.inventory();
    }

    [[nodiscard]] json history() const {
        const Ended ended = home_.call({"history", "--json"});
        EXPECT_EQ(ended.status, done) << ended.err;
        return json::parse(ended.out).at("cleans");
    }
    void expectAsBefore() const {
        const auto after = home_.inventory();
        for (const auto& [path, what] : before_) {
            const auto found = after.find(path);
            EXPECT_EQ(found == after.end() ? "nothing" : found->second, what) << path;
        }
        for (const auto& [path, what] : after) {
            EXPECT_TRUE(before_.contains(path)) << path << " is new";
        }
    }

    static constexpr int apps = 40;
    CliHome home_;
    std::map<std::string, std::string> before_;
};

TEST_F(CliHistory, ACleanAndAPuttingBackLeaveTheHomeByteForByteAsItWas) {
    const Ended cleaned = home_.call(everything());
    ASSERT_EQ(cleaned.status, done) << cleaned.err;
    EXPECT_FALSE(home_.has(".cache/app0"));
    EXPECT_FALSE(home_.has(".config/chromium/Default/Cookies"));
    EXPECT_TRUE(home_.has("Documents/letter"));
    EXPECT_THAT(cleaned.out, HasSubstr("vellmoor-cli put-back "));
    const Ended restored = home_.call({"put-back"});
    EXPECT_EQ(restored.status, done) << restored.err;
    expectAsBefore();
    EXPECT_EQ(home_.trashedCount(), 0U);
    EXPECT_EQ(home_.call({"put-back"}).status, nothingToDo);
}

TEST_F(CliHistory, TheHistoryListsACleanWithWhatIsInTheTrash) {
    ASSERT_EQ(home_.call(everything()).status, done);
    const json cleans = history();
    ASSERT_THAT(cleans, SizeIs(1));
    const json& clean = cleans.at(0);
    EXPECT_EQ(clean.at("state"), "finished");
    EXPECT_EQ(clean.at("module"), "smartScan");
    EXPECT_EQ(clean.at("trashedCount"), clean.at("movedCount"));
    EXPECT_EQ(clean.at("trashedCount"), home_.trashedCount());
    const std::string id = clean.at("id");
    const Ended english = home_.call({"history"});
    EXPECT_THAT(english.out, StartsWith(id.substr(0, 8)));
    EXPECT_THAT(english.out, HasSubstr("Smart Scan"));
    EXPECT_THAT(home_.call({"history", "--language", "zh"}).out, HasSubstr("智能扫描"));
    ASSERT_EQ(home_.call({"put-back", id.substr(0, 8)}).status, done);
    expectAsBefore();
}

TEST_F(CliHistory, EachCleanIsPutBackByItsOwnId) {
    const Words logs{"clean", "systemJunk", "--yes", "--only", "--tick", "systemJunk/systemLogs"};
    const Words wheels{"clean", "systemJunk", "--yes", "--only", "--tick", "systemJunk/developerCaches"};
    ASSERT_EQ(home_.call(logs).status, done);
    const std::string first = history().at(0).at("id");
    ASSERT_EQ(home_.call(wheels).status, done);
    ASSERT_EQ(home_.call({"put-back", first}).status, done);
    EXPECT_TRUE(home_.has(".local/state/tool/run.log"));
    EXPECT_FALSE(home_.has(".cache/pip"));
    ASSERT_EQ(home_.call({"put-back"}).status, done) << "the newest that can be put back";
    expectAsBefore();
}

TEST_F(CliHistory, ADryRunOfPuttingBackChangesNothing) {
    ASSERT_EQ(home_.call(everything()).status, done);
    const auto cleaned = home_.inventory();
    const std::size_t trashed = home_.trashedCount();
    const Ended ended = home_.call({"put-back", "--dry-run"});
    EXPECT_EQ(ended.status, done);
    EXPECT_THAT(ended.out, HasSubstr(home_.place(".cache/app0").string()));
    EXPECT_EQ(home_.inventory(), cleaned);
    EXPECT_EQ(home_.trashedCount(), trashed);
}

TEST_F(CliHistory, ANameThatIsTakenStaysInTheTrashAndIsTold) {
    ASSERT_EQ(home_.call(everything()).status, done);
    home_.text(".cache/app0/new", "made since");
    const Ended ended = home_.call({"put-back"});
    EXPECT_EQ(ended.status, failed);
    EXPECT_THAT(ended.err, HasSubstr(home_.place(".cache/app0").string()));
    EXPECT_TRUE(home_.has(".cache/app0/new"));
    EXPECT_FALSE(home_.has(".cache/app0/data"));
    EXPECT_TRUE(home_.has(".cache/app1/data"));
    EXPECT_EQ(home_.trashedCount(), 1U);
}

TEST_F(CliHistory, AnUnknownCleanIsAWrongCallAndAnEmptyHistoryNothingToDo) {
    EXPECT_EQ(home_.call({"put-back"}).status, nothingToDo);
    EXPECT_EQ(home_.call({"put-back", "nothing"}).status, wrongCall);
    const Ended empty = home_.call({"history"});
    EXPECT_EQ(empty.status, done);
    EXPECT_THAT(empty.out, IsEmpty());
}

TEST_F(CliHistory, ASecondCleanIsRefusedWhileOneRuns) {
    const Words logs{"clean", "systemJunk", "--yes", "--only", "--tick", "systemJunk/systemLogs"};
    const Words wheels{"clean", "systemJunk", "--yes", "--only", "--tick", "systemJunk/developerCaches"};
    ASSERT_EQ(home_.call(logs).status, done); // makes the lock's file
    const auto cleaned = home_.inventory();
    const int held = ::open(home_.place(".local/state/vellmoor/lock").c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_GE(held, 0);
    ASSERT_EQ(::flock(held, LOCK_EX | LOCK_NB), 0);
    for (const Words& words : {wheels, Words{"put-back"}}) {
        const Ended ended = home_.call(words);
        EXPECT_EQ(ended.status, failed) << words.front();
        EXPECT_THAT(ended.err, HasSubstr("Another Vellmoor is cleaning")) << words.front();
    }
    EXPECT_EQ(home_.call({"scan", "systemJunk"}).status, done) << "scans are free";
    EXPECT_EQ(home_.inventory(), cleaned);
    ::close(held);
    EXPECT_EQ(home_.call({"put-back"}).status, done);
    expectAsBefore();
}

/// A clean is killed when so many items have come to the Trash; what moved is put back by the next call.
class CliKilled : public CliHistory, public ::testing::WithParamInterface<unsigned> {
protected:
    /// Answers how many items had moved when it was over.
    std::size_t cleanAndKillAt(std::size_t items) {
        CliProcess cleaner = home_.start(everything());
        while (home_.trashedCount() < items && !cleaner.hasEnded()) {
            std::this_thread::sleep_for(std::chrono::microseconds(100)); // leaves it a processor
        }
        cleaner.signal(SIGKILL);
        cleaner.ended();
        return home_.trashedCount();
    }
};

TEST_P(CliKilled, ACleanThatIsKilledAtAnyItemIsPutBack) {
    std::mt19937 random(GetParam());
    const std::size_t at = std::uniform_int_distribution<std::size_t>(0, apps)(random);
    const std::size_t moved = cleanAndKillAt(at);
    RecordProperty("moved", static_cast<int>(moved));
    const Ended ended = home_.call({"put-back"});
    EXPECT_EQ(ended.status, moved == 0 ? nothingToDo : done) << ended.err;
    expectAsBefore();
    EXPECT_EQ(home_.trashedCount(), 0U);
    std::error_code none;
    const fs::path notes = home_.place(".local/share/Trash/info");
    EXPECT_EQ(std::distance(fs::directory_iterator(notes, none), fs::directory_iterator()), 0) << "a note was left";
}

/// So many for each run of all tests; VELLMOOR_KILLS asks for more.
unsigned kills() {
    const char* asked = std::getenv("VELLMOOR_KILLS");
    return asked == nullptr ? 20 : static_cast<unsigned>(std::strtoul(asked, nullptr, 10));
}

INSTANTIATE_TEST_SUITE_P(Seeds, CliKilled, ::testing::Range(1U, kills() + 1));

} // namespace
} // namespace vellmoor::test
