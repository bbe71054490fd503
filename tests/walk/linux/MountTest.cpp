// Real mounts, made in a mount namespace of a child process and gone with it.
#include "Recorder.h"
#include "SystemCalls.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <optional>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vellmoor::walk::test {
namespace {

using vellmoor::test::TemporaryFolder;

struct ChildResult {
    bool wasAllowed = false;
    std::string text; ///< what the function answered, or why the system refused
};

bool write(const char* path, const std::string& text) {
    return static_cast<bool>(std::ofstream(path) << text << std::flush);
}

// 0, or the error number. In the new namespace nothing is passed on to the one outside.
int enterMountNamespace() {
    if (::unshare(CLONE_NEWNS) != 0) {
        const std::string user = std::to_string(::geteuid());
        const std::string group = std::to_string(::getegid());
        if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
            return errno;
        }
        // The same user as before; whoever is nobody there can make no file on what is mounted.
        if (!write("/proc/self/setgroups", "deny") || !write("/proc/self/uid_map", user + " " + user + " 1") ||
            !write("/proc/self/gid_map", group + " " + group + " 1")) {
            return EPERM;
        }
    }
    return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 ? 0 : errno;
}

// Runs the two functions in a child process that has its own mounts; the first makes them and answers an error number.
ChildResult inMountNamespace(const std::function<int()>& makeMounts, const std::function<std::string()>& function) {
    int ends[2];
    if (::pipe(ends) != 0) {
        return {false, std::strerror(errno)};
    }
    std::fflush(stdout); // or the child would print it again
    const pid_t child = ::fork();
    if (child == 0) {
        int error = enterMountNamespace();
        error = error == 0 ? makeMounts() : error;
        const std::string text = error == 0 ? "+" + function() : std::string("-") + std::strerror(error);
        const bool isWritten = ::write(ends[1], text.data(), text.size()) == static_cast<ssize_t>(text.size());
        ::_exit(isWritten ? 0 : 1);
    }
    ::close(ends[1]);
    std::string text;
    char buffer[4096];
    for (ssize_t count = 0; (count = ::read(ends[0], buffer, sizeof buffer)) > 0;) {
        text.append(buffer, static_cast<std::size_t>(count));
    }
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (text.empty()) {
        return {true, "the child process ended with status " + std::to_string(status)};
    }
    return {text[0] == '+', text.substr(1)};
}

int mountAt(const char* source, const std::filesystem::path& place, const char* type, unsigned long flags) {
    return ::mount(source, place.c_str(), type, flags, nullptr) == 0 ? 0 : errno;
}

std::string joined(const std::set<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text += name + ";";
    }
    return text;
}

// What a walk of `root` visits, and after "|" the names among `watched` whose facts it asked for.
std::string visitsAndTouches(const std::filesystem::path& root, const std::set<std::string>& watched) {
    Recorder recorder(root);
    const SystemCalls calls;
    const Outcome outcome = record(recorder, root, 1);
    std::set<std::string> touched;
    for (const std::string& name : SystemCalls::names()) {
        if (watched.contains(name)) {
            touched.insert(name);
        }
    }
    return (outcome == Outcome::Complete ? "" : "not complete: ") + joined(recorder.all()) + "|" + joined(touched);
}

#define REQUIRE_MOUNTS(result)                                                                                         \
    if (!(result).wasAllowed) {                                                                                        \
        GTEST_SKIP() << "mounts in a namespace are not permitted here: " << (result).text;                             \
    }

TEST(WalkMounts, AnotherFileSystemBelowTheRootIsNotCountedAndNotTouched) {
    const TemporaryFolder home;
    home.file("plain/file");
    home.folder("plain/disk");
    const auto result = inMountNamespace([&] { return mountAt("tmpfs", home / "plain/disk", "tmpfs", 0); },
                                         [&] {
                                             home.file("plain/disk/inside", 5000);
                                             return visitsAndTouches(home.path(), {"disk", "inside"});
                                         });
    REQUIRE_MOUNTS(result)
    EXPECT_EQ(result.text, "plain;plain/file;|");
}

TEST(WalkMounts, ABindMountOfTheSameFileSystemIsNotCountedAndNotTouched) {
    const TemporaryFolder elsewhere;
    elsewhere.file("inside");
    const TemporaryFolder home;
    home.folder("a folder\twith \\040 in its name");
    home.file("file");
    const auto result = inMountNamespace(
        [&] { return mountAt(elsewhere.path().c_str(), home / "a folder\twith \\040 in its name", nullptr, MS_BIND); },
        [&] { return visitsAndTouches(home.path(), {"a folder\twith \\040 in its name", "inside"}); });
    REQUIRE_MOUNTS(result)
    EXPECT_EQ(result.text, "file;|");
}

