// What other programs make of a Trash that we filled, and we of one that they filled. Those that are installed.
#include "FileContent.h"
#include "LinuxPlatform.h"
#include "TemporaryFolder.h"
#include "TrashHelp.h"

#include <gmock/gmock.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace vellmoor {
namespace {

using test::contentOf;
using test::requestFor;
using ::testing::HasSubstr;
using ::testing::Not;

class TrashPeers : public ::testing::Test {
protected:
    /// What the shell prints; it sees the throw-away home as its own.
    [[nodiscard]] std::string run(const std::string& command) const {
        const std::string whole = "cd '" + home_.string() + "' && env -u GIO_USE_VFS HOME='" + home_.string() +
                                  "' XDG_DATA_HOME='" + trash_.anchor.string() + "' LC_ALL=C.UTF-8 sh -c '" + command +
                                  "' 2>/dev/null </dev/null";
        const std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen(whole.c_str(), "r"), &::pclose);
        std::string output;
        std::array<char, 4096> block{};
        while (const std::size_t count = std::fread(block.data(), 1, block.size(), pipe.get())) {
            output.append(block.data(), count);
        }
        return output;
    }
    /// With a session bus of its own, since GNOME's Trash is a service.
    [[nodiscard]] std::string runOnBus(const std::string& command) const {
        return run("timeout 60 dbus-run-session -- " + command);
    }
    static bool isInstalled(const std::string& tool) {
        return std::system(("command -v " + tool + " >/dev/null").c_str()) == 0;
    }
    void trash(const Path& path) const {
        const TrashPlaces places{.home = trash_, .known = {}, .volumeForms = {}, .anchors = {home_}};
        ASSERT_EQ(test::moveToTrash(platform_, requestFor(platform_, path), places).result, RemovalResult::Done);
    }
    [[nodiscard]] bool removes(const std::string& name) const {
        const RemovalRequest request = requestFor(platform_, trash_.contents / name);
        return test::removeFromTrash(platform_, request, trash_).result == RemovalResult::Done;
    }
    [[nodiscard]] bool isEmpty() const {
        return platform_.entries(trash_.contents)->empty() && platform_.entries(trash_.folder / "info")->empty();
    }

    test::TemporaryFolder folder_;
    const Path home_ = folder_.folder("home");
    const Path data_ = folder_.folder("home/.local/share");
    TrashFolder trash_{data_ / "Trash", data_ / "Trash/files", data_};
    LinuxPlatform platform_;
};

TEST_F(TrashPeers, GioListsRestoresAndEmptiesWhatWeTrashed) {
    if (!isInstalled("gio") || !isInstalled("dbus-run-session") || !platform_.exists("/usr/libexec/gvfsd-trash")) {
        GTEST_SKIP() << "GNOME's Trash service is not installed";
    }
    trash(folder_.text("home/a folder/a file, 水", "mine"));
    trash(folder_.text("home/tree/inner/file", "inner").parent_path().parent_path());
    const std::string listed = runOnBus("gio trash --list");
    EXPECT_THAT(listed, HasSubstr((home_ / "a folder/a file, ").string())); // gio escapes the rest
    EXPECT_THAT(listed, HasSubstr((home_ / "tree").string()));
    (void)runOnBus("gio trash --restore trash:///tree");
    EXPECT_EQ(contentOf(home_ / "tree/inner/file"), "inner");
    (void)runOnBus("gio trash --empty");
    EXPECT_TRUE(isEmpty());
}

TEST_F(TrashPeers, WhatGioTrashedIsRemovedHereWithItsNote) {
    if (!isInstalled("gio")) {
        GTEST_SKIP() << "gio is not installed";
    }
    folder_.text("home/a file", "mine");
    (void)run("gio trash \"a file\"");
    ASSERT_FALSE(platform_.exists(home_ / "a file"));
    EXPECT_TRUE(removes("a file"));
    EXPECT_TRUE(isEmpty());
}

TEST_F(TrashPeers, TrashCliListsRestoresAndRemovesWhatWeTrashed) {
    if (!isInstalled("trash-list")) {
        GTEST_SKIP() << "trash-cli is not installed";
    }
    for (const char* name : {"one file, 水", "two", "three"}) {
        trash(folder_.text(Path("home") / name, name));
    }
    EXPECT_THAT(run("trash-list"), HasSubstr((home_ / "one file, 水").string()));
    (void)run("echo 0 | trash-restore \"" + (home_ / "one file, 水").string() + "\"");
    EXPECT_EQ(contentOf(home_ / "one file, 水"), "one file, 水");
    (void)run("trash-rm two");
    EXPECT_FALSE(platform_.exists(trash_.contents / "two"));
    EXPECT_THAT(run("trash-list"), Not(HasSubstr("two")));
    EXPECT_TRUE(platform_.exists(trash_.contents / "three"));
    (void)run("trash-empty");
    EXPECT_TRUE(isEmpty());
}

TEST_F(TrashPeers, WhatTrashCliTrashedIsRemovedHereWithItsNote) {
    if (!isInstalled("trash-put")) {
        GTEST_SKIP() << "trash-cli is not installed";
    }
    folder_.text("home/tree/inner", "mine");
    (void)run("trash-put tree");
    ASSERT_FALSE(platform_.exists(home_ / "tree"));
    EXPECT_TRUE(removes("tree"));
    EXPECT_TRUE(isEmpty());
}

TEST_F(TrashPeers, KdeListsWhatWeTrashed) {
    const char* tool = isInstalled("kioclient") ? "kioclient" : isInstalled("kioclient5") ? "kioclient5" : nullptr;
    if (tool == nullptr) {
        GTEST_SKIP() << "KDE's kioclient is not installed";
    }
    trash(folder_.text("home/one", "mine"));
    EXPECT_THAT(runOnBus(std::string(tool) + " ls trash:/"), HasSubstr("one"));
}

} // namespace
} // namespace vellmoor
