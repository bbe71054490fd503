#include "disk/PackageTypes.h"

#include <utility>

namespace vellmoor::mac {
namespace {

constexpr std::chrono::seconds memory{10};

} // namespace

PackageTypes::PackageTypes(std::function<bool(const Path&)> ask, std::function<Time()> now)
    : ask_(std::move(ask)),
      now_(std::move(now)) {}

bool PackageTypes::contain(const Path& folder) {
    const std::string extension = folder.extension().string();
    if (extension.empty()) {
        return false;
    }
    if (const auto known = remembered(extension)) {
        return *known;
    }
    const bool isPackage = ask_(folder); // not under the lock: others need not wait for the system
    remember(extension, isPackage);
    return isPackage;
}

std::optional<bool> PackageTypes::remembered(const std::string& extension) {
    const std::scoped_lock guard(lock_);
    if (now_() - since_ > memory) {
        known_.clear();
    }
    const auto found = known_.find(extension);
    return found == known_.end() ? std::nullopt : std::optional(found->second);
}

void PackageTypes::remember(const std::string& extension, bool isPackage) {
    const std::scoped_lock guard(lock_);
    if (known_.empty()) {
        since_ = now_();
    }
    known_.emplace(extension, isPackage);
}

} // namespace vellmoor::mac
