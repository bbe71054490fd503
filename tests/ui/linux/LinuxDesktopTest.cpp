// The desktop around the window on Linux, as far as it needs no desktop.
#include "TemporaryFolder.h"
#include "desktop/DesktopServices.h"
#include "desktop/DesktopTools.h"
#include "desktop/VolumeLabel.h"
#include "start/SingleInstance.h"
#include "texts/L.h"
#include "tray/StatusBarController.h"

#include <QApplication>
#include <QMenu>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QSignalSpy>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace vellmoor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr auto mounts = R"(22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw
30 22 0:25 / /proc rw - proc proc rw
40 22 8:17 / /home rw,relatime shared:2 - ext4 /dev/sdb1 rw
41 40 8:33 / /home/anna/My\040Disk rw - ext4 /dev/sdc1 rw
42 22 0:50 / /tmp rw - tmpfs tmpfs rw
)";

TEST(VolumeLabel, TheLongestMountAboveAPathHoldsIt) {
    EXPECT_EQ(deviceOf("/home/anna", mounts), "/dev/sdb1");
    EXPECT_EQ(deviceOf("/homework", mounts), "/dev/sda1");
}

TEST(VolumeLabel, ASpaceInAMountsFolderIsUnderstood) {
    EXPECT_EQ(deviceOf("/home/anna/My Disk/x", mounts), "/dev/sdc1");
}

TEST(VolumeLabel, AFileSystemWithoutADeviceHasNone) {
    EXPECT_EQ(deviceOf("/tmp/x", mounts), std::nullopt);
}

TEST(VolumeLabel, ALaterMountOnTheSameFolderHidesTheEarlierOne) {
    EXPECT_EQ(deviceOf("/x", "22 1 8:1 / / rw - ext4 /dev/old rw\n23 22 8:2 / / rw - ext4 /dev/new rw\n"), "/dev/new");
}

TEST(VolumeLabel, LinesThatAreNoMountsArePassedOver) {
    EXPECT_EQ(deviceOf("/x", "nonsense\n\n - \n"), std::nullopt);
}

TEST(VolumeLabel, TheLinkThatLeadsToTheDeviceIsTheLabelWithItsEscapesUndone) {
    const test::TemporaryFolder folder;
    const std::filesystem::path device = folder.file("sdb1");
    folder.link("../elsewhere", "by-label/OTHER");
    folder.link("../sdb1", R"(by-label/My\x20Home)");
    EXPECT_EQ(labelOf(device, folder / "by-label"), "My Home");
    EXPECT_EQ(labelOf(folder / "sdc1", folder / "by-label"), std::nullopt);
    EXPECT_EQ(labelOf(device, folder / "missing"), std::nullopt);
}

TEST(VolumeLabel, ItIsReadOfTheSystemBelowTheRoot) {
    const test::TemporaryFolder root;
    const std::filesystem::path device = root.file("dev/sda1");
    root.link("../../sda1", "dev/disk/by-label/Spare");
    root.text("proc/self/mountinfo", "22 1 8:1 / / rw - ext4 " + device.string() + " rw\n");
    EXPECT_EQ(volumeLabelOf(root.path(), root.path()), "Spare");
    EXPECT_EQ(volumeLabelOf(root.path(), root / "another"), std::nullopt);
}

TEST(DesktopTools, TheRunningDesktopsMonitorComesFirstAndOnce) {
    const auto monitors = systemMonitors({"XFCE"});
    EXPECT_EQ(monitors.front(), "xfce4-taskmanager");
    EXPECT_EQ(std::ranges::count(monitors, "xfce4-taskmanager"), 1);
    EXPECT_EQ(monitors.size(), 9U);
}

TEST(DesktopTools, AnUnknownDesktopTriesAllMonitors) {
    EXPECT_EQ(systemMonitors({"Sway"}).front(), "org.gnome.SystemMonitor");
}

