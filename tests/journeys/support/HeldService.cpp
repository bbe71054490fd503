#include "HeldService.h"

namespace vellmoor::journey {
namespace {

constexpr double nowhere = 2;

} // namespace

void HeldService::holdAt(double fraction) {
    const std::scoped_lock guard(lock_);
    holdFrom_ = fraction;
}

void HeldService::release() {
    const std::scoped_lock guard(lock_);
    holdFrom_ = nowhere;
    held_ = false;
    released_.notify_all();
}

bool HeldService::isHeld() const {
    const std::scoped_lock guard(lock_);
    return held_;
}

std::vector<HeldService::Ended> HeldService::ended() const {
    const std::scoped_lock guard(lock_);
    return ended_;
}

void HeldService::pass(double fraction) {
    std::unique_lock guard(lock_);
    if (fraction >= holdFrom_) {
        holdFrom_ = nowhere; // this one scan only
        held_ = true;
        released_.wait(guard, [this] { return !held_; });
    }
}

ScanSnapshot HeldService::scan(CleanerModule module, const ProgressCallback& progress, const CancelToken& token) {
    const auto note = [&](bool wasCancelled) {
        const std::scoped_lock guard(lock_);
        ended_.push_back({module, wasCancelled});
    };
    try {
        ScanSnapshot snapshot = engine_->scan(
            module,
            [&](const ScanProgressUpdate& update) {
                progress(update);
                pass(update.fraction);
            },
            token);
        note(false);
        return snapshot;
    } catch (const ScanCancelled&) {
        note(true);
        throw;
    }
}

} // namespace vellmoor::journey
