#include "processes/ControlGroups.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor {
namespace {

using ::testing::Optional;

constexpr std::string_view manager = "/user.slice/user-1000.slice/user@1000.service/";
constexpr std::string_view uuid = "8b7c2d8e-0a4f-4d53-9f2a-6c1b8f0e7d21";

std::string inManager(std::string_view rest) {
    return std::string(manager) + std::string(rest);
}
std::string withUuid(std::string_view before, std::string_view after) {
    return std::string(before) + std::string(uuid) + std::string(after);
}

TEST(ControlGroups, TheUnifiedGroupIsTheLineOfHierarchyZero) {
    EXPECT_EQ(unifiedGroup("9:name=systemd:/a\n4:memory:/b\n0::/user.slice/x\n"), "/user.slice/x");
    EXPECT_EQ(unifiedGroup("4:memory:/b\n"), "");
    EXPECT_EQ(unifiedGroup(""), "");
}

TEST(ControlGroups, EscapedBytesOfUnitNamesAreUndone) {
    EXPECT_EQ(unescapedUnit(R"(google\x2dchrome)"), "google-chrome");
    EXPECT_EQ(unescapedUnit(R"(a\x2Db\x20c\xe4)"), "a-b c\xe4");
}

TEST(ControlGroups, WhatIsNoEscapeStays) {
    EXPECT_EQ(unescapedUnit(R"(a\x2)"), R"(a\x2)");
    EXPECT_EQ(unescapedUnit(R"(a\xzz)"), R"(a\xzz)");
    EXPECT_EQ(unescapedUnit(R"(a\)"), R"(a\)");
}

TEST(ControlGroups, AScopeNamesItsApplicationBeforeTheLastDash) {
    EXPECT_THAT(unitApplication("app-gnome-org.gnome.Epiphany-4242.scope"),
                Optional(std::string("org.gnome.Epiphany")));
    EXPECT_THAT(unitApplication("app-flatpak-org.mozilla.firefox-31.scope"),
                Optional(std::string("org.mozilla.firefox")));
    EXPECT_THAT(unitApplication(R"(app-gnome-google\x2dchrome-77.scope)"), Optional(std::string("google-chrome")));
    EXPECT_THAT(unitApplication("app-firefox-1234.scope"), Optional(std::string("firefox")));
}

TEST(ControlGroups, AServiceNamesItsApplicationBeforeTheAtSign) {
    EXPECT_THAT(unitApplication(withUuid("app-org.kde.konsole@", ".service")),
                Optional(std::string("org.kde.konsole")));
    EXPECT_THAT(unitApplication(withUuid(R"(app-google\x2dchrome@)", ".service")),
                Optional(std::string("google-chrome")));
    EXPECT_THAT(unitApplication("app-org.example.App.service"), Optional(std::string("org.example.App")));
    EXPECT_THAT(unitApplication(R"(app-nm\x2dapplet@autostart.service)"), Optional(std::string("nm-applet")));
    EXPECT_THAT(unitApplication("app-KDE-org.kde.kate@1.service"), Optional(std::string("org.kde.kate")));
}

TEST(ControlGroups, ASliceNamesItsApplication) {
    EXPECT_THAT(unitApplication("app-org.gnome.Terminal.slice"), Optional(std::string("org.gnome.Terminal")));
}

TEST(ControlGroups, ABusServiceNamesItsBusName) {
    EXPECT_THAT(unitApplication("dbus-:1.2-org.gnome.Nautilus@0.service"), Optional(std::string("org.gnome.Nautilus")));
    EXPECT_EQ(unitApplication("dbus-:1.2@0.service"), std::nullopt);
    EXPECT_EQ(unitApplication("dbus-broker.service"), std::nullopt);
}

TEST(ControlGroups, ASnapScopeNamesSnapAndProgram) {
    EXPECT_THAT(unitApplication(withUuid("snap.firefox.firefox-", ".scope")), Optional(std::string("firefox_firefox")));
    EXPECT_THAT(unitApplication(withUuid("snap.firefox.firefox.", ".scope")), Optional(std::string("firefox_firefox")));
    EXPECT_THAT(unitApplication(withUuid("snap.gnome-calculator.gnome-calculator-", ".scope")),
                Optional(std::string("gnome-calculator_gnome-calculator")));
}

TEST(ControlGroups, ASnapUnitWithoutProgramOrUuidNamesNothing) {
    EXPECT_EQ(unitApplication("snap.firefox.firefox.scope"), std::nullopt);
    EXPECT_EQ(unitApplication(withUuid("snap.firefox-", ".scope")), std::nullopt);
    EXPECT_EQ(unitApplication(withUuid("snap..x-", ".scope")), std::nullopt);
    EXPECT_EQ(unitApplication("snap.x.scope"), std::nullopt);
    EXPECT_EQ(unitApplication("snap.firefox.firefox-8b7c2d8e+0a4f+4d53+9f2a+6c1b8f0e7d21.scope"), std::nullopt);
}

TEST(ControlGroups, OtherUnitsNameNothing) {
    for (const char* unit : {"app.slice", "session.slice", "pipewire.service", "init.scope", "app-.scope",
                             "app-x.scope", "app-x.socket", "app-", "app-.service", "app--1.scope", ""}) {
        EXPECT_EQ(unitApplication(unit), std::nullopt) << unit;
    }
}

TEST(ControlGroups, TheInnermostUnitThatNamesAnApplicationCounts) {
    EXPECT_THAT(groupApplication(inManager("app.slice/app-org.gnome.Terminal.slice/app-gnome-gedit-5.scope"), 1000).id,
                Optional(std::string("gedit")));
    EXPECT_THAT(groupApplication(inManager("app.slice/app-gnome-gedit-5.scope/helper"), 1000).id,
                Optional(std::string("gedit")));
}

TEST(ControlGroups, OnlyUnitsBelowTheUsersManagerCount) {
    EXPECT_EQ(groupApplication("/user.slice/user-1000.slice/app-gnome-gedit-5.scope", 1000).id, std::nullopt);
    EXPECT_EQ(groupApplication(inManager("app.slice/app-gnome-gedit-5.scope"), 1001).id, std::nullopt);
    EXPECT_EQ(groupApplication("/app-a-b-1.scope/user@1000.service", 1000).id, std::nullopt);
    EXPECT_EQ(groupApplication("", 1000).id, std::nullopt);
}

TEST(ControlGroups, AShellInATerminalIsNotTheTerminal) {
    const std::string leaf = withUuid("app.slice/app-org.gnome.Terminal.slice/vte-spawn-", ".scope");
    const GroupApplication answer = groupApplication(inManager(leaf), 1000);
    EXPECT_EQ(answer.id, std::nullopt);
    EXPECT_TRUE(answer.isTerminalChild);
}

TEST(ControlGroups, EveryScopeThatATerminalMakesIsOne) {
    for (const char* scope : {"vte-spawn-1.scope", "ptyxis-spawn-1.scope", "tmux-spawn-1.scope"}) {
        EXPECT_TRUE(groupApplication(inManager("app.slice/" + std::string(scope)), 1000).isTerminalChild) << scope;
    }
    EXPECT_FALSE(groupApplication(inManager("app.slice/vte-spawn-1.service"), 1000).isTerminalChild);
}

TEST(ControlGroups, TellWhereTheIdentifierStands) {
    const GroupApplication own = groupApplication(inManager("app.slice/app-gnome-gedit-5.scope"), 1000);
    EXPECT_TRUE(own.isInnermost);
    EXPECT_TRUE(own.isInScope);
    EXPECT_FALSE(own.isBusName);
    const GroupApplication tab =
        groupApplication(inManager("app.slice/app-org.kde.konsole-5.scope/tab(7).scope"), 1000);
    EXPECT_FALSE(tab.isInnermost);
    EXPECT_TRUE(tab.isInScope);
    const GroupApplication service = groupApplication(inManager("app.slice/dbus-:1.2-org.gnome.Maps@0.service"), 1000);
    EXPECT_TRUE(service.isBusName);
    EXPECT_FALSE(service.isInScope);
}

TEST(ControlGroups, TheTerminalItselfIsFoundByItsSlice) {
    const GroupApplication answer =
        groupApplication(inManager("app.slice/app-org.gnome.Terminal.slice/gnome-terminal-server.service"), 1000);
    EXPECT_THAT(answer.id, Optional(std::string("org.gnome.Terminal")));
    EXPECT_FALSE(answer.isTerminalChild);
}

TEST(ControlGroups, AGroupIsBelowASliceByWholeComponents) {
    EXPECT_TRUE(groupIsBelow(inManager("session.slice/org.gnome.Shell@wayland.service"), {"session.slice"}));
    EXPECT_FALSE(groupIsBelow(inManager("app.slice/my-session.slice/x"), {"session.slice"}));
    EXPECT_FALSE(groupIsBelow("", {"session.slice"}));
}

TEST(ControlGroups, AFlatpakIsKnownByItsScope) {
    EXPECT_EQ(groupFlatpak(inManager("app.slice/app-flatpak-org.mozilla.firefox-31.scope")), "org.mozilla.firefox");
    EXPECT_EQ(groupFlatpak(inManager("app.slice/app-flatpak-io.gitlab.librewolf\\x2dcommunity-31.scope")),
              "io.gitlab.librewolf-community");
    EXPECT_EQ(groupFlatpak(inManager("app.slice/app-flatpak-io.gitlab.librewolf-community-31.scope")),
              "io.gitlab.librewolf-community");
    EXPECT_EQ(groupFlatpak(inManager("app.slice/app-gnome-org.gnome.Epiphany-4242.scope")), "");
    EXPECT_EQ(groupFlatpak(inManager("app.slice/app-flatpak-org.mozilla.firefox.scope")), "");
}

TEST(ControlGroups, ASnapIsKnownByAnyOfItsUnits) {
    EXPECT_EQ(groupSnap(inManager(withUuid("app.slice/snap.firefox.firefox-", ".scope"))), "firefox");
    EXPECT_EQ(groupSnap("/system.slice/snap.cups.cupsd.service"), "cups");
    EXPECT_EQ(groupSnap(inManager("app.slice/snapd.session-agent.service")), "");
    EXPECT_EQ(groupSnap("/snap."), "");
}

} // namespace
} // namespace vellmoor
