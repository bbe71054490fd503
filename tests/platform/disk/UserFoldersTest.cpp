// Where the user's folders are: the desktop's file, and the variables.
#include "disk/FolderVariables.h"
#include "disk/UserDirectories.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace vellmoor {
namespace {

UserFolders read(std::string_view text) {
    return userDirectories(text, "/home/u");
}

TEST(UserDirectories, AreBelowTheHomeOrAbsolute) {
    const UserFolders folders =
        read("# comment\nXDG_DOWNLOAD_DIR=\"$HOME/下载\"\n  XDG_VIDEOS_DIR = \"/disk/Videos/\" \n"
             "XDG_MUSIC_DIR=\"$HOME/Music\"\nXDG_PUBLICSHARE_DIR=\"$HOME/Public\"\n"
             "XDG_TEMPLATES_DIR=\"$HOME/Templates\"\nXDG_DESKTOP_DIR=\"$HOME/Desktop\"\n"
             "XDG_DOCUMENTS_DIR=\"$HOME/Docs\"\nXDG_PICTURES_DIR=\"$HOME/Pics\"");
    EXPECT_EQ(folders.downloads, "/home/u/下载");
    EXPECT_EQ(folders.videos, "/disk/Videos");
    EXPECT_EQ(folders.music, "/home/u/Music");
    EXPECT_EQ(folders.publicShare, "/home/u/Public");
    EXPECT_EQ(folders.templates, "/home/u/Templates");
    EXPECT_EQ(folders.desktop, "/home/u/Desktop");
    EXPECT_EQ(folders.documents, "/home/u/Docs");
    EXPECT_EQ(folders.pictures, "/home/u/Pics");
}

TEST(UserDirectories, OneThatIsSwitchedOffIsTheHome) {
    EXPECT_EQ(read("XDG_DOWNLOAD_DIR=\"$HOME/\"\n").downloads, "/home/u");
    EXPECT_EQ(read("XDG_DOWNLOAD_DIR=\"$HOME\"\n").downloads, "/home/u");
    EXPECT_EQ(read("XDG_DOWNLOAD_DIR=\"/\"\n").downloads, "/");
}

TEST(UserDirectories, AnythingElseNamesNone) {
    for (const char* text :
         {"", "XDG_DOWNLOAD_DIR", "XDG_DOWNLOAD_DIR=", "XDG_DOWNLOAD_DIR=Downloads", "XDG_DOWNLOAD_DIR=\"Downloads\"",
          "XDG_DOWNLOAD_DIR=\"$HOMEX/a\"", "# XDG_DOWNLOAD_DIR=\"$HOME/a\"", "XDG_DOWNLOADS_DIR=\"$HOME/a\""}) {
        EXPECT_EQ(read(text).downloads, "") << text;
    }
}

TEST(UserDirectories, ABackslashProtectsTheCharacterBehindIt) {
    EXPECT_EQ(read("XDG_DOWNLOAD_DIR=\"$HOME/a\\\"b\\\\c\"").downloads, "/home/u/a\"b\\c");
}

TEST(FolderVariables, EmptyAndRelativeValuesLeaveTheEnvironmentAndAreKept) {
    ::setenv("XDG_DATA_HOME", "data", 1);
    ::setenv("XDG_STATE_HOME", "", 1);
    ::setenv("XDG_CACHE_HOME", "/tmp/caches", 1);
    unsetUnusableFolders();
    EXPECT_EQ(std::getenv("XDG_DATA_HOME"), nullptr);
    EXPECT_EQ(std::getenv("XDG_STATE_HOME"), nullptr);
    EXPECT_STREQ(std::getenv("XDG_CACHE_HOME"), "/tmp/caches");
    EXPECT_EQ(originalFolders().at("XDG_DATA_HOME"), "data");
    EXPECT_EQ(originalFolders().at("XDG_STATE_HOME"), "");
    EXPECT_FALSE(originalFolders().contains("XDG_CACHE_HOME"));
    ::unsetenv("XDG_CACHE_HOME");
}

} // namespace
} // namespace vellmoor
