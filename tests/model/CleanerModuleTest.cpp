#include "found/CleanerModule.h"

#include "LanguageScope.h"

#include <gmock/gmock.h>

namespace vellmoor {
namespace {

using ::testing::ElementsAre;

template <class Cases, class Text>
std::vector<std::string> texts(const Cases& cases, Text text) {
    std::vector<std::string> all;
    for (const auto each : cases) {
        all.emplace_back(text(each));
    }
    return all;
}

std::vector<std::string> moduleTitles() {
    return texts(allCleanerModules, [](CleanerModule module) { return title(module); });
}

std::vector<std::string> moduleSubtitles() {
    return texts(allCleanerModules, [](CleanerModule module) { return subtitle(module); });
}

std::vector<std::string> riskTitles() {
    return texts(allCleanupRisks, [](CleanupRisk risk) { return title(risk); });
}

TEST(CleanerModules, HaveTheirCaseNamesAsRawValuesInSidebarOrder) {
    EXPECT_THAT(texts(allCleanerModules, [](CleanerModule module) { return rawValue(module); }),
                ElementsAre("smartScan", "systemJunk", "largeFiles", "privacy", "appUninstaller", "performance",
                            "memoryOptimization", "trash"));
}

TEST(CleanerModules, AreFoundByTheirRawValues) {
    for (const CleanerModule module : allCleanerModules) {
        EXPECT_EQ(cleanerModule(rawValue(module)), module);
    }
}

TEST(CleanerModules, AreNotFoundByAnyOtherName) {
    for (const char* name : {"", "Trash", "trash ", "tras", "Login Items", "smartscan"}) {
        EXPECT_EQ(cleanerModule(name), std::nullopt) << name;
    }
}

TEST(CleanerModules, HaveEnglishTitles) {
    const LanguageScope english(AppLanguage::english);
    EXPECT_THAT(moduleTitles(), ElementsAre("Smart Scan", "System Junk", "Large Files", "Privacy", "App Uninstaller",
                                            "Login Items", "Memory Optimization", "Trash"));
}

TEST(CleanerModules, HaveChineseTitles) {
    const LanguageScope chinese(AppLanguage::chinese);
    EXPECT_THAT(moduleTitles(), ElementsAre("智能扫描", "系统垃圾", "大文件", "隐私保护", "应用卸载", "启动项管理",
                                            "内存优化", "废纸篓"));
}

TEST(CleanerModules, HaveEnglishSubtitles) {
    const LanguageScope english(AppLanguage::english);
    EXPECT_THAT(moduleSubtitles(), ElementsAre("Check cleanable space in one click", "Caches, logs and temp files",
                                               "Find files taking up space", "Browser history and privacy traces",
                                               "Remove apps and leftover files", "Login and background items",
                                               "Free up reclaimable memory", "Empty all trash"));
}

TEST(CleanerModules, HaveChineseSubtitles) {
    const LanguageScope chinese(AppLanguage::chinese);
    EXPECT_THAT(moduleSubtitles(),
                ElementsAre("一键检查可清理空间", "缓存、日志和临时文件", "查找占用空间的文件", "浏览器记录和权限痕迹",
                            "移除应用和残留文件", "登录启动和后台项目", "释放预计可释放内存", "清空所有废纸篓"));
}

TEST(CleanupRisks, HaveTheirCaseNamesAsRawValues) {
    EXPECT_THAT(texts(allCleanupRisks, [](CleanupRisk risk) { return rawValue(risk); }),
                ElementsAre("safe", "cautious", "high", "previewOnly"));
}

TEST(CleanupRisks, AreFoundByTheirRawValuesOnly) {
    for (const CleanupRisk risk : allCleanupRisks) {
        EXPECT_EQ(cleanupRisk(rawValue(risk)), risk);
    }
    EXPECT_EQ(cleanupRisk("Safe"), std::nullopt);
    EXPECT_EQ(cleanupRisk(""), std::nullopt);
}

TEST(CleanupRisks, HaveBadgeTextsInBothLanguages) {
    {
        const LanguageScope english(AppLanguage::english);
        EXPECT_THAT(riskTitles(), ElementsAre("Safe", "Caution", "High Risk", "Preview Only"));
    }
    const LanguageScope chinese(AppLanguage::chinese);
    EXPECT_THAT(riskTitles(), ElementsAre("安全", "谨慎", "高风险", "仅预览"));
}

} // namespace
} // namespace vellmoor
