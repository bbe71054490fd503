#include "history/CleanLock.h"

#include "texts/L.h"

#include <utility>

namespace vellmoor {
namespace {

std::expected<std::optional<OwnLock>, std::string> tryTake(const SystemLayout& layout) {
    return OwnLock::tryTake(layout.stateFolder / "lock");
}

} // namespace

std::expected<CleanLock, std::string> CleanLock::take(const SystemLayout& layout) {
    auto lock = tryTake(layout);
    if (!lock) {
        return CleanLock(std::nullopt); // nobody else can hold what cannot be made
    }
    if (!*lock) {
        return std::unexpected(L::tr("另一个 Vellmoor 正在清理"));
    }
    return CleanLock(std::move(*lock));
}

bool CleanLock::isTaken(const SystemLayout& layout) {
    const auto lock = tryTake(layout);
    return lock && !*lock;
}

} // namespace vellmoor
