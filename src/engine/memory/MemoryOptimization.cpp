#include "memory/Memory.h"
#include "processes/MemoryText.h"

#include <algorithm>
#include <unistd.h>

namespace vellmoor {
namespace {

const PurgeTool* purgeTool(const EngineContext& context) {
    for (const PurgeTool& tool : context.layout().memory.purgeTools) {
        if (context.platform().isExecutable(tool.tool)) {
            return &tool;
        }
    }
    return nullptr;
}

MemoryOptimization failure(std::string message) {
    return {.succeeded = false, .message = std::move(message)};
}

MemoryOptimization notInstalled() {
    return failure(L::tr("当前系统未提供 purge 工具，无法执行内存整理。"));
}

/// What the tool said, on one line; else the text `statusKey` with its status.
MemoryOptimization failure(const CommandResult& result, std::string_view statusKey) {
    const std::string said = result.combinedOutput();
    std::string text(trimmed(said));
    std::ranges::replace(text, '\n', ' ');
    return failure(text.empty() ? L::tr(statusKey, result.status) : text);
}

bool saysAny(const EngineContext& context, const CommandResult& result, const std::vector<std::string>& phrases) {
    const std::string said = result.combinedOutput();
    return std::ranges::any_of(
        phrases, [&](const std::string& phrase) { return context.platform().containsPhrase(said, phrase); });
}

/// Whether the tool was refused for want of administrator rights.
bool isRefused(const EngineContext& context, const CommandResult& result) {
    return saysAny(context, result, context.layout().memory.elevation.refusals);
}

std::vector<std::string> elevatedArguments(const PurgeElevation& elevation, const PurgeTool& purge) {
    constexpr std::string_view placeholder = "%@";
    std::vector<std::string> arguments = elevation.arguments;
    for (std::string& argument : arguments) {
        if (const std::size_t at = argument.find(placeholder); at != std::string::npos) {
            argument.replace(at, placeholder.size(), purge.tool.native());
        }
    }
    arguments.insert(arguments.end(), purge.arguments.begin(), purge.arguments.end());
    return arguments;
}

bool isCancelled(const EngineContext& context, const CommandResult& result) {
    const PurgeElevation& elevation = context.layout().memory.elevation;
    if (elevation.cancelStatus) {
        return result.status == *elevation.cancelStatus;
    }
    return saysAny(context, result, elevation.cancelPhrases);
}

/// Runs the tool again with administrator rights; the system asks the user for them.
MemoryOptimization purgeElevated(const EngineContext& context, const PurgeTool& purge) {
    const PurgeElevation& elevation = context.layout().memory.elevation;
    if (elevation.mustExist && !context.platform().isExecutable(elevation.tool)) {
        return notInstalled();
    }
    const CommandResult result = context.platform().commandResult(elevation.tool, elevatedArguments(elevation, purge));
    if (result.status == 0) {
        return {.succeeded = true, .message = L::tr("已通过管理员授权请求 macOS 释放预计可释放的文件缓存。")};
    }
    if (isCancelled(context, result)) {
        return failure(L::tr("已取消管理员授权，内存优化未执行。"));
    }
    return failure(result, "管理员授权执行失败，返回状态码 %d。");
}

} // namespace

std::optional<Path> purgeExecutablePath(const EngineContext& context) {
    const PurgeTool* purge = purgeTool(context);
    return purge == nullptr ? std::nullopt : std::optional(purge->tool);
}

MemoryOptimization optimizeMemory(const EngineContext& context) {
    return optimizeMemory(context, [] { sync(); });
}

MemoryOptimization optimizeMemory(const EngineContext& context, const std::function<void()>& writeDisks) {
    const PurgeTool* purge = purgeTool(context);
    if (purge == nullptr) {
        return notInstalled();
    }
    if (purge->needsSync) {
        writeDisks();
    }
    // Its refusal is recognised by its words.
    const CommandResult result = context.platform().untranslatedResult(purge->tool, purge->arguments);
    if (result.status == 0) {
        return {.succeeded = true, .message = L::tr("已请求 macOS 释放预计可释放的文件缓存。")};
    }
    if (isRefused(context, result)) {
        return purgeElevated(context, *purge);
    }
    return failure(result, "内存整理失败，purge 返回状态码 %d。");
}

} // namespace vellmoor
