#include "permissions/PermissionHints.h"

#include "EngineHome.h"
#include "ScopedUnprivileged.h"
#include "found/ScanSnapshot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vellmoor::test {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

const char* const noData = "No corresponding data found in the home directory";
const char* const usedFor = "Used for privacy scanning and more complete leftover detection";

/// The hints as an ordinary user gets them.
std::vector<PermissionHint> hints(const EngineHome& home) {
    const ScopedUnprivileged unprivileged;
    return permissionHints(home.context());
}

PermissionHint hint(const EngineHome& home, const std::string& title) {
    for (PermissionHint& candidate : hints(home)) {
        if (candidate.title == title) {
            return candidate;
        }
    }
    ADD_FAILURE() << "no hint " << title;
    return {};
}

std::optional<Path> unreadable(const EngineHome& home) {
    const ScopedUnprivileged unprivileged;
    return firstUnreadableFolder(home.context());
}

/// A location that a hint probes, or one of its folders.
struct Location {
    std::string title;
    std::string symbol;
    std::string folder;
};

void PrintTo(const Location& location, std::ostream* out) {
    *out << location.title << ": " << location.folder;
}

/// What holds for every protected location on either system.
void expectGrantedWithoutData(const EngineHome& home) {
    for (const PermissionHint& found : hints(home)) {
        EXPECT_TRUE(found.isGranted) << found.title;
        EXPECT_EQ(found.description == noData, found.symbol != "house") << found.title;
    }
}

/// What stands under the three protected locations.
void expectRecommendation(const EngineHome& home, const std::string& text) {
    const std::vector<PermissionHint> found = hints(home);
    ASSERT_THAT(found, SizeIs(4));
    for (std::size_t index = 0; index < 3; ++index) {
        EXPECT_EQ(found[index].recommendation, text);
    }
}

void expectGrantedWithData(EngineHome& home, const Location& location) {
    home.folder(location.folder);
    const PermissionHint found = hint(home, location.title);
    EXPECT_TRUE(found.isGranted);
    EXPECT_EQ(found.description, usedFor);
    EXPECT_EQ(found.symbol, location.symbol);
}

void expectMissingWhenClosed(EngineHome& home, const Location& location) {
    home.folder(location.folder);
    home.setMode(location.folder, 0);
    const PermissionHint found = hint(home, location.title);
    EXPECT_FALSE(found.isGranted);
    EXPECT_EQ(found.description, usedFor);
    EXPECT_THAT(found.affectedModules, ElementsAre(CleanerModule::smartScan, CleanerModule::privacy));
}

std::vector<std::string> titlesOf(const std::vector<PermissionHint>& list) {
    std::vector<std::string> out;
    for (const PermissionHint& entry : list) {
        out.push_back(entry.title);
    }
    return out;
}

void expectHomeHint(const EngineHome& home) {
    const PermissionHint found = hint(home, "Home Directory");
    EXPECT_TRUE(found.isGranted);
    EXPECT_EQ(found.description, "Base permission for cache, large file and app leftover scans");
    EXPECT_EQ(found.symbol, "house");
    EXPECT_THAT(found.affectedModules,
                ElementsAre(CleanerModule::smartScan, CleanerModule::systemJunk, CleanerModule::largeFiles,
                            CleanerModule::appUninstaller, CleanerModule::performance,
                            CleanerModule::memoryOptimization, CleanerModule::trash));
    EXPECT_EQ(found.recommendation, "If this is abnormal, make sure the app has read access to the home directory.");
}

// macOS

class MacProtectedLocation : public testing::TestWithParam<Location> {
protected:
    EngineHome home_{System::Mac};
};

TEST_P(MacProtectedLocation, IsGrantedWhenItCanBeRead) {
    expectGrantedWithData(home_, GetParam());
}
TEST_P(MacProtectedLocation, IsMissingWhenItCannotBeRead) {
    expectMissingWhenClosed(home_, GetParam());
}

INSTANTIATE_TEST_SUITE_P(Locations, MacProtectedLocation,
                         testing::Values(Location{"Mail Data", "envelope", "Library/Mail"},
                                         Location{"Messages Data", "message", "Library/Messages"},
                                         Location{"Safari Data", "safari", "Library/Safari"}));

TEST(MacPermissionHints, AreGrantedWhereThereIsNothingToRead) {
    const EngineHome home(System::Mac);
    expectGrantedWithoutData(home);
}

