#include "permissions/PermissionHints.h"

#include "found/ScanSnapshot.h"
#include "scan/AccessLimited.h"

#include <algorithm>
#include <iterator>

namespace vellmoor {
namespace {

bool canRead(const EngineContext& context, const Path& folder) {
    return context.platform().isReadable(folder);
}

bool isInSandbox(const EngineContext& context) {
    const PermissionLayout& layout = context.layout().permissions;
    return layout.insideSandbox || (!layout.sandboxMarker.empty() && context.platform().exists(layout.sandboxMarker));
}

std::vector<Path> existingFolders(const EngineContext& context, const ProtectedLocation& location) {
    std::vector<Path> folders = location.folders;
    std::erase_if(folders, [&](const Path& folder) { return !context.platform().exists(folder); });
    return folders;
}

PermissionHint protectedLocationHint(const EngineContext& context, const ProtectedLocation& location) {
    const std::vector<Path> folders = existingFolders(context, location);
    PermissionHint hint;
    hint.title = L::tr(location.title);
    hint.description = L::tr(folders.empty() ? "当前用户目录未发现对应数据" : "用于隐私扫描和更完整的残留检测");
    hint.isGranted = std::ranges::all_of(folders, [&](const Path& folder) { return canRead(context, folder); });
    hint.symbol = location.symbol;
    hint.affectedModules = {CleanerModule::smartScan, CleanerModule::privacy};
    hint.recommendation = L::tr("在系统设置中允许完全磁盘访问，可获得更完整的隐私扫描结果。");
    return hint;
}

/// In a sandbox the home looks readable although other applications' data is hidden.
PermissionHint homeHint(const EngineContext& context) {
    PermissionHint hint;
    hint.title = L::tr("用户资料目录");
    hint.description = L::tr("缓存、大文件和应用残留扫描的基础权限");
    hint.isGranted = canRead(context, context.layout().permissions.home) && !isInSandbox(context);
    hint.symbol = "house";
    std::ranges::remove_copy(allCleanerModules, std::back_inserter(hint.affectedModules), CleanerModule::privacy);
    hint.recommendation = L::tr("如果此项异常，请确认 App 对用户目录具有读取权限。");
    return hint;
}

} // namespace

std::vector<PermissionHint> permissionHints(const EngineContext& context) {
    std::vector<PermissionHint> hints;
    for (const ProtectedLocation& location : context.layout().permissions.dataFolders) {
        hints.push_back(protectedLocationHint(context, location));
    }
    hints.push_back(homeHint(context));
    return hints;
}

std::optional<Path> firstUnreadableFolder(const EngineContext& context) {
    const PermissionLayout& layout = context.layout().permissions;
    std::vector<Path> folders;
    for (const ProtectedLocation& location : layout.dataFolders) {
        std::ranges::copy(existingFolders(context, location), std::back_inserter(folders));
    }
    folders.push_back(layout.home);
    for (const Path& folder : folders) {
        if (std::optional<Path> closed = closedFolder(context.platform(), folder)) {
            return closed;
        }
    }
    return std::nullopt;
}

} // namespace vellmoor
