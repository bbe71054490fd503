// Old installers among the downloads on Linux.
#include "junk/JunkFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor {
namespace {

using test::days;
using test::LinuxJunk;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

TEST_F(LinuxJunk, LinuxInstallersAreDownloadLeftovers) {
    for (const char* name : {"a.deb", "a.rpm", "a.AppImage", "a.flatpak", "a.flatpakref", "a.flatpakrepo", "a.snap",
                             "a.run", "a.bundle", "a.img", "a.msi", "a.exe", "a.zip", "a.tar.gz"}) {
        home.file(Path("Downloads") / name, 4096, days(8));
    }
    const auto found = targets("Download Leftovers");
    EXPECT_EQ(found.size(), 13U);
    EXPECT_THAT(found, Not(Contains("Downloads/a.tar.gz")));
}

TEST_F(LinuxJunk, TheDesktopsOwnDownloadFolderIsUsed) {
    home.file("下载/old.deb", 4096, days(8));
    home.file("Downloads/old.deb", 4096, days(8));
    home.platform.folders.downloads = home.place("下载");
    EXPECT_THAT(targets("Download Leftovers"), ElementsAre("下载/old.deb"));
}

TEST_F(LinuxJunk, ASwitchedOffDownloadFolderHasNoLeftovers) {
    home.file("old.deb", 4096, days(8));
    for (const Path& folder : {home.home, home.home / "", home.home.parent_path(), Path("/")}) {
        home.platform.folders.downloads = folder;
        EXPECT_THAT(targets("Download Leftovers"), IsEmpty()) << folder;
    }
}

} // namespace
} // namespace vellmoor
