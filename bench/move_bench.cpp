// What a clean of many items costs, beside a bare loop of the same work, by turns, in throw-away homes below the folder
// given: that writes the same notes and the same journal, renames the same folders and waits for the same files of the
// disk; or, with --empty, that takes the same items out of a Trash with the same renames, removes what is in them and
// their notes, and writes the same journal.
// Each home takes some 250 MB until the end.
//   move_bench FOLDER [--empty] [COUNT] [ROUNDS]
#include "LinuxPlatform.h"
#include "clean/Cleaning.h"
#include "history/JournalLines.h"
#include "layouts/SystemLayout.h"
#include "layouts/linux/LinuxEnvironment.h"
#include "paired.h"
#include "trash/Trash.h"
#include "trash/TrashNotes.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;
using namespace vellmoor;

namespace {

struct Home {
    fs::path home;
    std::vector<std::string> names;

    [[nodiscard]] fs::path caches() const { return home / ".cache"; }
    [[nodiscard]] fs::path trash() const { return home / ".local/share/Trash"; }
};

void check(bool isDone) {
    if (!isDone) {
        std::perror("bare loop");
        std::exit(1);
    }
}

int opened(const fs::path& folder) {
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    check(fd >= 0);
    return fd;
}

/// Folders with a file in each, in the caches or in the Trash.
Home makeHome(const fs::path& base, int count, bool inTrash) {
    Home made{.home = base, .names = {}};
    fs::create_directories(made.caches());
    fs::create_directories(made.trash() / "files");
    fs::create_directories(made.trash() / "info");
    for (int number = 0; number < count; ++number) {
        const std::string name = "cache-of-application-" + std::to_string(number);
        const fs::path folder = (inTrash ? made.trash() / "files" : made.caches()) / name;
        fs::create_directories(folder);
        std::ofstream(folder / "data") << "x";
        if (inTrash) {
            std::ofstream(made.trash() / "info" / noteName(name))
                << trashNote(made.caches() / name, std::time(nullptr));
        }
        made.names.push_back(name);
    }
    return made;
}

double millisecondsSince(std::chrono::steady_clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

/// The lines that the engine's journal has of it.
struct JournalText {
    std::string before;
    std::vector<std::string> facts;
};

JournalText journalOf(const LinuxPlatform& platform, const Home& home, bool inTrash) {
    PastClean clean;
    clean.id = Uuid::random().text();
    clean.home = home.home;
    clean.rows.push_back({.module = CleanerModule::systemJunk, .title = "Caches", .application = {}, .identifier = {}});
    JournalText text;
    std::vector<std::uint32_t> modes(6, 0755);
    for (std::size_t index = 0; index < home.names.size(); ++index) {
        const Path path = (inTrash ? home.trash() / "files" : home.caches()) / home.names[index];
        const FileIdentity identity = platform.identity(path).value_or(FileIdentity());
        PastTarget target{};
        target.path = path;
        target.identity = identity;
        target.bytes = 8192;
        target.parentModes = modes;
        text.before += wantLine(index, clean.id, target);
        text.facts.push_back(factLine(index, clean.id,
                                      {.path = path,
                                       .fate = inTrash ? CleanupFate::Removed : CleanupFate::Trashed,
                                       .place = inTrash ? Path() : home.trash() / "files" / home.names[index],
                                       .bytes = 8192,
                                       .identity = identity,
                                       .reason = ""}));
    }
    return text;
}

/// The bare loop's journal: what is to be done, waited for; then a line each; then waited for again.
class BareJournal {
public:
    BareJournal(const fs::path& file, const JournalText& text)
        : file_(::open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600)),
          text_(text) {
        write(text.before);
        ::fsync(file_);
    }
    void did(std::size_t index) const { write(text_.facts[index]); }
    void end() const {
        write("{\"end\":0}\n");
        ::fsync(file_);
        ::close(file_);
    }

private:
    void write(const std::string& line) const {
        check(::write(file_, line.data(), line.size()) == static_cast<ssize_t>(line.size()));
    }
    int file_;
    const JournalText& text_;
};

double bareMove(const LinuxPlatform& platform, const Home& home) {
    const JournalText text = journalOf(platform, home, false);
    const auto begin = std::chrono::steady_clock::now();
    const BareJournal journal(home.home / "journal", text);
    const int parent = opened(home.caches());
    const int files = opened(home.trash() / "files");
    const int info = opened(home.trash() / "info");
    for (std::size_t index = 0; index < home.names.size(); ++index) {
        const std::string& name = home.names[index];
        const std::string noted = trashNote(home.caches() / name, std::time(nullptr));
        const int note = ::openat(info, noteName(name).c_str(), O_WRONLY | O_CREAT | O_EXCL, 0600);
        check(::write(note, noted.data(), noted.size()) > 0 && ::close(note) == 0 &&
              ::renameat2(parent, name.c_str(), files, name.c_str(), RENAME_NOREPLACE) == 0);
        journal.did(index);
    }
    ::fsync(info);
    ::fsync(files);
    journal.end();
    for (const int folder : {info, files, parent}) {
        ::close(folder);
    }
    return millisecondsSince(begin);
}

double bareEmpty(const LinuxPlatform& platform, const Home& home) {
    const JournalText text = journalOf(platform, home, true);
    const auto begin = std::chrono::steady_clock::now();
    const BareJournal journal(home.home / "journal", text);
    const int files = opened(home.trash() / "files");
    const int info = opened(home.trash() / "info");
    fs::create_directories(home.trash() / "expunged");
    const int aside = opened(home.trash() / "expunged");
    for (std::size_t index = 0; index < home.names.size(); ++index) {
        const char* const name = home.names[index].c_str();
        check(::renameat2(files, name, aside, name, RENAME_NOREPLACE) == 0);
        const int folder = ::openat(aside, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        check(::unlinkat(folder, "data", 0) == 0 && ::close(folder) == 0 &&
              ::unlinkat(aside, name, AT_REMOVEDIR) == 0 && ::unlinkat(info, noteName(name).c_str(), 0) == 0);
        journal.did(index);
    }
    ::fsync(info);
    ::fsync(files);
    journal.end();
    for (const int folder : {info, files, aside}) {
        ::close(folder);
    }
    return millisecondsSince(begin);
}

double cleaned(EngineContext& context, const std::vector<CleanupItem>& rows, std::size_t expected) {
    const auto begin = std::chrono::steady_clock::now();
    const CleanupReport report = clean(context, rows);
    const double took = millisecondsSince(begin);
    if (report.removedCount != static_cast<std::int64_t>(expected)) {
        std::fprintf(stderr, "%ld of %zu done: %s\n", static_cast<long>(report.removedCount), expected,
                     report.failures.empty() ? "" : report.failures.front().c_str());
        std::exit(1);
    }
    return took;
}

double engineMove(const LinuxPlatform& platform, const Home& home) {
    const SystemLayout layout = linuxLayout(linuxEnvironmentOf(home.home), platform.userId());
    CleanupItem row;
    row.module = CleanerModule::systemJunk;
    row.isCleanable = true;
    row.isSelected = true;
    for (const std::string& name : home.names) {
        CleanupTarget target;
        target.url = home.caches() / name;
        target.isSelected = true;
        target.identity = platform.identity(target.url);
        target.sameness = Sameness::Kind;
        row.targets.edit().push_back(std::move(target));
    }
    EngineContext context(platform, layout, std::chrono::system_clock::now());
    return cleaned(context, {std::move(row)}, home.names.size());
}

double engineEmpty(const LinuxPlatform& platform, const Home& home) {
    const SystemLayout layout = linuxLayout(linuxEnvironmentOf(home.home), platform.userId());
    EngineContext looking(platform, layout, std::chrono::system_clock::now());
    std::vector<CleanupItem> rows = trashItems(looking);
    for (CleanupItem& row : rows) {
        row.selectAll(true);
    }
    EngineContext context(platform, layout, std::chrono::system_clock::now());
    return cleaned(context, rows, home.names.size());
}

} // namespace

int main(int argumentCount, char** arguments) {
    const bool empties = argumentCount > 2 && std::strcmp(arguments[2], "--empty") == 0;
    const int further = empties ? 3 : 2;
    if (argumentCount < 2) {
        std::fprintf(stderr, "move_bench FOLDER [--empty] [COUNT] [ROUNDS]\n");
        return 2;
    }
    const int count = argumentCount > further ? std::atoi(arguments[further]) : 20'000;
    const int rounds = argumentCount > further + 1 ? std::atoi(arguments[further + 1]) : 11;
    const fs::path base = fs::canonical(arguments[1]) / "move-bench";
    const LinuxPlatform platform;
    std::vector<double> ours;
    std::vector<double> theirs;
    for (int round = 0; round < rounds; ++round) {
        for (auto [deed, figures] : {std::pair{empties ? &bareEmpty : &bareMove, &theirs},
                                     std::pair{empties ? &engineEmpty : &engineMove, &ours}}) {
            // Removed in the end only: for minutes ext4 takes no inode that was freed, and looks long for another one.
            const Home home = makeHome(base / std::to_string(ours.size() + theirs.size()), count, empties);
            ::sync();
            figures->push_back(deed(platform, home));
        }
    }
    fs::remove_all(base);
    const Figure ratio = pairedRatio(ours, theirs);
    std::printf("| %s, %d items | %.0f | %.0f | %s |\n", empties ? "emptying a Trash" : "cleaning to the Trash", count,
                medianOf(ours), medianOf(theirs), ratio.text().c_str());
    record(empties ? "empty Trash / bare loop" : "clean to Trash / bare loop", ratio);
    return 0;
}
