// What the platform says of its user and its machine; main.cpp sets a throw-away home.
#include "LinuxPlatform.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;

class LinuxHome : public ::testing::Test {
protected:
    const Path home_ = std::getenv("HOME");
    LinuxPlatform platform_;
    void write(const Path& relative, const std::string& text) const {
        fs::create_directories((home_ / relative).parent_path());
        std::ofstream(home_ / relative) << text;
    }
};

TEST_F(LinuxHome, UserFoldersAreReadAfresh) {
    write(".config/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"$HOME/下载\"\nXDG_VIDEOS_DIR=\"$HOME/\"\n");
    EXPECT_EQ(platform_.userFolders().downloads, home_ / "下载");
    EXPECT_EQ(platform_.userFolders().pictures, "");
    write(".config/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"$HOME/Loads\"\n");
    EXPECT_EQ(platform_.userFolders().downloads, home_ / "Loads");
}

TEST_F(LinuxHome, TheProcessEnvironmentFollowsTheHome) {
    EXPECT_EQ(processEnvironment().home, home_);
    EXPECT_EQ(processEnvironment().cache, home_ / ".cache");
}

TEST_F(LinuxHome, AnInheritedAppImageIsNotTakenForOurOwn) {
    ::setenv("APPIMAGE", "/home/tester/Other.AppImage", 1);
    ::setenv("APPDIR", "/tmp/.mount_Other", 1);
    EXPECT_EQ(processEnvironment().ownAppImage, "");
    ::setenv("APPDIR", fs::canonical("/proc/self/exe").parent_path().c_str(), 1);
    EXPECT_EQ(processEnvironment().ownAppImage, "/home/tester/Other.AppImage");
    ::unsetenv("APPIMAGE");
    ::unsetenv("APPDIR");
}

TEST(LinuxHost, KnowsItselfAndItsMachine) {
    const LinuxPlatform platform;
    EXPECT_EQ(platform.ownPath(), fs::canonical("/proc/self/exe"));
    EXPECT_EQ(platform.userId(), ::getuid());
    EXPECT_GT(platform.physicalMemory(), 64 << 20);
    EXPECT_FALSE(platform.isPackage(platform.ownPath().parent_path()));
    EXPECT_TRUE(platform.runningApplications().empty());
}

TEST(LinuxHost, ThePreferredLanguageIsTheFirstOfTheEnvironment) {
    const LinuxPlatform platform;
    ::setenv("LANG", "zh_CN.UTF-8", 1);
    EXPECT_EQ(platform.preferredLanguage(), "zh_CN.UTF-8");
    ::setenv("LANGUAGE", "en_GB:zh", 1);
    EXPECT_EQ(platform.preferredLanguage(), "en_GB");
    ::unsetenv("LANGUAGE");
    ::setenv("LANG", "C.UTF-8", 1);
    EXPECT_FALSE(platform.preferredLanguage());
    ::setenv("LANG", "C", 1);
    EXPECT_FALSE(platform.preferredLanguage());
}

} // namespace
} // namespace vellmoor
