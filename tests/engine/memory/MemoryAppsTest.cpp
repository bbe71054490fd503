#include "memory/Memory.h"
#include "memory/MemoryFixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor {
namespace {

using test::answering;
using test::EngineHome;
using test::setTool;
using test::System;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr std::string_view infoPlist = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0"><dict>)";

class MacApps : public ::testing::Test {
protected:
    /// One line of the listing; `program` is relative to the root.
    void addLine(std::int32_t pid, std::int64_t kilobytes, std::string_view program) {
        listing_ += "  " + std::to_string(pid) + "  " + std::to_string(kilobytes) + " " + rooted(program) + "\n";
        setTool(home, "/bin/ps", answering(listing_));
    }
    void addRunning(std::int32_t pid, std::string name, std::string_view bundle) {
        home.platform.running.push_back(
            {.pid = pid, .name = std::move(name), .bundleIdentifier = std::nullopt, .bundlePath = rooted(bundle)});
    }
    void addBundle(std::string_view bundle, std::string_view keys) {
        home.text(std::string(bundle) + "/Contents/Info.plist",
                  std::string(infoPlist) + std::string(keys) + "</dict></plist>");
    }
    [[nodiscard]] std::string rooted(std::string_view path) const { return home.root.string() + std::string(path); }
    std::vector<MemoryApp> apps() {
        EngineContext context = home.context();
        return memoryApps(context);
    }

    EngineHome home{System::Mac};

private:
    std::string listing_;
};

TEST_F(MacApps, TwoProcessesOfOneApplicationAreOneRow) {
    addLine(900, 500, "/Applications/Visual Studio Code.app/Contents/MacOS/Electron");
    addLine(
        901, 300,
        "/Applications/Visual Studio Code.app/Contents/Frameworks/Code Helper (GPU).app/Contents/MacOS/Code Helper");
    const std::vector<MemoryApp> found = apps();
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].id, rooted("/Applications/Visual Studio Code.app"));
    EXPECT_EQ(found[0].path, rooted("/Applications/Visual Studio Code.app"));
    EXPECT_EQ(found[0].name, "Visual Studio Code");
    EXPECT_EQ(found[0].bytes, 800 * 1024);
    EXPECT_EQ(found[0].processCount, 2);
    EXPECT_THAT(found[0].pids, ElementsAre(900, 901));
    EXPECT_FALSE(found[0].isActive);
    EXPECT_EQ(found[0].bundleIdentifier, std::nullopt);
}

TEST_F(MacApps, NineApplicationsYieldTheEightLargest) {
    for (int i = 1; i <= 9; ++i) {
        addLine(i, 100 * i, "/Applications/App" + std::to_string(i) + ".app/Contents/MacOS/App");
    }
    const std::vector<MemoryApp> found = apps();
    ASSERT_THAT(found, SizeIs(8));
    EXPECT_EQ(found.front().name, "App9");
    EXPECT_EQ(found.back().name, "App2");
    EXPECT_TRUE(std::ranges::is_sorted(found, std::ranges::greater(), &MemoryApp::bytes));
}

TEST_F(MacApps, ARunningApplicationIsFoundByItsPidWhateverItsCommand) {
    addLine(345, 700, "/some/where/else");
    addRunning(345, "Safari", "/Applications/Safari.app");
    const std::vector<MemoryApp> found = apps();
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].id, rooted("/Applications/Safari.app"));
    EXPECT_TRUE(found[0].isActive);
}

TEST_F(MacApps, ARunningBundlePathIsStandardised) {
    addLine(345, 700, "/x");
    addLine(346, 100, "/Applications/Safari.app/Contents/MacOS/Helper");
    addRunning(345, "Safari", "/Applications/./Safari.app/");
    const std::vector<MemoryApp> found = apps();
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].processCount, 2);
    EXPECT_TRUE(found[0].isActive);
}

