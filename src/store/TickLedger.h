#pragma once

#include "found/CleanupItem.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vellmoor {

/// What one row comes to.
struct RowTicks {
    std::int64_t cleanableBytes = 0;
    std::int64_t selectedBytes = 0; ///< 0 unless the row is cleanable and ticked
    int selectedPaths = 0;          ///< ticked paths, whatever the row's own flags
    CleanerModule module = CleanerModule::smartScan;
    CleanupRisk risk = CleanupRisk::previewOnly;
    bool isRecommended = false;

    /// Whether a clean takes anything of it.
    [[nodiscard]] bool isToBeCleaned() const { return selectedBytes > 0; }
};

/// What the rows of a module's list come to.
struct ModuleTicks {
    std::int64_t cleanableBytes = 0;
    std::int64_t selectedBytes = 0;
    int rows = 0;
    int recommendedRows = 0;
    int selectedRows = 0;                                         ///< those that a clean takes anything of
    int selectedPaths = 0;                                        ///< the ticked paths of those
    std::array<int, allCleanupRisks.size()> selectedRowsByRisk{}; ///< by CleanupRisk

    bool operator==(const ModuleTicks&) const = default;
};

/// The sums over a result's rows, kept as ticks change: lists of tens of thousands of paths ask for them at each tick.
/// Every overflow is fatal.
class TickLedger {
public:
    /// Whether the sums are those of the rows; if not, count() comes before anything else.
    [[nodiscard]] bool isCurrent() const { return isCurrent_; }
    void count(const std::vector<CleanupItem>& items);
    /// The rows were changed otherwise than by ticks.
    void forget();

    /// Ticks or unticks a row with every path of it that may go.
    void tickAll(std::size_t row, CleanupItem& item, bool selected);
    /// Ticks or unticks one path, whatever the row has. A row is ticked exactly when at least one of its paths is.
    void tick(std::size_t row, CleanupItem& item, CleanupTarget& target, bool selected);

    [[nodiscard]] const RowTicks& row(std::size_t row) const { return rows_.at(row); }
    [[nodiscard]] const std::vector<RowTicks>& rows() const { return rows_; }
    [[nodiscard]] const ModuleTicks& of(CleanerModule module) const;

private:
    void add(const RowTicks& row, int sign);
    void replace(std::size_t row, const RowTicks& now);

    std::vector<RowTicks> rows_; ///< in the order of the items
    std::array<ModuleTicks, allCleanerModules.size()> modules_{};
    bool isCurrent_ = false;
};

} // namespace vellmoor