TEST(MacPermissionHints, RecommendFullDiskAccess) {
    const EngineHome home(System::Mac);
    expectRecommendation(home, "Allow Full Disk Access in System Settings for more complete privacy scan results.");
}

TEST(MacPermissionHints, AreFourInTableOrder) {
    const EngineHome home(System::Mac);
    EXPECT_THAT(titlesOf(hints(home)), ElementsAre("Mail Data", "Messages Data", "Safari Data", "Home Directory"));
}

TEST(MacPermissionHints, AReadableHomeIsGranted) {
    const EngineHome home(System::Mac);
    expectHomeHint(home);
}

TEST(MacPermissionHints, AnUnreadableHomeIsNot) {
    const EngineHome home(System::Mac);
    home.setMode(home.home, 0);
    EXPECT_FALSE(hint(home, "Home Directory").isGranted);
}

TEST(MacPermissionHints, AClosedFolderLeavesTheOtherHintsGranted) {
    const EngineHome home(System::Mac);
    home.folder("Library/Safari");
    home.folder("Library/Mail");
    home.setMode("Library/Mail", 0);
    EXPECT_FALSE(hint(home, "Mail Data").isGranted);
    EXPECT_TRUE(hint(home, "Safari Data").isGranted);
    EXPECT_TRUE(hint(home, "Home Directory").isGranted);
}

TEST(MacPermissionHints, SpeakTheChosenLanguage) {
    const EngineHome home(System::Mac);
    L::setLanguage(AppLanguage::chinese);
    const PermissionHint mail = hints(home).front();
    L::setLanguage(AppLanguage::english);
    EXPECT_EQ(mail.title, "邮件数据");
    EXPECT_EQ(mail.description, "当前用户目录未发现对应数据");
}

// Linux

class LinuxProtectedLocation : public testing::TestWithParam<Location> {
protected:
    EngineHome home_{System::Linux};
};

TEST_P(LinuxProtectedLocation, IsGrantedWhenItCanBeRead) {
    expectGrantedWithData(home_, GetParam());
}
TEST_P(LinuxProtectedLocation, IsMissingWhenItCannotBeRead) {
    expectMissingWhenClosed(home_, GetParam());
}

TEST_P(LinuxProtectedLocation, IsMissingWhenItCannotBeEntered) {
    home_.folder(GetParam().folder);
    home_.setMode(GetParam().folder, 0444);
    EXPECT_FALSE(hint(home_, GetParam().title).isGranted);
}

INSTANTIATE_TEST_SUITE_P(
    Locations, LinuxProtectedLocation,
    testing::Values(Location{"Browser Data", "globe", ".config/mozilla/firefox"},
                    Location{"Browser Data", "globe", ".mozilla/firefox"},
                    Location{"Browser Data", "globe", ".config/google-chrome-unstable"},
                    Location{"Browser Data", "globe", ".config/BraveSoftware/Brave-Browser"},
                    Location{"Browser Data", "globe", ".var/app/org.mozilla.firefox/.mozilla/firefox"},
                    Location{"Browser Data", "globe", "snap/chromium/common/chromium"},
                    Location{"Browser Data", "globe", ".snap/data/chromium/common/chromium"},
                    Location{"Browser Data", "globe", ".local/share/epiphany"},
                    Location{"Mail Data", "envelope", ".thunderbird"},
                    Location{"Mail Data", "envelope", ".var/app/org.mozilla.Thunderbird"},
                    Location{"Mail Data", "envelope", "snap/thunderbird/common/.thunderbird"},
                    Location{"Mail Data", "envelope", ".snap/data/thunderbird/common/.thunderbird"},
                    Location{"Mail Data", "envelope", ".local/share/evolution"},
                    Location{"Sandboxed App Data", "shippingbox", ".var/app"},
                    Location{"Sandboxed App Data", "shippingbox", "snap"},
                    Location{"Sandboxed App Data", "shippingbox", ".snap/data"}));

TEST(LinuxPermissionHints, AreGrantedWhereThereIsNothingToRead) {
    const EngineHome home(System::Linux);
    expectGrantedWithoutData(home);
}

TEST(LinuxPermissionHints, RecommendALookAtThePermissions) {
    const EngineHome home(System::Linux);
    expectRecommendation(home, "Check the folder's owner and read permission. If Vellmoor runs in a Flatpak or Snap "
                               "sandbox, allow it to access the home directory.");
}