TEST(DesktopTools, EachDesktopHasItsLoginItemsSettings) {
    EXPECT_EQ(loginItemsSettings({"KDE"}).front(), (DesktopCommand{"systemsettings", {"kcm_autostart"}}));
    EXPECT_EQ(loginItemsSettings({"ubuntu", "GNOME"}).size(), 2U);
    EXPECT_EQ(loginItemsSettings({"X-Cinnamon"}).front(), (DesktopCommand{"cinnamon-settings", {"startup"}}));
    EXPECT_THAT(loginItemsSettings({"Sway"}), IsEmpty());
}

TEST(DesktopTools, OnlyAConfinedProgramHasPermissionSettings) {
    EXPECT_THAT(confinementSettings(Confinement::None), IsEmpty());
    EXPECT_EQ(confinementSettings(Confinement::Flatpak).front().program, "com.github.tchx84.Flatseal");
    EXPECT_EQ(confinementSettings(Confinement::Snap).front().program, "gnome-control-center");
}

TEST(DesktopServices, APathThatIsNoUtf8HasAnAddress) {
    EXPECT_EQ(fileUri("/tmp/caf\xe9 1"), "file:///tmp/caf%E9%201");
}

TEST(DesktopServices, AnApplicationThatIsNotInstalledIsNotStarted) {
    EXPECT_FALSE(launchDesktopEntry("org.example.NotInstalled", {}));
}

TEST(SingleInstance, TheAccountsHomeHasTheApplicationsOwnName) {
    EXPECT_EQ(instanceName("/home/anna", "/home/anna"), "org.vellmoor.Vellmoor");
}

TEST(SingleInstance, AnotherHomeHasANameOfItsOwnThatDoesNotChange) {
    const QString demo = instanceName("/tmp/demo 1", "/home/anna");
    EXPECT_TRUE(demo.startsWith("org.vellmoor.Vellmoor.home"));
    EXPECT_EQ(demo, instanceName("/tmp/demo 1", "/home/anna"));
    EXPECT_NE(demo, instanceName("/tmp/demo 2", "/home/anna"));
    EXPECT_TRUE(QRegularExpression("^[A-Za-z0-9.]+$").match(demo).hasMatch()) << "what a bus name may hold";
}

class StatusBar : public ::testing::Test {
protected:
    /// The menu's titles as it opens, separators empty.
    static QStringList menuTitles() {
        QStringList titles;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* menu = qobject_cast<QMenu*>(widget)) {
                Q_EMIT menu->aboutToShow();
                for (const QAction* action : menu->actions()) {
                    titles << action->text();
                }
            }
        }
        return titles;
    }

    QQuickWindow window_;
    StatusBarController controller_{window_};
};

TEST_F(StatusBar, TheMenuFollowsTheLanguage) {
    L::setLanguage(AppLanguage::english);
    EXPECT_THAT(menuTitles(), ElementsAre("Open Vellmoor", "", "Quit"));
    L::setLanguage(AppLanguage::chinese);
    EXPECT_THAT(menuTitles(), ElementsAre("打开 Vellmoor", "", "退出"));
}

TEST_F(StatusBar, WithoutATrayClosingTheWindowEndsTheProgram) {
    controller_.install();
    ASSERT_FALSE(controller_.isInstalled()); // the offscreen platform has no tray
    const QSignalSpy quits(&controller_, &StatusBarController::quitAsked);
    controller_.showMainWindow();
    window_.close();
    EXPECT_EQ(quits.size(), 1);
}

TEST_F(StatusBar, AMinimisedWindowIsRestored) {
    controller_.showMainWindow();
    window_.showMinimized();
    controller_.showMainWindow();
    EXPECT_EQ(window_.visibility(), QWindow::Windowed);
}

TEST_F(StatusBar, AClosedWindowIsShownAgain) {
    controller_.showMainWindow();
    window_.hide();
    controller_.showMainWindow();
    EXPECT_TRUE(window_.isVisible());
}

} // namespace
} // namespace vellmoor
