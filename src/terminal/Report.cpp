#include "Report.h"

#include "CheckedMath.h"
#include "TextTable.h"
#include "texts/ByteCount.h"
#include "texts/L.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace vellmoor::terminal {
namespace {

constexpr std::size_t rowsShown = 12; ///< of one module, for somebody who only looks
constexpr std::size_t barCells = 40;
constexpr std::size_t wholePath = 4096;

/// A text of the report itself; the window has no use for it.
std::string say(const char* english, const char* chinese) {
    return L::language() == AppLanguage::english ? english : chinese;
}

class Page {
public:
    explicit Page(bool isBold) : isBold_(isBold) {}

    void heading(const std::string& text) {
        if (!text_.empty()) {
            text_ += '\n';
        }
        text_ += isBold_ ? "\x1b[1m" + text + "\x1b[0m\n" : text + "\n";
    }
    void line(const std::string& text) { text_ += "  " + text + "\n"; }
    void table(const TextTable& table) {
        for (const std::string& row : table.lines()) {
            line(row);
        }
    }
    [[nodiscard]] std::string text() && { return std::move(text_); }

private:
    bool isBold_;
    std::string text_;
};

const char* mark(const CleanupItem& item) {
    if (!item.isCleanable) {
        return " - ";
    }
    return item.isSelected ? "[x]" : "[ ]";
}

std::string fileCount(std::int64_t files) {
    const std::string number = std::to_string(files);
    return L::language() == AppLanguage::english ? number + (files == 1 ? " file" : " files") : number + " 个文件";
}

std::int64_t sumOf(const std::vector<const CleanupItem*>& rows) {
    std::int64_t sum = 0;
    for (const CleanupItem* row : rows) {
        sum = checkedAdd(sum, row->bytes);
    }
    return sum;
}

/// The rows of one module: those shown, and how many lines of the common table they take.
struct ModuleRows {
    CleanerModule module;
    std::size_t most;
    std::vector<const CleanupItem*> rows;

