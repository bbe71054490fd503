#include "LanguageManager.h"

#include <QCoreApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace vellmoor {
namespace {

/// A setting that lives in the test, and notes what was written.
class LanguageManagerTest : public ::testing::Test {
protected:
    LanguageSetting setting() {
        return {.read = [this] { return stored; }, .write = [this](const std::string& raw) { written.push_back(raw); }};
    }

    AppLanguage startLanguage(const std::optional<std::string>& kept, const std::optional<std::string>& preferred) {
        stored = kept;
        return LanguageManager(setting(), preferred).language();
    }

    std::optional<std::string> stored;
    std::vector<std::string> written;
};

TEST_F(LanguageManagerTest, StartsInTheKeptLanguageWhateverTheSystemPrefers) {
    EXPECT_EQ(startLanguage("zh", "en-US"), AppLanguage::chinese);
    EXPECT_EQ(startLanguage("en", "zh-Hans-CN"), AppLanguage::english);
}

TEST_F(LanguageManagerTest, FollowsTheSystemWhenNothingIsKept) {
    EXPECT_EQ(startLanguage(std::nullopt, "zh-Hans-CN"), AppLanguage::chinese);
    EXPECT_EQ(startLanguage(std::nullopt, "en-US"), AppLanguage::english);
}

TEST_F(LanguageManagerTest, FollowsTheSystemWhenAnotherLanguageIsKept) {
    EXPECT_EQ(startLanguage("fr", "zh-Hans-CN"), AppLanguage::chinese);
    EXPECT_EQ(startLanguage("fr", "fr-FR"), AppLanguage::english);
    EXPECT_EQ(startLanguage("", "zh"), AppLanguage::chinese);
    EXPECT_EQ(startLanguage("ZH", "en"), AppLanguage::english);
}

TEST_F(LanguageManagerTest, StartsInChineseForEveryKindOfChinese) {
    for (const char* preferred : {"zh-Hant-TW", "zh-TW", "zh_CN.UTF-8", "ZH-HANS", "zh"}) {
        EXPECT_EQ(startLanguage(std::nullopt, preferred), AppLanguage::chinese) << preferred;
    }
}

TEST_F(LanguageManagerTest, StartsInEnglishForEveryOtherLanguage) {
    for (const char* preferred : {"en-GB", "en_GB.UTF-8", "fr-FR", "ja-JP", "C", "", "nzh"}) {
        EXPECT_EQ(startLanguage(std::nullopt, preferred), AppLanguage::english) << preferred;
    }
}

TEST_F(LanguageManagerTest, StartsInEnglishWithoutAnyPreference) {
    EXPECT_EQ(startLanguage(std::nullopt, std::nullopt), AppLanguage::english);
}

TEST_F(LanguageManagerTest, SetsTheLookupAtTheStart) {
    L::setLanguage(AppLanguage::english);
    stored = "zh";
    const LanguageManager manager(setting(), std::nullopt);
    EXPECT_EQ(L::language(), AppLanguage::chinese);
}

TEST_F(LanguageManagerTest, KeepsNothingAtTheStart) {
    startLanguage(std::nullopt, "zh-Hans-CN");
    startLanguage("fr", "zh-Hans-CN");
    EXPECT_TRUE(written.empty());
}

TEST_F(LanguageManagerTest, AChangeSetsTheLookupKeepsTheRawValueAndTells) {
    LanguageManager manager(setting(), "en");
    int told = 0;
    QObject::connect(&manager, &LanguageManager::languageChanged, &manager, [&] {
        ++told;
        EXPECT_EQ(manager.language(), AppLanguage::chinese);
        EXPECT_EQ(L::language(), AppLanguage::chinese);
        EXPECT_EQ(written, std::vector<std::string>{"zh"});
    });
    manager.setLanguage(AppLanguage::chinese);
    EXPECT_EQ(told, 1);
}

TEST_F(LanguageManagerTest, AnAssignmentOfTheSameLanguageIsAChangeToo) {
    LanguageManager manager(setting(), "en");
    int told = 0;
    QObject::connect(&manager, &LanguageManager::languageChanged, &manager, [&told] { ++told; });
    L::setLanguage(AppLanguage::chinese);
    manager.setLanguage(AppLanguage::english);
    EXPECT_EQ(L::language(), AppLanguage::english);
    EXPECT_EQ(written, std::vector<std::string>{"en"});
    EXPECT_EQ(told, 1);
}

/// The real settings, in a folder of the test's own.
class UserDefaults : public ::testing::Test {
protected:
    UserDefaults() {
        QCoreApplication::setOrganizationName(QStringLiteral("VellmoorTests"));
        QCoreApplication::setApplicationName(QStringLiteral("store_tests"));
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder_.path());
        QSettings::setPath(QSettings::IniFormat, QSettings::SystemScope, folder_.path() + QStringLiteral("/system"));
    }

private:
    QTemporaryDir folder_;
};

TEST_F(UserDefaults, HoldNothingBeforeTheFirstChange) {
    EXPECT_EQ(LanguageSetting::userDefaults().read(), std::nullopt);
}

TEST_F(UserDefaults, KeepTheLanguageUnderItsKey) {
    LanguageManager(LanguageSetting::userDefaults(), "en").setLanguage(AppLanguage::chinese);
    EXPECT_EQ(QSettings().value(QStringLiteral("vmLanguage")).toString().toStdString(), "zh");
}

TEST_F(UserDefaults, GiveTheNextStartTheKeptLanguage) {
    LanguageManager(LanguageSetting::userDefaults(), "en").setLanguage(AppLanguage::chinese);
    const LanguageManager next(LanguageSetting::userDefaults(), "en");
    EXPECT_EQ(next.language(), AppLanguage::chinese);
}

TEST_F(UserDefaults, HoldNothingAfterAStartWithoutAChange) {
    const LanguageManager manager(LanguageSetting::userDefaults(), "zh");
    EXPECT_EQ(LanguageSetting::userDefaults().read(), std::nullopt);
}

} // namespace
} // namespace vellmoor
