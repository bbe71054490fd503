// Runs several commands in turn and prints one Markdown table: median, spread, and peak memory of each, and the ratio
// of the first one to each. One round first warms the caches and is not counted. Every output goes to /dev/null.
//   run_interleaved ROUNDS NAME COMMAND [ARGUMENT]... [-- NAME COMMAND [ARGUMENT]...]...
#include "contestants.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <sys/resource.h>
#include <sys/wait.h>

namespace {

// False when the command could not be run to a good end.
bool run(Contestant& contestant, bool counts) {
    const auto begin = std::chrono::steady_clock::now();
    const pid_t child = start(contestant);
    int status = 0;
    rusage usage{};
    if (child == 0 || ::wait4(child, &status, 0, &usage) != child || status != 0) {
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

void print(const std::vector<Contestant>& contestants) {
    std::printf("| Program | Median ms | Least | Most | %s / it | Peak MiB |\n|---|---:|---:|---:|---:|---:|\n",
                contestants[0].name.c_str());
    for (const Contestant& contestant : contestants) {
        std::printf("| %s | %.1f | %.1f | %.1f | %.2f | %.1f |\n", contestant.name.c_str(), contestant.median(),
                    contestant.milliseconds.front(), contestant.milliseconds.back(),
                    contestants[0].median() / contestant.median(), static_cast<double>(contestant.peakKiB) / 1024);
    }
}

} // namespace

int main(int count, char** arguments) {
    const int rounds = count > 1 ? std::atoi(arguments[1]) : 0;
    std::vector<Contestant> contestants = contestantsOf(count, arguments);
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
    sortRounds(contestants);
    print(contestants);
    return 0;
}
