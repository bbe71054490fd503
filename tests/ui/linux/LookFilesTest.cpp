// What the files of GTK and KDE say of the desktop's look.
#include "look/LookFiles.h"

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

namespace vellmoor {
namespace {

class LookFiles : public ::testing::Test {
protected:
    test::TemporaryFolder config;
    [[nodiscard]] DesktopLook look() const { return lookOfFiles(config.path()); }
};

TEST_F(LookFiles, WithoutAnyTheDesktopIsLight) {
    EXPECT_EQ(look(), DesktopLook());
}

TEST_F(LookFiles, AGtkThemeIsDarkByItsNameOrByTheWish) {
    config.text("gtk-3.0/settings.ini", "[Settings]\ngtk-theme-name=Adwaita-dark\n");
    EXPECT_TRUE(look().dark);
    config.text("gtk-3.0/settings.ini", "[Settings]\ngtk-theme-name=Adwaita\n");
    EXPECT_FALSE(look().dark);
    config.text("gtk-3.0/settings.ini", "[Settings]\ngtk-application-prefer-dark-theme=true\n");
    EXPECT_TRUE(look().dark);
}

TEST_F(LookFiles, TheContrastThemesOfGtkAreSeen) {
    config.text("gtk-4.0/settings.ini", "[Settings]\ngtk-theme-name=HighContrastInverse\n");
    EXPECT_TRUE(look().highContrast);
    EXPECT_TRUE(look().dark);
}

TEST_F(LookFiles, AKdeSchemeIsDarkWhenItsWindowsAre) {
    config.text("kdeglobals", "[Colors:Window]\nBackgroundNormal=42,46,50\n");
    EXPECT_TRUE(look().dark);
    config.text("kdeglobals", "[Colors:Window]\nBackgroundNormal=239,240,241\n[General]\nColorScheme=MyDark\n");
    EXPECT_FALSE(look().dark) << "the colours count, not the name";
}

TEST_F(LookFiles, KdesOwnFileComesBeforeThoseThatItWritesForOthers) {
    config.text("kdeglobals", "[General]\nColorScheme=BreezeLight\n");
    config.text("gtk-3.0/settings.ini", "[Settings]\ngtk-theme-name=Breeze-dark\n");
    EXPECT_FALSE(look().dark);
}

} // namespace
} // namespace vellmoor