TEST(LinuxPermissionHints, TheFirstUnreadableFolderIsTheOneToLookAt) {
    const EngineHome home(System::Linux);
    home.folder(".mozilla/firefox");
    home.folder(".config/chromium");
    home.folder(".thunderbird");
    home.setMode(".config/chromium", 0);
    home.setMode(".thunderbird", 0);
    EXPECT_EQ(unreadable(home), home.home / ".config/chromium");
}

TEST(LinuxPermissionHints, AFolderBelowAClosedOneIsNotTakenForMissing) {
    const EngineHome home(System::Linux);
    home.folder(".mozilla/firefox");
    home.setMode(".mozilla", 0);
    const ScopedUnprivileged unprivileged;
    EXPECT_FALSE(hint(home, "Browser Data").isGranted);
    EXPECT_EQ(unreadable(home), home.home / ".mozilla");
}

TEST(LinuxPermissionHints, AnUnreadableHomeIsTheFolderToLookAt) {
    const EngineHome home(System::Linux);
    home.setMode(home.home, 0);
    EXPECT_EQ(unreadable(home), home.home);
}

TEST(LinuxPermissionHints, AreFourInTableOrder) {
    const EngineHome home(System::Linux);
    EXPECT_THAT(titlesOf(hints(home)),
                ElementsAre("Browser Data", "Mail Data", "Sandboxed App Data", "Home Directory"));
}

TEST(LinuxPermissionHints, OneClosedFolderAmongReadableOnesIsEnough) {
    const EngineHome home(System::Linux);
    home.folder(".config/chromium");
    home.folder(".mozilla/firefox");
    home.setMode(".config/chromium", 0);
    EXPECT_FALSE(hint(home, "Browser Data").isGranted);
}

TEST(LinuxPermissionHints, AnOrdinaryInstallationMissesNothing) {
    const EngineHome home(System::Linux);
    home.folder(".mozilla/firefox");
    home.folder(".var/app");
    for (const PermissionHint& found : hints(home)) {
        EXPECT_TRUE(found.isGranted) << found.title;
    }
    EXPECT_EQ(unreadable(home), std::nullopt);
}

TEST(LinuxPermissionHints, AReadableHomeIsGranted) {
    const EngineHome home(System::Linux);
    expectHomeHint(home);
}

TEST(LinuxPermissionHints, AHomeThatCannotBeEnteredIsNot) {
    const EngineHome home(System::Linux);
    home.setMode(home.home, 0444);
    EXPECT_FALSE(hint(home, "Home Directory").isGranted);
}

TEST(LinuxPermissionHints, InAFlatpakTheHomeIsNotGranted) {
    const EngineHome home(System::Linux);
    home.text("/.flatpak-info", "[Application]\nname=org.vellmoor.Vellmoor\n");
    EXPECT_FALSE(hint(home, "Home Directory").isGranted);
    EXPECT_TRUE(hint(home, "Browser Data").isGranted);
}

TEST(LinuxPermissionHints, InASnapTheHomeIsNotGranted) {
    EngineHome home(System::Linux);
    home.environment.insideSnap = true;
    home.useEnvironment();
    EXPECT_FALSE(hint(home, "Home Directory").isGranted);
}

// A terminal that is a snap hands its variables on to what is started in it.
TEST(LinuxPermissionHints, ASnapIsOnlyWhatLiesInIt) {
    const auto isInside = [](const char* snap, const char* program) {
        return linuxEnvironment(
                   [&](std::string_view name) -> std::optional<std::string> {
                       return name == "SNAP" ? std::optional<std::string>(snap) : std::nullopt;
                   },
                   "/home/tester", program)
            .insideSnap;
    };
    EXPECT_TRUE(isInside("/snap/vellmoor/3", "/snap/vellmoor/3/usr/bin/vellmoor"));
    EXPECT_FALSE(isInside("/snap/code/200", "/usr/bin/vellmoor"));
    EXPECT_FALSE(isInside("", "/usr/bin/vellmoor"));
    EXPECT_FALSE(linuxEnvironmentOf("/home/tester").insideSnap);
}

TEST(LinuxPermissionHints, UseTheLinuxWordings) {
    const EngineHome home(System::Linux);
    L::setLanguage(AppLanguage::chinese);
    const std::vector<std::string> titles = titlesOf(hints(home));
    L::setLanguage(AppLanguage::english);
    EXPECT_THAT(titles, ElementsAre("浏览器数据", "邮件数据", "沙盒应用数据", "用户资料目录"));
}

} // namespace
} // namespace vellmoor::test
