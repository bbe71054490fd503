#pragma once

#include "disk/OwnFile.h"
#include "layouts/SystemLayout.h"

#include <expected>
#include <optional>
#include <string>

namespace vellmoor {

/// One clean, or way back of one, at a time: of all windows and command lines of the user.
class CleanLock {
public:
    /// The words for the user when somebody else is at work. Where no lock can be had, because the state folder cannot
    /// be written, the work goes on without.
    static std::expected<CleanLock, std::string> take(const SystemLayout& layout);
    /// Whether somebody is at work now.
    static bool isTaken(const SystemLayout& layout);

private:
    explicit CleanLock(std::optional<OwnLock> lock) : lock_(std::move(lock)) {}

    std::optional<OwnLock> lock_;
};

} // namespace vellmoor
