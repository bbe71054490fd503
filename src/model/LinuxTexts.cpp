// Linux wordings: further texts, and the key of the main table that a text stands in for on Linux.
#include "TextTables.h"

#include <array>

namespace vellmoor {
namespace {

// clang-format off
constexpr auto linuxTable = std::to_array<LinuxTextEntry>({
    {"%@ 中的可再生缓存", "Regenerable caches in %@", ""},
    {"npm、pip、Cargo、Go、Gradle 等工具的下载与构建缓存", "Download and build caches of npm, pip, Cargo, Go, Gradle and other tools", "Xcode DerivedData、模拟器缓存和旧归档"},
    {"%@ 中的文件", "Files in %@", ""},
    {"%@ 卷中的废纸篓文件", "Trash files on the %@ volume", "%@ 卷宗中的废纸篓文件"},
    {"无法读取 %@。请检查该文件夹的所有者和访问权限。", "Unable to read %@. Check the folder's owner and permissions.", "无法读取 %@。开启完全磁盘访问后可扫描废纸篓内容。"},
    {"自扫描后已更改，已保留", "changed since the scan and was kept", ""},
    {"此磁盘没有废纸篓", "This disk has no Trash", ""},
    {"此磁盘已满，请先清空废纸篓", "This disk is full. Empty the Trash first", ""},
    {"其中有挂载点，已保留", "holds a mounted disk and was kept", ""},
    {"已移除，但其回收记录仍保留", "removed, but its Trash note remains", ""},
    {"项目由系统移到废纸篓，无法检查其回收记录", "The system moved the items to the Trash. Their Trash notes could not be checked", ""},
    {"%@ 是一个链接，Vellmoor 不会跟随它。", "%@ is a link, which Vellmoor does not follow.", ""},
    {"已保留及提示", "Kept, and worth knowing", ""},
    {"%@ 正在运行，已保留", "%@ is running and was kept", ""},
    {"%@ 将历史记录与书签存放在同一数据库中，请在浏览器内清除历史记录", "%@ keeps history and bookmarks in one database. Clear the history inside the browser", ""},
    {"%@（网站与扩展的数据在同一数据库中）", "%@ (sites and extensions share one database)", ""},
    {"无法读取 %@ 的配置文件，请检查权限", "Unable to read %@'s profile. Check its permissions", ""},
    {"，应用 ID：%@", ", app id: %@", "，bundle id：%@"},
    {"未读取到应用 ID", "App ID not found", "未读取到 Bundle ID"},
    {"应用文件", "App Files", "应用本体"},
    {"，将由 Flatpak 直接卸载，不经过废纸篓", ", will be uninstalled by Flatpak directly, not via the Trash", ""},
    {"系统管理的应用", "System-managed Apps", ""},
    {"%d 个应用由系统软件包管理，请在软件中心卸载", "%d apps are managed by the system's package manager. Uninstall them in the software center", ""},
    {"展示无需管理员权限即可移除的应用；卸载残留清理会在后续版本继续细化。", "Shows apps that can be removed without administrator rights; leftover cleanup will be refined in later versions.", "展示 /Applications 中的大型应用；卸载残留清理会在后续版本继续细化。"},
    {"用户自启动项", "User Autostart Entries", "用户启动代理"},
    {"%@ 中的登录启动配置", "Login launch configs in %@", ""},
    {"%@（%@）", "%@ (%@)", ""},
    {"会话恢复状态", "Saved Session State", "应用恢复状态"},
    {"启用失败：自启动文件夹中已存在同名配置。", "Enabling failed: a config with the same name already exists in the autostart folder.", "启用失败：LaunchAgents 中已存在同名配置。"},
    {"禁用后会移到同级的 .disabled 文件夹，可随时恢复", "Disabled items move to the .disabled folder next to it and can be restored anytime", "禁用后会移到 LaunchAgents.disabled，可随时恢复"},
    {"禁用后会停止当前登录会话中的后台进程，并把配置移到同级的 .disabled 文件夹。", "Disabling stops the background process in the current session and moves the config to the .disabled folder next to it.", "禁用后会停止当前登录会话中的后台代理，并把配置移到 LaunchAgents.disabled。"},
    {"恢复后会移回原文件夹，并尝试重新加载该启动项。", "Restoring moves it back to its original folder and tries to reload the item.", "恢复后会移回 LaunchAgents，并尝试重新加载该启动项。"},
    {"查看用户自启动项和后台服务，禁用或恢复应用的登录自启动配置。", "Inspect your autostart entries and background services, and disable or restore apps' login startup configs.", "查看用户 LaunchAgents，禁用或恢复应用的登录自启动配置。"},
    {"释放文件缓存并请求系统整理内存压力", "Free file caches and ask the system to manage memory pressure", "释放文件缓存并请求 macOS 整理内存压力"},
    {"未安装内存整理组件，无法执行内存整理。", "The memory cleanup helper is not installed, so memory management cannot run.", "当前系统未提供 purge 工具，无法执行内存整理。"},
    {"已请求系统释放预计可释放的文件缓存。", "Requested the system to free reclaimable file caches.", "已请求 macOS 释放预计可释放的文件缓存。"},
    {"已通过管理员授权请求系统释放预计可释放的文件缓存。", "Requested the system to free reclaimable file caches with admin authorization.", "已通过管理员授权请求 macOS 释放预计可释放的文件缓存。"},
    {"内存整理失败，返回状态码 %d。", "Memory cleanup failed with status code %d.", "内存整理失败，purge 返回状态码 %d。"},
    {"将请求系统释放预计可释放的文件缓存并整理内存压力；系统可能会要求管理员授权。当前预计可释放 %@。", "Ask the system to free reclaimable file caches and manage memory pressure; admin authorization may be required. Currently reclaimable: %@.", "将请求 macOS 释放预计可释放的文件缓存并整理内存压力；系统可能会要求管理员授权。当前预计可释放 %@。"},
    {"读取实时内存状态，释放文件缓存并请求系统整理内存压力。", "Reads live memory status, frees file caches and asks the system to manage memory pressure.", "读取实时内存状态，释放文件缓存并请求 macOS 整理内存压力。"},
    {"%@ 未响应退出请求，它可能正在等待你。", "%@ did not respond to the quit request. It may be waiting for you.", "%@ 未响应退出请求，可在活动监视器中结束。"},
    {"%@ 只能被结束，未保存的内容会丢失。", "%@ can only be ended. Unsaved content will be lost.", ""},
    {"结束", "End", ""},
    {"结束 %@？", "End %@?", ""},
    {"%@ 已不在列表中。", "%@ is no longer in the list.", ""},
    {"文件缓存，程序需要内存时会自动归还", "File caches, given back by themselves when programs need memory", ""},
    {"文件缓存 %@ → %@", "File caches %@ → %@", ""},
    {"程序", "Programs", ""},
    {"文件缓存", "File caches", ""},
    {"空闲", "Free", ""},
    {"系统监视器", "System Monitor", "活动监视器"},
    {"在系统监视器中查看", "View in System Monitor", "在活动监视器中查看"},
    {"浏览器数据", "Browser Data", ""},
    {"沙盒应用数据", "Sandboxed App Data", ""},
    {"请检查文件夹的所有者和读取权限；若 Vellmoor 运行在 Flatpak 或 Snap 沙盒中，请允许它访问用户目录。", "Check the folder's owner and read permission. If Vellmoor runs in a Flatpak or Snap sandbox, allow it to access the home directory.", "在系统设置中允许完全磁盘访问，可获得更完整的隐私扫描结果。"},
    {"允许读取后，可扫描 %@。", "With read access you can scan %@.", "开启完全磁盘访问后，可扫描 %@。"},
    {"检查访问权限", "Check Access", "打开完全磁盘访问权限"},
    {"在文件管理器中显示", "Show in File Manager", "在 Finder 中显示"},
    {"文件管理器预览", "File manager preview", "Finder 预览"},
    {"准备好后开始扫描你的电脑", "Ready to scan your computer", "准备好后开始扫描你的 Mac"},
    {"一键扫描整台电脑", "Scan your entire computer in one click", "一键扫描整个 Mac"},
    {"系统磁盘", "System Disk", ""},
    {"至少 %@", "at least %@", ""},
    {"Vellmoor 正以 root 身份运行", "Vellmoor is running as root", ""},
    {"它只会扫描和清理 root 自己的用户目录。请退出后用你自己的账户启动。", "It scans and cleans root's own home directory only. Quit it and start it from your own account.", ""},
});
// clang-format on

} // namespace

std::span<const LinuxTextEntry> linuxTexts() {
    return linuxTable;
}

} // namespace vellmoor