TEST(WalkMounts, AFileThatIsAMountPointIsNotTouched) {
    const TemporaryFolder home;
    home.file("source", 5000);
    home.file("target");
    const auto result =
        inMountNamespace([&] { return mountAt((home / "source").c_str(), home / "target", nullptr, MS_BIND); },
                         [&] { return visitsAndTouches(home.path(), {"target"}); });
    REQUIRE_MOUNTS(result)
    EXPECT_EQ(result.text, "source;|");
}

TEST(WalkMounts, ARootReachedThroughALinkStillFindsItsMounts) {
    const TemporaryFolder home;
    home.folder("var/home/ann/disk");
    home.file("var/home/ann/file");
    home.link("var/home", "home");
    const auto result = inMountNamespace([&] { return mountAt("tmpfs", home / "var/home/ann/disk", "tmpfs", 0); },
                                         [&] { return visitsAndTouches(home / "home/ann", {"disk"}); });
    REQUIRE_MOUNTS(result)
    EXPECT_EQ(result.text, "file;|");
}

TEST(WalkMounts, ARootThatIsAMountPointIsWalked) {
    const TemporaryFolder home;
    home.folder("disk");
    const auto result = inMountNamespace([&] { return mountAt("tmpfs", home / "disk", "tmpfs", 0); },
                                         [&] {
                                             home.file("disk/folder/inside");
                                             return visitsAndTouches(home / "disk", {});
                                         });
    REQUIRE_MOUNTS(result)
    EXPECT_EQ(result.text, "folder;folder/inside;|");
}

// Mounts `late` when `trigger` is visited, and answers what was visited.
std::string visitsWithALateMount(const TemporaryFolder& home, const std::string& trigger, const std::string& late) {
    Recorder recorder(home.path());
    int error = 0;
    recorder.onEntry = [&](const Entry& entry) {
        if (entry.name == trigger) {
            error = mountAt("tmpfs", home / late, "tmpfs", 0);
            home.file(late + "/inside");
        }
        return Action::Continue;
    };
    (void)record(recorder, home.path(), 1);
    return error == 0 ? joined(recorder.all()) : std::strerror(error);
}

// The list of mounts is read at the start; what comes later is told by its device.
TEST(WalkMounts, AFileSystemMountedBeforeItsFolderIsMetIsNotVisited) {
    const TemporaryFolder home;
    home.folder("folder/late");
    const auto result =
        inMountNamespace([] { return 0; }, [&] { return visitsWithALateMount(home, "folder", "folder/late"); });
    REQUIRE_MOUNTS(result)
    EXPECT_EQ(result.text, "folder;");
}

TEST(WalkMounts, AFileSystemMountedAfterItsFolderWasMetIsNotEntered) {
    const TemporaryFolder home;
    home.folder("late");
    const auto result = inMountNamespace([] { return 0; }, [&] { return visitsWithALateMount(home, "late", "late"); });
    REQUIRE_MOUNTS(result)
    EXPECT_EQ(result.text, "late;");
}

// A stick that is pulled out: what is open may still be read, everything else is gone.
TEST(WalkMounts, AVolumeThatVanishesDuringTheWalkEndsItInOrder) {
    const TemporaryFolder home;
    home.folder("disk");
    const auto result = inMountNamespace([&] { return mountAt("tmpfs", home / "disk", "tmpfs", 0); },
                                         [&] {
                                             for (int i = 0; i < 300; ++i) {
                                                 home.file("disk/" + std::to_string(i) + "/file");
                                             }
                                             Recorder recorder(home / "disk");
                                             bool isGone = false;
                                             recorder.onEntry = [&](const Entry&) {
                                                 isGone = isGone || ::umount2((home / "disk").c_str(), MNT_DETACH) == 0;
                                                 return Action::Continue;
                                             };
                                             const Outcome outcome = record(recorder, home / "disk", 1);
                                             const bool isEmpty = std::filesystem::is_empty(home / "disk");
                                             return std::string(isGone && isEmpty ? "gone, " : "still there, ") +
                                                    (outcome == Outcome::Complete ? "complete, " : "not complete, ") +
                                                    std::to_string(recorder.all().size()) + " visits";
                                         });
    REQUIRE_MOUNTS(result)
    EXPECT_EQ(result.text, "gone, complete, 600 visits");
}

} // namespace
} // namespace vellmoor::walk::test
