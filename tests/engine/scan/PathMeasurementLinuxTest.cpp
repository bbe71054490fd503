// What is measured by rules of Linux.
#include "EngineHome.h"
#include "scan/DeepScanFilter.h"
#include "scan/PathMeasurement.h"

#include <gtest/gtest.h>

#include <string>

namespace vellmoor {
namespace {

using test::EngineHome;
using test::System;

class LinuxMeasurement : public ::testing::Test {
protected:
    EngineHome home{System::Linux};
    EngineContext context = home.context();

    /// Whether a walk of everything leaves `path` out: for itself, or for a folder above it.
    bool skips(const Path& path) {
        const DeepScanFilter filter(home.platform, home.layout, "/");
        for (Path place = path; place.has_relative_path(); place = place.parent_path()) {
            if (filter.excludesName(place.filename().native(), 2) || filter.excludesFolder(place)) {
                return true;
            }
        }
        return false;
    }
};

TEST_F(LinuxMeasurement, EveryFormOfATrashIsSkipped) {
    EXPECT_TRUE(skips(home.home / ".local/share/Trash/files/a"));
    EXPECT_TRUE(skips("/media/disk/.Trash-1000/files/a"));
    EXPECT_TRUE(skips("/media/disk/.Trash-1000"));
    EXPECT_FALSE(skips("/media/disk/.Trash-x/files/a"));
    EXPECT_FALSE(skips("/media/disk/.Trash-/files/a"));
    EXPECT_TRUE(skips("/somewhere/.local/share/Trash/a"));
}

TEST_F(LinuxMeasurement, ATrashBelowAnotherDataFolderIsSkipped) {
    home.environment.data = home.home / "data";
    home.useEnvironment();
    EXPECT_TRUE(skips(home.home / "data/Trash/files/a"));
    EXPECT_FALSE(skips(home.home / "data/Trashed/files/a"));
}

TEST_F(LinuxMeasurement, ATrashedFolderIsMeasuredThoughItLiesInATrash) {
    home.file(".local/share/Trash/files/Old/a", 4096);
    home.file(".local/share/Trash/files/Old/sub/b", 4096);
    EXPECT_EQ(stats(context, home.place(".local/share/Trash/files/Old")).files, 2);
}

TEST_F(LinuxMeasurement, OtherRulesStillHoldInsideATrash) {
    home.file(".local/share/Trash/files/Old/a", 4096);
    home.file(".local/share/Trash/files/Old/node_modules/b", 4096);
    EXPECT_EQ(stats(context, home.place(".local/share/Trash/files/Old")).files, 1);
}

TEST_F(LinuxMeasurement, TheDesktopsOwnMountsAreSkipped) {
    EXPECT_TRUE(skips(home.home / ".gvfs/server/a"));
}

TEST_F(LinuxMeasurement, CloudFoldersDirectlyInTheHomeAreSkipped) {
    for (const char* name :
         {"Dropbox",     "Dropbox (Work)", "OneDrive",     "OneDrive - Firm", "Nextcloud",     "Nextcloud2",
          "ownCloud",    "pCloudDrive",    "pCloud Drive", "Google Drive",    "GoogleDrive",   "MEGA",
          "MEGAsync",    "Insync",         "Seafile",      "SeaDrive",        "SynologyDrive", "Proton Drive",
          "ProtonDrive", "Yandex.Disk",    "Nutstore",     "Nutstore Files",  "我的坚果云"}) {
        EXPECT_TRUE(skips(home.home / name)) << name;
        EXPECT_TRUE(skips(home.home / name / "a/b")) << name;
        EXPECT_FALSE(skips(home.home / "sub" / name)) << name;
    }
    EXPECT_FALSE(skips(home.home / "Dropbox2"));
    EXPECT_FALSE(skips(home.home / "OneDrives"));
    EXPECT_FALSE(skips(home.home / "MEGA2/a"));
}

TEST_F(LinuxMeasurement, PlaceholderFilesAreSkipped) {
    home.file("tree/a.nextcloud", 4096);
    home.file("tree/b.owncloud", 4096);
    home.file("tree/c", 4096);
    EXPECT_EQ(stats(context, home.place("tree")).files, 1);
}

TEST_F(LinuxMeasurement, ASynchronisedFolderBelowTheRootIsLeftOutWhole) {
    for (const char* marker :
         {".dropbox", ".stfolder", ".seafile-data", ".SynologyWorkingDirectory", ".sync_abc.db", "._sync_12.db"}) {
        const Path tree = Path(std::string("tree") + marker);
        home.file(tree / "a", 4096);
        home.file(tree / "synced" / "b", 4096);
        home.file(tree / "synced/deep/c", 4096);
        home.file(tree / "synced" / marker, 0);
        EXPECT_EQ(stats(context, home.place(tree)).files, 1) << marker;
    }
}

TEST_F(LinuxMeasurement, AMarkerInTheRootItselfIsIgnored) {
    home.file("tree/.stfolder", 0);
    home.file("tree/a", 4096);
    EXPECT_EQ(stats(context, home.place("tree")).files, 1);
}

TEST_F(LinuxMeasurement, AHomeBehindALinkStillKnowsItsTrash) {
    const Path alias = home.link(home.home, home.root / "alias");
    home.file(".local/share/Trash/files/Old/a", 4096);
    home.file("Documents/b", 4096);
    EngineContext again = home.context();
    EXPECT_EQ(stats(again, alias / ".local/share/Trash/files/Old").files, 1);
}

TEST_F(LinuxMeasurement, LinuxPackagesAndImagesHaveTheirPictures) {
    for (const char* name :
         {"a.deb", "a.rpm", "a.AppImage", "a.flatpak", "a.flatpakref", "a.snap", "a.run", "a.bundle"}) {
        EXPECT_EQ(symbolFor(context, home.file(name, 0)), "shippingbox") << name;
    }
    EXPECT_EQ(symbolFor(context, home.file("a.img", 0)), "opticaldiscdrive");
}

} // namespace
} // namespace vellmoor
