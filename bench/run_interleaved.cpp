// Runs several commands in turn and prints one Markdown table: median and peak memory of each, and the median of the
// paired ratios of the first one to each, with its spread. One round first warms the caches and is not counted. Every
// output goes to /dev/null. With VELLMOOR_BENCH_COLD set to a command, that one runs before each measurement.
//   run_interleaved ROUNDS NAME COMMAND [ARGUMENT]... [-- NAME COMMAND [ARGUMENT]...]...
#include "contestants.h"
#include "paired.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <sys/resource.h>
#include <sys/wait.h>

namespace {

// False when the command could not be run to a good end.
bool run(Contestant& contestant, bool counts) {
    if (const char* cold = std::getenv("VELLMOOR_BENCH_COLD"); cold != nullptr && std::system(cold) != 0) {
        std::fprintf(stderr, "%s failed\n", cold);
        return false;
    }
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
    const Contestant& first = contestants[0];
    std::printf("| Program | Median ms | %s / it | Peak MiB |\n|---|---:|---:|---:|\n", first.name.c_str());
    for (const Contestant& contestant : contestants) {
        const Figure ratio = pairedRatio(first.milliseconds, contestant.milliseconds);
        const bool isFirst = &contestant == &first;
        record(contestant.name + " ms", figureOf(contestant.milliseconds));
        record(contestant.name + " MiB", {.median = static_cast<double>(contestant.peakKiB) / 1024});
        std::printf("| %s | %.1f | %s | %.1f |\n", contestant.name.c_str(), medianOf(contestant.milliseconds),
                    isFirst ? "" : ratio.text().c_str(), static_cast<double>(contestant.peakKiB) / 1024);
        if (!isFirst) {
            record(first.name + " / " + contestant.name, ratio);
        }
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
    print(contestants);
    return 0;
}
