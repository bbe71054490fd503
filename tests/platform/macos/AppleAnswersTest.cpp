// What only Apple's own Foundation answers: volumes, bundles, packages, texts. On a Mac only.
#include "MacPlatform.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

namespace vellmoor {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class AppleAnswers : public ::testing::Test {
protected:
    test::TemporaryFolder folder_;
    MacPlatform platform_;
};

TEST_F(AppleAnswers, TheVolumeOfAFolderHasRoom) {
    const auto capacity = platform_.capacity(folder_.path());
    ASSERT_TRUE(capacity);
    EXPECT_GT(capacity->totalBytes, 0);
    EXPECT_LE(capacity->availableBytes, capacity->totalBytes);
}

TEST_F(AppleAnswers, TheStartUpVolumeIsMounted) {
    const auto volumes = platform_.mountedVolumes();
    ASSERT_THAT(volumes, Not(IsEmpty()));
    EXPECT_EQ(volumes.front().path, "/");
    EXPECT_THAT(volumes.front().name, Not(IsEmpty()));
}

TEST_F(AppleAnswers, ABundleTellsItsNames) {
    folder_.text("A.app/Contents/Info.plist", "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict>"
                                              "<key>CFBundleIdentifier</key><string>org.example.a</string>"
                                              "<key>CFBundleName</key><integer>1</integer>"
                                              "<key>CFBundleDisplayName</key><string>An A</string></dict></plist>");
    const auto info = platform_.bundleInfo(folder_ / "A.app");
    ASSERT_TRUE(info);
    EXPECT_EQ(info->identifier, "org.example.a");
    EXPECT_EQ(info->displayName, "An A");
    EXPECT_EQ(info->name, std::nullopt); // no string
}

TEST_F(AppleAnswers, AnApplicationIsAPackageAndAFolderIsNot) {
    folder_.text("A.app/Contents/Info.plist", "");
    EXPECT_TRUE(platform_.isPackage(folder_ / "A.app"));
    EXPECT_FALSE(platform_.isPackage(folder_.folder("plain")));
    EXPECT_FALSE(platform_.isPackage(folder_.folder("with.dot")));
}

TEST_F(AppleAnswers, NamesAreComparedAndFoundWhateverTheirCase) {
    EXPECT_LT(platform_.compareNames("apple", "Banana"), 0);
    EXPECT_GT(platform_.compareNames("cherry", "Banana"), 0);
    EXPECT_EQ(platform_.compareNames("same", "SAME"), 0);
    EXPECT_TRUE(platform_.containsPhrase("Über allem", "üBER"));
    EXPECT_FALSE(platform_.containsPhrase("text", ""));
}

TEST_F(AppleAnswers, ADateIsToldInBothLanguages) {
    const TimePoint now = std::chrono::system_clock::now();
    EXPECT_THAT(platform_.relativeDate(now - 49h, now, AppLanguage::english), HasSubstr("2 days ago"));
    EXPECT_THAT(platform_.relativeDate(now - 49h, now, AppLanguage::chinese), HasSubstr("天前"));
}

} // namespace
} // namespace vellmoor
