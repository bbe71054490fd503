// What macOS reads about the program before it runs.
#include "FileContent.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <plist/plist.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using vellmoor::test::contentOf;

using ::testing::ElementsAre;
using ::testing::HasSubstr;

using Texts = std::map<std::string, std::string>;

const std::set<std::string> consents{"NSAppDataUsageDescription",         "NSAppleEventsUsageDescription",
                                     "NSDesktopFolderUsageDescription",   "NSDocumentsFolderUsageDescription",
                                     "NSDownloadsFolderUsageDescription", "NSNetworkVolumesUsageDescription",
                                     "NSRemovableVolumesUsageDescription"};

/// Every line of a strings file; nothing when one of them is written wrongly or a key stands twice.
std::optional<Texts> textsOf(const std::filesystem::path& file) {
    static const std::regex line(R"re("(\w+)" = "([^"\\]+)";)re");
    Texts texts;
    std::istringstream lines(contentOf(file));
    for (std::string text; std::getline(lines, text);) {
        std::smatch parts;
        if (!std::regex_match(text, parts, line) || !texts.emplace(parts[1], parts[2]).second) {
            return std::nullopt;
        }
    }
    return texts;
}

class InfoPlist : public ::testing::Test {
protected:
    void SetUp() override {
        const std::string bytes = contentOf(INFO_PLIST);
        plist_t node = nullptr;
        plist_from_xml(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &node);
        list_.reset(node);
        ASSERT_TRUE(list_);
        ASSERT_EQ(plist_get_node_type(node), PLIST_DICT);
    }

    [[nodiscard]] plist_t item(const std::string& key) const { return plist_dict_get_item(list_.get(), key.c_str()); }

    static std::string stringIn(plist_t node) {
        std::uint64_t length = 0;
        const char* text = node == nullptr ? nullptr : plist_get_string_ptr(node, &length);
        return text == nullptr ? std::string() : std::string(text, length);
    }

    [[nodiscard]] std::string text(const std::string& key) const { return stringIn(item(key)); }

    [[nodiscard]] std::optional<bool> flag(const std::string& key) const {
        plist_t node = item(key);
        if (node == nullptr || plist_get_node_type(node) != PLIST_BOOLEAN) {
            return std::nullopt;
        }
        std::uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }

private:
    struct Free {
        void operator()(void* node) const { plist_free(node); }
    };
    std::unique_ptr<void, Free> list_;
};

TEST_F(InfoPlist, NamesTheProgram) {
    EXPECT_EQ(text("CFBundleIdentifier"), "org.vellmoor.Vellmoor");
    EXPECT_EQ(text("CFBundleName"), "Vellmoor");
    EXPECT_EQ(text("CFBundleDisplayName"), "Vellmoor");
    EXPECT_EQ(text("CFBundleExecutable"), "Vellmoor");
    EXPECT_EQ(text("CFBundleIconFile"), "Vellmoor.icns");
    EXPECT_EQ(text("CFBundlePackageType"), "APPL");
    EXPECT_EQ(text("CFBundleInfoDictionaryVersion"), "6.0");
    EXPECT_EQ(text("LSApplicationCategoryType"), "public.app-category.utilities");
    EXPECT_EQ(text("NSPrincipalClass"), "NSApplication");
}

TEST_F(InfoPlist, BearsTheProjectsVersion) {
    EXPECT_EQ(text("CFBundleVersion"), BUNDLE_VERSION);
    EXPECT_EQ(text("CFBundleShortVersionString"), BUNDLE_VERSION);
    EXPECT_EQ(text("LSMinimumSystemVersion"), "14.0");
}

TEST_F(InfoPlist, KeepsTheProgramAliveWithoutAWindow) {
    EXPECT_EQ(flag("NSSupportsAutomaticTermination"), false);
    EXPECT_EQ(flag("NSSupportsSuddenTermination"), false);
    EXPECT_EQ(item("LSUIElement"), nullptr); // it keeps its Dock icon
}

TEST_F(InfoPlist, AsksForALightSharpWindow) {
    EXPECT_EQ(flag("NSRequiresAquaSystemAppearance"), false);
    EXPECT_EQ(flag("NSHighResolutionCapable"), true);
}

TEST_F(InfoPlist, LetsTheSystemSpeakBothLanguages) {
    EXPECT_EQ(text("CFBundleDevelopmentRegion"), "en");
    std::vector<std::string> languages;
    plist_t list = item("CFBundleLocalizations");
    ASSERT_NE(list, nullptr);
    for (std::uint32_t index = 0; index < plist_array_get_size(list); ++index) {
        languages.push_back(stringIn(plist_array_get_item(list, index)));
    }
    EXPECT_THAT(languages, ElementsAre("en", "zh-Hans"));
}

TEST_F(InfoPlist, HasEachConsentTextInEnglish) {
    const auto english = textsOf(std::filesystem::path(BUNDLE_TEXTS) / "en.lproj/InfoPlist.strings");
    ASSERT_TRUE(english);
    for (const std::string& key : consents) {
        EXPECT_THAT(text(key), HasSubstr("Vellmoor")) << key;
        ASSERT_TRUE(english->contains(key)) << key;
        EXPECT_EQ(text(key), english->at(key)) << key; // where no language fits, the property list's own is shown
    }
}

TEST(BundleTexts, BothLanguagesHaveTheSameKeys) {
    const std::filesystem::path folder = BUNDLE_TEXTS;
    const auto english = textsOf(folder / "en.lproj/InfoPlist.strings");
    const auto chinese = textsOf(folder / "zh-Hans.lproj/InfoPlist.strings");
    ASSERT_TRUE(english);
    ASSERT_TRUE(chinese);
    std::set<std::string> expected = consents;
    expected.insert({"CFBundleDisplayName", "CFBundleName"});
    std::set<std::string> englishKeys;
    std::set<std::string> chineseKeys;
    for (const auto& [key, text] : *english) {
        englishKeys.insert(key);
    }
    for (const auto& [key, text] : *chinese) {
        chineseKeys.insert(key);
    }
    EXPECT_EQ(englishKeys, expected);
    EXPECT_EQ(chineseKeys, expected);
}

TEST(BundleTexts, EveryConsentIsReallyChinese) {
    const auto chinese = textsOf(std::filesystem::path(BUNDLE_TEXTS) / "zh-Hans.lproj/InfoPlist.strings");
    ASSERT_TRUE(chinese);
    for (const std::string& key : consents) {
        const auto text = chinese->find(key);
        ASSERT_NE(text, chinese->end()) << key;
        EXPECT_THAT(text->second, HasSubstr("Vellmoor 会")) << key;
        EXPECT_TRUE(text->second.ends_with("。")) << key;
    }
}

} // namespace
