#include "clean/WorkProgress.h"

#include "CheckedMath.h"

namespace vellmoor {
namespace {

constexpr std::chrono::milliseconds tellAgain{50};

} // namespace

WorkProgress::WorkProgress(const CleanProgressCallback& tell, std::int64_t totalCount, std::int64_t totalBytes)
    : tell_(tell) {
    progress_.totalCount = totalCount;
    progress_.totalBytes = totalBytes;
}

void WorkProgress::begin(const std::filesystem::path& current) {
    const auto now = std::chrono::steady_clock::now();
    if (!tell_ || (told_ && now - *told_ < tellAgain)) {
        return;
    }
    told_ = now;
    progress_.current = current;
    tell_(progress_);
}

void WorkProgress::done(std::int64_t bytes) {
    ++progress_.doneCount;
    progress_.doneBytes = checkedAdd(progress_.doneBytes, bytes);
}

void WorkProgress::end() {
    if (tell_) {
        progress_.current.clear();
        tell_(progress_);
    }
}

} // namespace vellmoor
