// Runs several commands in turn and prints one Markdown table: median, spread, and peak memory of each, and the ratio
// of the first one to each. One round first warms the caches and is not counted. Every output goes to /dev/null.
//   run_interleaved ROUNDS NAME COMMAND [ARGUMENT]... [-- NAME COMMAND [ARGUMENT]...]...
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

struct Contestant {
    std::string name;
    std::vector<char*> command; ///< with a null pointer at the end
    std::vector<double> milliseconds;
    long peakKiB = 0;
};

// False when the command could not be run to a good end.
bool run(Contestant& contestant, bool counts) {
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const auto begin = std::chrono::steady_clock::now();
    const int error =
        ::posix_spawnp(&child, contestant.command[0], &actions, nullptr, contestant.command.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage{};
    if (error != 0 || ::wait4(child, &status, 0, &usage) != child || status != 0) {
        std::fprintf(stderr, "%s failed\n", contestant.name.c_str());
        return false;
    }
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
    if (counts) {
        contestant.milliseconds.push_back(took.count());
        contestant.peakKiB = std::max(contestant.peakKiB, usage.ru_maxrss);
    }
    return true;
}

std::vector<Contestant> parse(int count, char** arguments) {
    std::vector<Contestant> contestants;
    bool startsNew = true;
    for (int i = 2; i < count; ++i) {
        if (std::strcmp(arguments[i], "--") == 0) {
            startsNew = true;
        } else if (startsNew) {
            contestants.push_back({arguments[i], {}, {}, 0});
            startsNew = false;
        } else {
            contestants.back().command.push_back(arguments[i]);
        }
    }
    std::erase_if(contestants, [](const Contestant& contestant) { return contestant.command.empty(); });
    for (Contestant& contestant : contestants) {
        contestant.command.push_back(nullptr);
    }
    return contestants;
}

double median(const Contestant& contestant) {
    return contestant.milliseconds[contestant.milliseconds.size() / 2];
}

void print(const std::vector<Contestant>& contestants) {
    std::printf("| Program | Median ms | Least | Most | %s / it | Peak MiB |\n|---|---:|---:|---:|---:|---:|\n",
                contestants[0].name.c_str());
    for (const Contestant& contestant : contestants) {
        std::printf("| %s | %.1f | %.1f | %.1f | %.2f | %.1f |\n", contestant.name.c_str(), median(contestant),
                    contestant.milliseconds.front(), contestant.milliseconds.back(),
                    median(contestants[0]) / median(contestant), static_cast<double>(contestant.peakKiB) / 1024);
    }
}

} // namespace

int main(int count, char** arguments) {
    const int rounds = count > 1 ? std::atoi(arguments[1]) : 0;
    std::vector<Contestant> contestants = parse(count, arguments);
    if (rounds < 1 || contestants.empty()) {
        std::fprintf(stderr, "run_interleaved ROUNDS NAME COMMAND [ARGUMENT]... [-- NAME COMMAND [ARGUMENT]...]...\n");
        return 2;
    }
    for (int round = 0; round <= rounds; ++round) {
        for (Contestant& contestant : contestants) {
            if (!run(contestant, round != 0)) {
                return 1;
            }
        }
    }
    for (Contestant& contestant : contestants) {
        std::ranges::sort(contestant.milliseconds);
    }
    print(contestants);
    return 0;
}
