#include "SampleItems.h"

#include "texts/L.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vellmoor::sample {

TimePoint daysAgo(int days) {
    return std::chrono::system_clock::now() - std::chrono::hours(24 * days);
}

CleanupTarget target(const std::filesystem::path& url, std::int64_t bytes, std::int64_t files, std::string symbol,
                     bool selected) {
    CleanupTarget made;
    made.url = url;
    made.name = url.filename().string();
    made.location = url.parent_path().string();
    if (made.location.starts_with("/home/anna")) {
        made.location.replace(0, 10, "~");
    }
    made.bytes = bytes;
    made.files = files;
    made.modified = L::tr("%d 天前", 3);
    made.modifiedAt = daysAgo(3);
    made.symbol = std::move(symbol);
    made.isSelected = selected;
    return made;
}

CleanupItem row(CleanerModule module, const Look& look, std::vector<CleanupTarget> targets, bool cleanable) {
    CleanupItem item;
    item.module = module;
    item.title = look.title;
    item.description = look.description;
    item.symbol = look.symbol;
    item.tint = look.tint;
    item.risk = cleanable ? look.risk : CleanupRisk::previewOnly;
    item.isCleanable = cleanable;
    item.targets = std::move(targets);
    for (const CleanupTarget& path : item.targets) {
        item.bytes += path.bytes;
        item.files += path.files;
    }
    item.isSelected = cleanable && std::ranges::any_of(item.targets, &CleanupTarget::isSelected);
    return item;
}

MemorySnapshot memoryState() {
    MemorySnapshot memory;
    memory.totalBytes = 16 * gigabyte;
    memory.freeBytes = 3'600 * megabyte;
    memory.unusedBytes = 860 * megabyte;
    memory.activeBytes = 6 * gigabyte;
    memory.wiredBytes = 500 * megabyte;
    memory.compressedBytes = 420 * megabyte;
    memory.cachedBytes = 5 * gigabyte;
    memory.reclaimableBytes = 2'740 * megabyte;
    return memory;
}

