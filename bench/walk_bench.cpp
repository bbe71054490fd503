// Sums the allocated bytes below a folder with the walk library.
//   walk_bench FOLDER [--threads N] [--names] [--cancel-at FILES]
// Prints "bytes files"; a cancelled run prints how many milliseconds the walk took to return.
#include "Walk.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

using namespace vellmoor::walk;
using Clock = std::chrono::steady_clock;

namespace {

// Each worker has a cache line of its own.
struct alignas(64) Sums {
    std::int64_t bytes = 0;
    std::int64_t files = 0;
};

class Summing : public Visitor {
public:
    explicit Summing(unsigned workers) : sums(workers) {}
    Action entry(const Entry& entry, unsigned worker) override {
        if (entry.type == EntryType::File) {
            sums[worker].bytes += entry.allocatedBytes;
            ++sums[worker].files;
        }
        return Action::Continue;
    }
    std::vector<Sums> sums;
};

/// Cancels its own walk when worker 0, which is always there, has seen so many files.
class Cancelling : public Summing {
public:
    Cancelling(unsigned workers, std::int64_t files) : Summing(workers), files_(files) {}
    Action entry(const Entry& entry, unsigned worker) override {
        if (worker == 0 && sums[0].files == files_ && !cancelled.exchange(true)) {
            asked = Clock::now();
        }
        return Summing::entry(entry, worker);
    }
    std::atomic<bool> cancelled{false};
    Clock::time_point asked;

private:
    std::int64_t files_;
};

int cancelAt(std::int64_t files, const char* root, Options options) {
    Cancelling cancelling(workerCount(options), files);
    options.cancelled = &cancelling.cancelled;
    const Outcome outcome = walk(root, options, cancelling);
    const Clock::time_point returned = Clock::now();
    if (outcome != Outcome::Cancelled) {
        std::fprintf(stderr, "the walk ended before it was cancelled\n");
        return 1;
    }
    std::printf("%.3f\n", std::chrono::duration<double, std::milli>(returned - cancelling.asked).count());
    return 0;
}

} // namespace

int main(int count, char** arguments) {
    Options options;
    options.skipHidden = false;
    int cancelAtFiles = -1;
    for (int i = 2; i < count; ++i) {
        const bool hasValue = i + 1 < count;
        if (std::strcmp(arguments[i], "--names") == 0) {
            options.wantsNames = true;
        } else if (std::strcmp(arguments[i], "--threads") == 0 && hasValue) {
            options.threads = static_cast<unsigned>(std::atoi(arguments[++i]));
        } else if (std::strcmp(arguments[i], "--cancel-at") == 0 && hasValue) {
            cancelAtFiles = std::atoi(arguments[++i]);
        } else {
            count = 0;
        }
    }
    if (count < 2) {
        std::fprintf(stderr, "walk_bench FOLDER [--threads N] [--names] [--cancel-at FILES]\n");
        return 2;
    }
    if (cancelAtFiles >= 0) {
        return cancelAt(cancelAtFiles, arguments[1], options);
    }
    Summing summing(workerCount(options));
    if (walk(arguments[1], options, summing) != Outcome::Complete) {
        std::fprintf(stderr, "the walk is not complete\n");
        return 1;
    }
    Sums total;
    for (const Sums& sums : summing.sums) {
        total.bytes += sums.bytes;
        total.files += sums.files;
    }
    std::printf("%lld %lld\n", static_cast<long long>(total.bytes), static_cast<long long>(total.files));
    return 0;
}
