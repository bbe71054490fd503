#include "found/CleanerModule.h"

#include "texts/L.h"

namespace vellmoor {
namespace {

struct ModuleTexts {
    std::string_view rawValue;
    std::string_view title;
    std::string_view subtitle;
};

constexpr std::array<ModuleTexts, allCleanerModules.size()> moduleTexts{{
    {"smartScan", "智能扫描", "一键检查可清理空间"},
    {"systemJunk", "系统垃圾", "缓存、日志和临时文件"},
    {"largeFiles", "大文件", "查找占用空间的文件"},
    {"privacy", "隐私保护", "浏览器记录和权限痕迹"},
    {"appUninstaller", "应用卸载", "移除应用和残留文件"},
    {"performance", "启动项管理", "登录启动和后台项目"},
    {"memoryOptimization", "内存优化", "释放预计可释放内存"},
    {"trash", "废纸篓", "清空所有废纸篓"},
}};

struct RiskTexts {
    std::string_view rawValue;
    std::string_view title;
};

constexpr std::array<RiskTexts, allCleanupRisks.size()> riskTexts{{
    {"safe", "安全"},
    {"cautious", "谨慎"},
    {"high", "高风险"},
    {"previewOnly", "仅预览"},
}};

const ModuleTexts& texts(CleanerModule module) {
    return moduleTexts.at(static_cast<std::size_t>(module));
}
const RiskTexts& texts(CleanupRisk risk) {
    return riskTexts.at(static_cast<std::size_t>(risk));
}

} // namespace

std::string_view rawValue(CleanerModule module) {
    return texts(module).rawValue;
}

std::optional<CleanerModule> cleanerModule(std::string_view raw) {
    for (const CleanerModule module : allCleanerModules) {
        if (rawValue(module) == raw) {
            return module;
        }
    }
    return std::nullopt;
}

std::string title(CleanerModule module) {
    return L::tr(texts(module).title);
}
std::string subtitle(CleanerModule module) {
    return L::tr(texts(module).subtitle);
}

std::string_view rawValue(CleanupRisk risk) {
    return texts(risk).rawValue;
}

std::optional<CleanupRisk> cleanupRisk(std::string_view raw) {
    for (const CleanupRisk risk : allCleanupRisks) {
        if (rawValue(risk) == raw) {
            return risk;
        }
    }
    return std::nullopt;
}

std::string title(CleanupRisk risk) {
    return L::tr(texts(risk).title);
}

} // namespace vellmoor
