#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vellmoor {

/// How tight memory is.
enum class MemoryPressure : std::uint8_t { good, high, critical };

/// Memory figures in bytes.
struct MemorySnapshot {
    std::int64_t totalBytes = 0;
    std::int64_t freeBytes = 0;
    std::int64_t activeBytes = 0;
    std::int64_t wiredBytes = 0;
    std::int64_t compressedBytes = 0;
    std::int64_t cachedBytes = 0;
    std::int64_t reclaimableBytes = 0;

    bool operator==(const MemorySnapshot&) const = default;

    /// 0 to 100; 0 when the total is unknown.
    [[nodiscard]] int usagePercent() const;
    /// `good` when the total is unknown.
    [[nodiscard]] MemoryPressure pressure() const;
    /// Localised: "Good", "High" or "Critical".
    [[nodiscard]] std::string pressureTitle() const;
    /// Total minus free, never negative.
    [[nodiscard]] std::int64_t usedBytes() const;
};

/// One running application with its processes grouped.
struct MemoryApp {
    std::string id;
    std::string name;
    std::optional<std::string> bundleIdentifier;
    std::optional<std::string> path;
    std::int64_t bytes = 0; ///< summed resident memory
    std::int64_t processCount = 0;
    std::vector<std::int32_t> pids;
    bool isActive = false;
};

} // namespace vellmoor
