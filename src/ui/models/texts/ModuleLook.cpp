#include "ModuleLook.h"

#include "QtText.h"

#include <array>

namespace vellmoor {
namespace {

struct ModuleLook {
    std::string_view symbol;
    std::string_view headline;
    std::string_view description;
};

// In the order of the modules.
constexpr std::array<ModuleLook, allCleanerModules.size()> looks{{
    {"sparkles", "一键扫描整个 Mac", "整合系统垃圾、大文件、隐私痕迹、启动项、内存状态和废纸篓。"},
    {"paintbrush", "清理系统缓存和临时文件", "扫描用户缓存、系统日志、开发工具缓存和下载残留，清理前会展示完整列表。"},
    {"archivebox", "定位最占空间的文件", "按体积、位置、修改时间筛选文件，避免误删仍在使用的项目。"},
    {"hand.raised", "查看浏览器和应用隐私痕迹",
     "检查浏览器历史、下载记录、Cookie、缓存和本地存储；浏览器退出后可清理。"},
    {"square.grid.2x2", "查看大型应用", "展示 /Applications 中的大型应用；卸载残留清理会在后续版本继续细化。"},
    {"power", "管理开机自启动应用", "查看用户 LaunchAgents，禁用或恢复应用的登录自启动配置。"},
    {"memorychip", "释放预计可释放内存", "读取实时内存状态，释放文件缓存并请求 macOS 整理内存压力。"},
    {"trash", "检查并清空废纸篓", "读取当前用户废纸篓内容，并在确认后永久移除。"},
}};

const ModuleLook& look(CleanerModule module) {
    return looks.at(static_cast<std::size_t>(module));
}

} // namespace

QString moduleSymbol(CleanerModule module) {
    return toQt(look(module).symbol);
}

QString moduleHeadline(CleanerModule module) {
    return localised(look(module).headline);
}

QString moduleDescription(CleanerModule module) {
    return localised(look(module).description);
}

QString cleaningTitle(CleanerModule module) {
    return module == CleanerModule::memoryOptimization ? localised("优化中...") : localised("清理中...");
}

} // namespace vellmoor