TEST_F(MacApps, ARunningApplicationWithoutABundleIsDropped) {
    addLine(345, 700, "/opt/tool");
    home.platform.running.push_back({.pid = 345, .name = "tool", .bundleIdentifier = std::nullopt, .bundlePath = {}});
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(MacApps, ACommandOutsideEveryBundleIsDropped) {
    addLine(1, 700, "/sbin/launchd");
    addLine(2, 700, "/Applications/NoSlash.app");
    addLine(3, 700, "/Applications/Upper.APP/Contents/MacOS/x");
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(MacApps, EscapedPathsAreDropped) {
    addLine(1, 700, "/Applications/M-eM-^EM-,.app/Contents/MacOS/x");
    addLine(2, 700, "/Applications/Odd^A.app/Contents/MacOS/x");
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(MacApps, AnEscapeBehindTheBundleDoesNotMatter) {
    addLine(1, 700, "/Applications/Fine.app/Contents/MacOS/M-e^A");
    EXPECT_THAT(apps(), ElementsAre(Field(&MemoryApp::name, "Fine")));
}

TEST_F(MacApps, ProtectedApplicationsAreDropped) {
    addLine(1, 700, "/System/Applications/Mail.app/Contents/MacOS/Mail");
    addLine(2, 700, "/usr/libexec/Tool.app/Contents/MacOS/Tool");
    addLine(3, 700, "/Library/CoreServices/Menu.app/Contents/MacOS/Menu");
    addLine(4, 700, "/Applications/Vellmoor.app/Contents/MacOS/Vellmoor"); // the stand-in's own path
    addLine(5, 700, "/x");
    addRunning(5, "Finder", "/System/Library/CoreServices/Finder.app");
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(MacApps, AGroupWithoutMemoryIsDropped) {
    addLine(1, 0, "/Applications/Zero.app/Contents/MacOS/Zero");
    addLine(2, -5, "/Applications/Less.app/Contents/MacOS/Less");
    addLine(3, 1, "/Applications/Some.app/Contents/MacOS/Some");
    EXPECT_THAT(apps(), ElementsAre(Field(&MemoryApp::name, "Some")));
}

TEST_F(MacApps, TheRunningNameGoesBeforeTheBundlesNames) {
    addLine(1, 5, "/Applications/Word.app/Contents/MacOS/x");
    addBundle("/Applications/Word.app", "<key>CFBundleDisplayName</key><string>Display</string>"
                                        "<key>CFBundleName</key><string>Name</string>");
    addRunning(1, "Localised", "/Applications/Word.app");
    EXPECT_EQ(apps().at(0).name, "Localised");
}

TEST_F(MacApps, TheDisplayNameGoesBeforeTheBundleName) {
    addLine(1, 5, "/Applications/Word.app/Contents/MacOS/x");
    addBundle("/Applications/Word.app", "<key>CFBundleDisplayName</key><string>Display</string>"
                                        "<key>CFBundleName</key><string>Name</string>");
    EXPECT_EQ(apps().at(0).name, "Display");
}

TEST_F(MacApps, TheBundleNameGoesBeforeTheFoldersName) {
    addLine(1, 5, "/Applications/Word.app/Contents/MacOS/x");
    addBundle("/Applications/Word.app", "<key>CFBundleName</key><string>Name</string>"
                                        "<key>CFBundleIdentifier</key><string>com.example.word</string>");
    const MemoryApp app = apps().at(0);
    EXPECT_EQ(app.name, "Name");
    EXPECT_EQ(app.bundleIdentifier, "com.example.word");
}

TEST_F(MacApps, AFailedListingHasNoApplications) {
    addRunning(1, "Safari", "/Applications/Safari.app");
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(MacApps, ASumThatOverflowsIsFatal) {
    addLine(1, INT64_MAX / 1024, "/Applications/A.app/x");
    addLine(2, INT64_MAX / 1024, "/Applications/A.app/y");
    EXPECT_DEATH((void)apps(), "overflow");
}

} // namespace
} // namespace vellmoor