    [[nodiscard]] std::size_t shown() const { return std::min(rows.size(), most); }
};

std::vector<ModuleRows> rowsByModule(const ScanSnapshot& snapshot, std::size_t most) {
    std::vector<ModuleRows> groups;
    for (const CleanerModule module : allCleanerModules) {
        ModuleRows group{module, most, {}};
        for (const CleanupItem& item : snapshot.cleanupItems) {
            if (item.module == module) {
                group.rows.push_back(&item);
            }
        }
        if (!group.rows.empty()) {
            groups.push_back(std::move(group));
        }
    }
    return groups;
}

std::string remainder(const ModuleRows& group) {
    const std::vector<const CleanupItem*> rest(group.rows.begin() + static_cast<std::ptrdiff_t>(group.shown()),
                                               group.rows.end());
    return "     … " + std::to_string(rest.size()) + say(" more rows, ", " 行未列出，") + byteCountText(sumOf(rest));
}

void writeHeldBack(Page& page, const CleanupItem& row) {
    for (const CleanupTarget& target : row.targets) {
        if (!target.mayGo()) {
            page.line("     " + fitted(target.url.native(), wholePath) + ": " + target.heldBack);
        }
    }
}

void writeModules(Page& page, const ScanSnapshot& snapshot, bool isForCleaning) {
    const std::vector<ModuleRows> groups =
        rowsByModule(snapshot, isForCleaning ? snapshot.cleanupItems.size() : rowsShown);
    TextTable table( // one for all modules, so that they line up
        {{Side::Left, 3},
         {Side::Left, 34},
         {Side::Right, 10},
         {Side::Right, 16},
         {Side::Left, 12},
         {Side::Left, isForCleaning ? wholePath : std::size_t{70}}});
    for (const ModuleRows& group : groups) {
        for (std::size_t index = 0; index < group.shown(); ++index) {
            const CleanupItem& row = *group.rows[index];
            table.add({mark(row), row.title, row.sizeText(), fileCount(row.files), title(row.risk),
                       isForCleaning ? row.key : row.description});
        }
    }
    const std::vector<std::string> lines = table.lines();
    auto line = lines.begin();
    for (const ModuleRows& group : groups) {
        page.heading(title(group.module) + " · " + byteCountText(sumOf(group.rows)));
        for (std::size_t index = 0; index < group.shown(); ++index) {
            page.line(*line++);
            if (isForCleaning) {
                writeHeldBack(page, *group.rows[index]);
            }
        }
        if (group.shown() < group.rows.size()) {
            page.line(remainder(group));
        }
    }
}

void writeTotals(Page& page, const ScanSnapshot& snapshot) {
    std::int64_t cleanable = 0;
    std::int64_t selected = 0;
    for (const CleanupItem& item : snapshot.cleanupItems) {
        cleanable = checkedAdd(cleanable, item.cleanableBytes());
        selected = checkedAdd(selected, item.selectedBytes());
    }
    page.heading(say("Together", "合计"));
    TextTable table({{Side::Left, 40}, {Side::Right, 12}});
    table.add({say("can be cleaned", "可清理"), byteCountText(cleanable)});
    table.add({say("preselected [x]", "默认选中 [x]"), byteCountText(selected)});
    page.table(table);
}

std::string bar(double fraction) {
    const auto full =
        static_cast<std::size_t>(std::lround(std::clamp(fraction, 0.0, 1.0) * static_cast<double>(barCells)));
    std::string text;
    for (std::size_t cell = 0; cell < barCells; ++cell) {
        text += cell < full ? "█" : "░";
    }
    return text;
}

void writeDisk(Page& page, const ScanSnapshot& snapshot) {
    page.heading(say("Disk", "磁盘") + " · " + snapshot.diskSummary);
    TextTable table({{Side::Left, 30}, {Side::Right, 12}, {Side::Left, barCells}});
    for (const StorageSegment& segment : snapshot.storageSegments) {
        table.add({segment.label, segment.value, bar(segment.fraction)});
    }
    page.table(table);
}

void writeMemory(Page& page, const ScanSnapshot& snapshot) {
    const MemorySnapshot& memory = snapshot.memorySnapshot;
    page.heading(say("Memory", "内存") + " · " + std::to_string(memory.usagePercent()) + " % · " +
                 memory.pressureTitle());
    TextTable figures({{Side::Left, 30}, {Side::Right, 12}});
    figures.add({say("total", "总量"), byteCountText(memory.totalBytes)});
    figures.add({say("used", "已用"), byteCountText(memory.usedBytes())});
    figures.add({say("could be reclaimed", "可释放"), byteCountText(memory.reclaimableBytes)});
    page.table(figures);
    TextTable apps({{Side::Left, 30}, {Side::Right, 12}, {Side::Right, 14}});
    for (const MemoryApp& app : snapshot.memoryApps) {
        const std::string count = std::to_string(app.processCount);
        apps.add(
            {app.name, byteCountText(app.bytes),
             count + (L::language() == AppLanguage::english ? (count == "1" ? " process" : " processes") : " 个进程")});
    }
    page.table(apps);
}

void writeStartup(Page& page, const ScanSnapshot& snapshot) {
    if (snapshot.startupItems.empty()) {
        return;
    }
    page.heading(title(CleanerModule::performance) + " · " + std::to_string(snapshot.startupItems.size()));
    TextTable table({{Side::Left, 3}, {Side::Left, 34}, {Side::Left, 70}});
    for (const StartupItem& item : snapshot.startupItems) {
        table.add({item.isEnabled ? "[x]" : "[ ]", item.name, item.label});
    }
    page.table(table);
}

void writePermissions(Page& page, const ScanSnapshot& snapshot) {
    page.heading(say("Permissions", "权限"));
    TextTable table({{Side::Left, 12}, {Side::Left, 30}, {Side::Left, 80}});
    for (const PermissionHint& hint : snapshot.permissionHints) {
        table.add({hint.isGranted ? say("granted", "已允许") : say("limited", "受限"), hint.title, hint.description});
    }
    page.table(table);
}

} // namespace

std::string report(const ScanSnapshot& snapshot, const ReportOptions& options) {
    Page page(options.isBold);
    page.heading("Vellmoor · " + title(options.module) + " · " + options.home);
    writeModules(page, snapshot, options.isForCleaning);
    writeTotals(page, snapshot);
    writeDisk(page, snapshot);
    if (!options.isForCleaning) {
        writeMemory(page, snapshot);
        writeStartup(page, snapshot);
        writePermissions(page, snapshot);
    }
    return std::move(page).text();
}

} // namespace vellmoor::terminal