namespace {

std::vector<CleanupItem> junkItems() {
    const CleanerModule module = CleanerModule::systemJunk;
    return {row(module,
                {L::tr("用户缓存"), L::tr("%@ 中的可再生缓存", "~/.cache"), "externaldrive.badge.timemachine",
                 Tint::teal, CleanupRisk::safe},
                {target("/home/anna/.cache/thumbnails", 412 * megabyte, 5210, "folder", true),
                 target("/home/anna/.cache/fontconfig", 18 * megabyte, 64, "folder", true),
                 target("/home/anna/.cache/mesa_shader_cache", 926 * megabyte, 3120, "folder", true)}),
            row(module,
                {L::tr("系统日志"), L::tr("诊断报告、崩溃日志和旧日志文件"), "doc.text.magnifyingglass", Tint::orange,
                 CleanupRisk::safe},
                {target("/home/anna/.xsession-errors.old", 38 * megabyte, 1, "doc", true),
                 target("/home/anna/.local/share/xorg/Xorg.0.log", 2 * megabyte, 1, "doc", true)}),
            row(module,
                {L::tr("开发缓存"), L::tr("Xcode DerivedData、模拟器缓存和旧归档"), "hammer", Tint::indigo,
                 CleanupRisk::cautious},
                {target("/home/anna/.npm/_cacache", 2140 * megabyte, 48210, "folder", false),
                 target("/home/anna/.cargo/registry/cache", 760 * megabyte, 912, "folder", false)}),
            row(module,
                {L::tr("下载残留"), L::tr("下载目录中的旧安装包、磁盘映像和压缩包"), "arrow.down.doc", Tint::pink,
                 CleanupRisk::cautious},
                {target("/home/anna/Downloads/debian-12.5.0-amd64-netinst.iso", 659 * megabyte, 1, "opticaldiscdrive",
                        false),
                 target("/home/anna/Downloads/a-very-long-installer-name-that-goes-on-and-on-for-ever-1.2.3-amd64.deb",
                        88 * megabyte, 1, "shippingbox", false)})};
}

CleanupItem largeFile(const std::filesystem::path& url, std::int64_t bytes, std::string symbol, int days) {
    CleanupItem item =
        row(CleanerModule::largeFiles, {url.filename().string(), "", symbol, Tint::indigo, CleanupRisk::cautious},
            {target(url, bytes, 1, symbol, false)});
    item.description = item.targets.front().location;
    item.targets.edit().front().modifiedAt = daysAgo(days);
    item.targets.edit().front().modified = L::tr("%d 天前", days);
    return item;
}

std::vector<CleanupItem> largeFileItems() {
    std::vector<CleanupItem> items{
        largeFile("/home/anna/Videos/Holiday in Norway, uncut.mov", 18'400 * megabyte, "film", 412),
        largeFile("/home/anna/Downloads/ubuntu-24.04-desktop-amd64.iso", 6'100 * megabyte, "opticaldiscdrive", 96),
        largeFile("/home/anna/Documents/Backups/photos-2019-2023-complete-family-archive-with-originals.tar.gz",
                  4'730 * megabyte, "doc", 41),
        largeFile("/home/anna/Pictures/Panorama.psd", 1'280 * megabyte, "photo", 12),
        largeFile("/home/anna/Downloads/vacation.mp4", 912 * megabyte, "film", 2),
        largeFile("/home/anna/Documents/thesis-scans.pdf", 402 * megabyte, "doc", 33),
        largeFile("/home/anna/Desktop/core-dump", 266 * megabyte, "doc", 5)};
    items.back().targets.edit().front().modifiedAt.reset();
    items.back().targets.edit().front().modified = L::tr("未知");
    return items;
}

std::vector<CleanupItem> privacyItems() {
    const CleanerModule module = CleanerModule::privacy;
    const auto described = [](std::string_view key) { return L::tr("%@，默认不勾选", L::tr(key)); };
    return {
        row(module,
            {"Firefox " + L::tr("历史记录"),
             L::tr("%@ 将历史记录与书签存放在同一数据库中，请在浏览器内清除历史记录", "Firefox"), "globe", Tint::pink},
            {target("/home/anna/.mozilla/firefox/x1.default/places.sqlite", 48 * megabyte, 1, "doc", false)}, false),
        row(module,
            {"Firefox " + L::tr("缓存"), described("网页缓存和可再生资源"), "globe", Tint::pink, CleanupRisk::cautious},
            {target("/home/anna/.cache/mozilla/firefox/x1.default/cache2", 840 * megabyte, 9120, "folder", false)}),
        row(module,
            {"Chromium " + L::tr("Cookie"), L::tr("%@ 正在运行，退出浏览器后可清理 %@", "Chromium", L::tr("Cookie")),
             "circle.hexagongrid", Tint::blue},
            {target("/home/anna/.config/chromium/Default/Cookies", 4 * megabyte, 1, "doc", false)}, false),
        row(module,
            {"Edge " + L::tr("本地存储"), described("站点本地存储、会话和 IndexedDB"), "globe", Tint::indigo,
             CleanupRisk::high},
            {target("/home/anna/.config/microsoft-edge/Default/IndexedDB", 215 * megabyte, 1402, "folder", false)})};
}

CleanupItem application(const std::string& name, const std::string& identifier, int leftovers, bool running) {
    std::vector<CleanupTarget> paths{
        target("/home/anna/Applications/" + name, 310 * megabyte, 820, "app.dashed", false)};
    for (int i = 0; i < leftovers; ++i) {
        paths.push_back(
            target("/home/anna/.config/" + name + "-" + std::to_string(i), 12 * megabyte, 40, "folder", false));
    }
    CleanupItem item = row(CleanerModule::appUninstaller,
                           {name, leftovers == 0 ? L::tr("未发现明显残留") : L::tr("发现 %d 个关联残留", leftovers),
                            "app.dashed", Tint::orange, CleanupRisk::high},
                           std::move(paths), !running);
    AppCleanupInfo info;
    info.bundleIdentifier = identifier.empty() ? std::nullopt : std::optional(identifier);
    info.appPath = "/home/anna/Applications/" + name;
    info.appBytes = 310 * megabyte;
    info.residualCount = leftovers;
    info.residualBytes = leftovers * 12 * megabyte;
    info.isRunning = running;
    item.appInfo = info;
    return item;
}

std::vector<CleanupItem> applicationItems() {
    CleanupItem managed = row(
        CleanerModule::appUninstaller,
        {L::tr("系统管理的应用"), L::tr("%d 个应用由系统软件包管理，请在软件中心卸载", 142), "shippingbox", Tint::gray},
        {}, false);
    return {application("Blender", "org.blender.Blender", 3, false),
            application("Obsidian", "md.obsidian.Obsidian", 2, true), application("OldTool", "", 0, false), managed};
}

std::vector<CleanupItem> performanceItems() {
    const CleanerModule module = CleanerModule::performance;
    return {row(module,
                {L::tr("用户启动代理"), L::tr("%@ 中的登录启动配置", "~/.config/autostart"), "power", Tint::green},
                {target("/home/anna/.config/autostart/nextcloud.desktop", 4096, 1, "doc", false)}, false),
            row(module,
                {L::tr("应用恢复状态"), L::tr("窗口恢复状态和临时会话文件"), "clock.arrow.circlepath", Tint::cyan,
                 CleanupRisk::cautious},
                {target("/home/anna/.cache/sessions/xfce4-session-host:0", 8192, 1, "doc", false)})};
}

std::vector<CleanupItem> memoryItems() {
    const std::int64_t bytes = memoryState().reclaimableBytes;
    CleanupTarget placeholder = target("/dev/null", bytes, 1, "memorychip", true);
    placeholder.name = L::tr("预计可释放内存");
    placeholder.location = L::tr("内存压力整理");
    placeholder.modified = L::tr("实时");
    placeholder.modifiedAt.reset();
    return {row(CleanerModule::memoryOptimization,
                {L::tr("预计可释放内存"), L::tr("释放文件缓存并请求 macOS 整理内存压力"), "memorychip", Tint::mint,
                 CleanupRisk::safe},
                {placeholder})};
}

std::vector<CleanupItem> trashItems() {
    const std::string emptied = "%@，清理后会永久移除";
    CleanupItem limited =
        row(CleanerModule::trash,
            {L::tr("%@访问受限", L::tr("%@ 废纸篓", "BACKUP")),
             L::tr("无法读取 %@。开启完全磁盘访问后可扫描废纸篓内容。", "/media/anna/BACKUP/.Trash-1000"),
             "lock.trianglebadge.exclamationmark", Tint::orange},
            {target("/media/anna/BACKUP/.Trash-1000", 0, 0, "lock", false)}, false);
    limited.targets.edit().front().modified = L::tr("访问受限");
    return {row(CleanerModule::trash,
                {L::tr("用户废纸篓"), L::tr(emptied, L::tr("%@ 中的文件", "~/.local/share/Trash")), "trash", Tint::red,
                 CleanupRisk::safe},
                {target("/home/anna/.local/share/Trash/files/old-project", 1'320 * megabyte, 9120, "folder", true),
                 target("/home/anna/.local/share/Trash/files/screencast.mp4", 740 * megabyte, 1, "film", true)}),
            limited};
}

} // namespace

std::vector<CleanupItem> itemsOf(CleanerModule module) {
    switch (module) {
    case CleanerModule::systemJunk:
        return junkItems();
    case CleanerModule::largeFiles:
        return largeFileItems();
    case CleanerModule::privacy:
        return privacyItems();
    case CleanerModule::appUninstaller:
        return applicationItems();
    case CleanerModule::performance:
        return performanceItems();
    case CleanerModule::memoryOptimization:
        return memoryItems();
    case CleanerModule::trash:
        return trashItems();
    case CleanerModule::smartScan:
        break;
    }
    std::vector<CleanupItem> all;
    for (const CleanerModule part : allCleanerModules) {
        if (part != CleanerModule::smartScan) {
            std::ranges::move(itemsOf(part), std::back_inserter(all));
        }
    }
    return all;
}

} // namespace vellmoor::sample
