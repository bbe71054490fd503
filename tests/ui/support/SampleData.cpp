#include "SampleData.h"

#include "SampleItems.h"
#include "texts/ByteCount.h"
#include "texts/L.h"

#include <utility>

namespace vellmoor::sample {
namespace {

StartupItem startupItem(const std::string& name, const std::string& program, bool enabled, bool atLogin) {
    StartupItem item;
    item.id = name;
    item.name = name;
    item.label = name;
    item.plistURL = "/home/anna/.config/autostart/" + name + ".desktop";
    item.program = program;
    item.isEnabled = enabled;
    item.startsAtLogin = atLogin;
    return item;
}

MemoryApp memoryApp(const std::string& name, std::int64_t bytes, int processes) {
    MemoryApp app;
    app.id = name;
    app.name = name;
    app.bytes = bytes;
    app.processCount = processes;
    app.pids = {1};
    return app;
}

PermissionHint hint(std::string_view title, std::string_view description, const std::string& symbol, bool granted,
                    std::string_view recommendation) {
    PermissionHint made;
    made.title = L::tr(title);
    made.description = L::tr(description);
    made.symbol = symbol;
    made.isGranted = granted;
    made.affectedModules = {CleanerModule::smartScan, CleanerModule::privacy};
    made.recommendation = L::tr(recommendation);
    return made;
}

std::vector<PermissionHint> hints(bool granted) {
    const std::string_view advice = "在系统设置中允许完全磁盘访问，可获得更完整的隐私扫描结果。";
    const std::string_view use = "用于隐私扫描和更完整的残留检测";
    return {hint("浏览器数据", use, "globe", granted, advice), hint("邮件数据", use, "envelope", granted, advice),
            hint("沙盒应用数据", "当前用户目录未发现对应数据", "shippingbox", true, advice),
            hint("用户资料目录", "缓存、大文件和应用残留扫描的基础权限", "house", true,
                 "如果此项异常，请确认 App 对用户目录具有读取权限。")};
}

StorageSegment segment(std::string_view label, std::int64_t bytes, double fraction, Tint color) {
    StorageSegment made;
    made.label = L::tr(label);
    made.value = byteCountText(bytes);
    made.fraction = fraction;
    made.color = color;
    return made;
}

std::vector<FileCandidate> candidatesOf(const std::vector<CleanupItem>& items) {
    std::vector<FileCandidate> candidates;
    for (const CleanupItem& item : items) {
        if (item.module == CleanerModule::largeFiles) {
            const CleanupTarget& file = item.targets.front();
            FileCandidate made;
            made.name = file.name;
            made.location = file.location;
            made.size = byteCountText(file.bytes);
            made.modified = file.modified;
            made.symbol = file.symbol;
            made.url = file.url;
            candidates.push_back(made);
        }
    }
    return candidates;
}

} // namespace

std::vector<PermissionHint> grantedHints() {
    return hints(true);
}

std::vector<PermissionHint> limitedHints() {
    return hints(false);
}

CleanupItem category(CleanerModule module, std::string title, CleanupRisk risk, int targets) {
    std::vector<CleanupTarget> paths;
    for (int i = 0; i < targets; ++i) {
        paths.push_back(target("/home/anna/.cache/path-" + std::to_string(i), megabyte, 1, "doc", false));
    }
    return row(module, {std::move(title), L::tr("诊断报告、崩溃日志和旧日志文件"), "folder", Tint::teal, risk},
               std::move(paths));
}

ScanSnapshot snapshot(CleanerModule module) {
    ScanSnapshot scan;
    scan.cleanupItems = itemsOf(module);
    scan.fileCandidates = candidatesOf(scan.cleanupItems);
    scan.storageSegments = {segment("已使用", 352 * gigabyte, 0.69, Tint::cyan),
                            segment("可清理", 38 * gigabyte, 0.07, Tint::green),
                            segment("可用", 122 * gigabyte, 0.24, Tint::gray)};
    scan.diskSummary = L::tr("%@ / %@ 已使用", byteCountText(390 * gigabyte), byteCountText(512 * gigabyte));
    scan.startupCount = 4;
    scan.backgroundCount = 3;
    scan.privacyCount = 4;
    scan.memorySnapshot = memoryState();
    scan.memoryApps = {memoryApp("Firefox", 2'410 * megabyte, 14), memoryApp("Blender", 1'830 * megabyte, 1),
                       memoryApp("Thunderbird", 640 * megabyte, 2), memoryApp("Files", 120 * megabyte, 1)};
    scan.startupItems = {startupItem("Nextcloud", "/usr/bin/nextcloud", true, true),
                         startupItem("KeePassXC", "/usr/bin/keepassxc", true, true),
                         startupItem("Syncthing", "/home/anna/bin/a-rather-long-folder-name/syncthing", true, false),
                         startupItem("Steam", "/usr/games/steam", false, true)};
    scan.permissionHints = grantedHints();
    return scan;
}

CleanupReport cleanReport() {
    CleanupReport report;
    report.attemptedCount = 5;
    report.removedCount = 5;
    report.processedBytes = 1'396 * megabyte;
    return report;
}

CleanupReport partlyFailedReport() {
    CleanupReport report = cleanReport();
    report.removedCount = 3;
    report.failedCount = 2;
    report.processedBytes = 430 * megabyte;
    report.failures = {"mesa_shader_cache: Permission denied",
                       "debian-12.5.0-amd64-netinst.iso: Trashing on system internal mounts is not supported, and this "
                       "is a rather long reason that has to wrap to a second line"};
    return report;
}

namespace {

HistoryItem pastItem(std::size_t index, const std::string& path, std::int64_t bytes, CleanupFate fate) {
    HistoryItem item;
    item.index = index;
    item.path = path;
    item.bytes = bytes;
    item.fate = fate;
    if (fate == CleanupFate::Trashed) {
        item.place = "/home/anna/.local/share/Trash/files/" + std::filesystem::path(path).filename().string();
    }
    return item;
}

} // namespace

History history() {
    HistoryClean cutOff;
    cutOff.id = "one";
    cutOff.at = daysAgo(0);
    cutOff.module = CleanerModule::systemJunk;
    cutOff.state = HistoryState::CutOff;
    cutOff.items = {pastItem(0, "/home/anna/.cache/thumbnails", 310 * megabyte, CleanupFate::Trashed),
                    pastItem(1, "/home/anna/.cache/pip", 920 * megabyte, CleanupFate::Untried)};
    cutOff.movedCount = 1;
    cutOff.movedBytes = 310 * megabyte;
    cutOff.trashedCount = 1;
    cutOff.trashedBytes = 310 * megabyte;
    cutOff.openCount = 1;
    cutOff.openBytes = 920 * megabyte;
    HistoryClean whole;
    whole.id = "two";
    whole.at = daysAgo(3);
    whole.items = {pastItem(0, "/home/anna/.cache/mesa_shader_cache", 640 * megabyte, CleanupFate::Trashed),
                   pastItem(1, "/home/anna/Downloads/old-installer.deb", 88 * megabyte, CleanupFate::Trashed),
                   pastItem(2, "/home/anna/.cache/fontconfig", 12 * megabyte, CleanupFate::Trashed),
                   pastItem(3, "/home/anna/.local/share/Trash/files/film.mkv", 1'100 * megabyte, CleanupFate::Removed)};
    whole.movedCount = 4;
    whole.movedBytes = 1'840 * megabyte;
    whole.trashedCount = 3;
    whole.trashedBytes = 740 * megabyte;
    HistorySwitch change;
    change.at = daysAgo(9);
    change.name = "Nextcloud";
    change.file = "/home/anna/.config/autostart.disabled/Nextcloud.desktop";
    change.canBePutBack = true;
    return {.cleans = {cutOff, whole}, .switches = {change}, .problem = {}};
}

RestoreReport restoreReport() {
    RestoreReport report;
    report.attemptedCount = 2;
    report.restoredCount = 1;
    report.restoredBytes = 12 * megabyte;
    report.failedCount = 1;
    report.outcomes = {{.path = "/home/anna/.cache/fontconfig",
                        .place = {},
                        .fate = RestoreFate::Restored,
                        .bytes = 12 * megabyte,
                        .reason = {}},
                       {.path = "/home/anna/.cache/mesa_shader_cache",
                        .place = "/home/anna/.local/share/Trash/files/mesa_shader_cache",
                        .fate = RestoreFate::NameTaken,
                        .bytes = 640 * megabyte,
                        .reason = L::tr("原位置已有同名项目，仍在废纸篓中")}};
    return report;
}

CleanupReport memoryReport() {
    CleanupReport report;
    report.attemptedCount = 1;
    report.removedCount = 1;
    report.memoryBefore = memoryState();
    report.memoryAfter = memoryState();
    report.memoryAfter->freeBytes = 6'100 * megabyte;
    report.memoryAfter->unusedBytes = 5'780 * megabyte;
    report.processedBytes = report.memoryAfter->freeBytes - report.memoryBefore->freeBytes;
    return report;
}

CleanupReport failedMemoryReport() {
    CleanupReport report;
    report.attemptedCount = 1;
    report.failedCount = 1;
    report.failures = {L::tr("预计可释放内存") + ": purge: Not authorized"};
    return report;
}

} // namespace vellmoor::sample
