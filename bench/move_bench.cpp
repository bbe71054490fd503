// What moving many cache folders into the Trash costs, beside a bare loop that writes the same notes, renames the same
// folders and waits for the same two folders of the Trash; by turns, in throw-away homes below the folder given.
//   move_bench FOLDER [COUNT] [ROUNDS]
#include "LinuxPlatform.h"
#include "TrashNotes.h"
#include "clean/Cleaning.h"
#include "layouts/LinuxEnvironment.h"
#include "layouts/SystemLayout.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;
using namespace vellmoor;

namespace {

std::vector<fs::path> makeCaches(const fs::path& home, int count) {
    std::vector<fs::path> caches;
    for (int number = 0; number < count; ++number) {
        caches.push_back(home / ".cache" / ("cache-of-application-" + std::to_string(number)));
        fs::create_directories(caches.back());
        std::ofstream(caches.back() / "data") << "x";
    }
    fs::create_directories(home / ".local/share/Trash/files");
    fs::create_directories(home / ".local/share/Trash/info");
    return caches;
}

double millisecondsSince(std::chrono::steady_clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

double bare(const fs::path& home, const std::vector<fs::path>& caches) {
    const auto begin = std::chrono::steady_clock::now();
    const int parent = ::open((home / ".cache").c_str(), O_RDONLY | O_DIRECTORY);
    const int files = ::open((home / ".local/share/Trash/files").c_str(), O_RDONLY | O_DIRECTORY);
    const int info = ::open((home / ".local/share/Trash/info").c_str(), O_RDONLY | O_DIRECTORY);
    for (const fs::path& cache : caches) {
        const std::string name = cache.filename();
        const std::string text = trashNote(cache, std::time(nullptr));
        const int note = ::openat(info, noteName(name).c_str(), O_WRONLY | O_CREAT | O_EXCL, 0600);
        if (::write(note, text.data(), text.size()) < 0 || ::close(note) != 0 ||
            ::renameat2(parent, name.c_str(), files, name.c_str(), RENAME_NOREPLACE) != 0) {
            std::perror("bare loop");
            std::exit(1);
        }
    }
    ::fsync(info);
    ::fsync(files);
    ::close(info);
    ::close(files);
    ::close(parent);
    return millisecondsSince(begin);
}

double engine(const fs::path& home, const std::vector<fs::path>& caches) {
    const LinuxPlatform platform;
    const SystemLayout layout = linuxLayout(linuxEnvironmentOf(home), platform.userId());
    CleanupItem row;
    row.module = CleanerModule::systemJunk;
    row.isCleanable = true;
    row.isSelected = true;
    for (const fs::path& cache : caches) {
        CleanupTarget target;
        target.url = cache;
        target.isSelected = true;
        target.identity = platform.identity(cache);
        target.sameness = Sameness::Kind;
        row.targets.push_back(std::move(target));
    }
    const std::vector<CleanupItem> rows{std::move(row)};
    EngineContext context(platform, layout, std::chrono::system_clock::now());
    const auto begin = std::chrono::steady_clock::now();
    const CleanupReport report = clean(context, rows);
    const double took = millisecondsSince(begin);
    if (report.removedCount != static_cast<std::int64_t>(caches.size())) {
        std::fprintf(stderr, "%ld of %zu moved: %s\n", static_cast<long>(report.removedCount), caches.size(),
                     report.failures.empty() ? "" : report.failures.front().c_str());
        std::exit(1);
    }
    return took;
}

double median(std::vector<double> figures) {
    std::ranges::sort(figures);
    return figures[figures.size() / 2];
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount < 2) {
        std::fprintf(stderr, "move_bench FOLDER [COUNT] [ROUNDS]\n");
        return 2;
    }
    const int count = argumentCount > 2 ? std::atoi(arguments[2]) : 20'000;
    const int rounds = argumentCount > 3 ? std::atoi(arguments[3]) : 5;
    const fs::path base = fs::canonical(arguments[1]) / "move-bench";
    std::vector<double> ours;
    std::vector<double> theirs;
    for (int round = 0; round < rounds; ++round) {
        for (auto [deed, figures] : {std::pair{&bare, &theirs}, std::pair{&engine, &ours}}) {
            const std::vector<fs::path> caches = makeCaches(base, count);
            ::sync();
            figures->push_back(deed(base, caches));
            fs::remove_all(base);
        }
    }
    std::printf("%d folders: engine %.0f ms, bare loop %.0f ms, ratio %.2f\n", count, median(ours), median(theirs),
                median(ours) / median(theirs));
    return 0;
}
