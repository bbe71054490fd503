// The real Trash of GIO, in the throw-away home that main.cpp sets.
#include "LinuxPlatform.h"
#include "ScopedMount.h"
#include "ScopedUnprivileged.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;
using test::ScopedMount;
using test::ScopedUnprivileged;
using ::testing::HasSubstr;

// GIO itself (seen in 2.74) does not free two texts when it cannot write a note. Weak: absent without the sanitizer.
extern "C" {
__attribute__((weak)) void __lsan_disable(); // NOLINT(bugprone-reserved-identifier)
__attribute__((weak)) void __lsan_enable();  // NOLINT(bugprone-reserved-identifier)
}

class ExcusedLeaks {
public:
    ExcusedLeaks() { call(__lsan_disable); }
    ~ExcusedLeaks() { call(__lsan_enable); }
    ExcusedLeaks(const ExcusedLeaks&) = delete;
    ExcusedLeaks& operator=(const ExcusedLeaks&) = delete;

private:
    static void call(void (*function)()) {
        if (function != nullptr) {
            function();
        }
    }
};

class LinuxTrash : public ::testing::Test {
protected:
    Path write(const Path& relative, const std::string& text = "text") const {
        const Path path = home_ / relative;
        fs::create_directories(path.parent_path());
        std::ofstream(path) << text;
        return path;
    }
    [[nodiscard]] static std::string contentOf(const Path& path) {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    const Path home_ = std::getenv("HOME");
    const Path trash_ = home_ / ".local/share/Trash";
    LinuxPlatform platform_;
};

TEST_F(LinuxTrash, TakesAFileWithANoteOfItsPlace) {
    const Path file = write("folder/one file.txt", "mine");
    EXPECT_TRUE(platform_.moveToTrash(file));
    EXPECT_FALSE(platform_.exists(file));
    EXPECT_EQ(contentOf(trash_ / "files/one file.txt"), "mine");
    EXPECT_THAT(contentOf(trash_ / "info/one file.txt.trashinfo"), HasSubstr("folder/one%20file.txt"));
}

TEST_F(LinuxTrash, KeepsBothOfTwoItemsOfOneName) {
    EXPECT_TRUE(platform_.moveToTrash(write("a/twice", "first")));
    EXPECT_TRUE(platform_.moveToTrash(write("b/twice", "second")));
    EXPECT_EQ(contentOf(trash_ / "files/twice"), "first");
    EXPECT_EQ(contentOf(trash_ / "files/twice.2"), "second");
}

TEST_F(LinuxTrash, TakesALinkItselfAndAWholeFolder) {
    const Path inner = write("tree/inner/file");
    fs::create_symlink(home_ / "tree", home_ / "link to tree");
    fs::create_symlink("/nowhere", home_ / "dangling");
    EXPECT_TRUE(platform_.moveToTrash(home_ / "link to tree"));
    EXPECT_TRUE(platform_.moveToTrash(home_ / "dangling"));
    EXPECT_TRUE(platform_.exists(inner));
    EXPECT_TRUE(platform_.moveToTrash(home_ / "tree"));
    EXPECT_TRUE(platform_.exists(trash_ / "files/tree/inner/file"));
    EXPECT_TRUE(platform_.facts(trash_ / "files/dangling")->isSymlink);
}

TEST_F(LinuxTrash, TakesANameThatIsNotUtf8) {
    EXPECT_TRUE(platform_.moveToTrash(write("caf\xe9")));
    EXPECT_TRUE(platform_.exists(trash_ / "files/caf\xe9"));
}

TEST_F(LinuxTrash, TellsWhyAMissingFileCannotBeMoved) {
    EXPECT_THAT(platform_.moveToTrash(home_ / "missing").error(), HasSubstr("No such file or directory"));
}

TEST_F(LinuxTrash, LeavesAFileWhoseFolderForbidsIt) {
    const Path file = write("locked/file", "mine");
    ::chmod(file.parent_path().c_str(), 0555);
    {
        const ScopedUnprivileged unprivileged;
        const ExcusedLeaks excused;
        EXPECT_THAT(platform_.moveToTrash(file).error(), HasSubstr("Permission denied"));
    }
    EXPECT_EQ(contentOf(file), "mine");
    EXPECT_FALSE(platform_.exists(trash_ / "info/file.trashinfo"));
}

TEST_F(LinuxTrash, NeverDeletesOnAFileSystemWithoutTrash) {
    fs::create_directories(home_ / "memory");
    const ScopedMount mount = ScopedMount::memory(home_ / "memory");
    VELLMOOR_NEEDS_MOUNT(mount);
    const Path file = write("memory/file", "mine");
    EXPECT_THAT(platform_.moveToTrash(file).error(), HasSubstr("Trashing on system internal mounts is not supported"));
    EXPECT_EQ(contentOf(file), "mine");
}

TEST_F(LinuxTrash, AFileItTookIsRemovedForGoodWithItsNote) {
    EXPECT_TRUE(platform_.moveToTrash(write("temporary")));
    EXPECT_TRUE(platform_.removeFromTrash(trash_ / "files/temporary", {trash_, trash_ / "files"}));
    EXPECT_FALSE(platform_.exists(trash_ / "files/temporary"));
    EXPECT_FALSE(platform_.exists(trash_ / "info/temporary.trashinfo"));
}

TEST_F(LinuxTrash, UserFoldersAreReadAfresh) {
    write(".config/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"$HOME/下载\"\nXDG_VIDEOS_DIR=\"$HOME/\"\n");
    EXPECT_EQ(platform_.userFolders().downloads, home_ / "下载");
    EXPECT_EQ(platform_.userFolders().pictures, "");
    write(".config/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"$HOME/Loads\"\n");
    EXPECT_EQ(platform_.userFolders().downloads, home_ / "Loads");
}

TEST_F(LinuxTrash, TheProcessEnvironmentFollowsTheHome) {
    EXPECT_EQ(processEnvironment().home, home_);
    EXPECT_EQ(processEnvironment().cache, home_ / ".cache");
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
