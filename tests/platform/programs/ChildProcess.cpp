#include "ChildProcess.h"

#include "LinuxPlatform.h"
#include "ProcessLine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <iterator>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

extern char** environ; // NOLINT: POSIX gives it no header

namespace vellmoor::test {
namespace {

/// The kernel's ticks at which a process began; 0 for one that is gone.
std::uint64_t startOf(std::int32_t pid) {
    const auto text = LinuxPlatform().fileContents("/proc/" + std::to_string(pid) + "/stat", 4096);
    const auto line = text ? parseProcessLine(*text) : std::nullopt;
    return line ? line->started : 0;
}

} // namespace

Child::Child(const std::string& script) {
    std::array<int, 2> ends{};
    EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    std::string text = script;
    std::string shell = "sh";
    std::string option = "-c";
    std::array<char*, 4> words{shell.data(), option.data(), text.data(), nullptr};
    EXPECT_EQ(::posix_spawn(&pid_, "/bin/sh", &actions, nullptr, words.data(), environ), 0);
    ::posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);
    char ready = 0;
    EXPECT_EQ(::read(ends[0], &ready, 1), 1);
    ::close(ends[0]);
}

Child::~Child() {
    ::kill(pid_, SIGKILL);
    ::waitpid(pid_, nullptr, 0);
}

bool Child::isAlive() const {
    siginfo_t info{};
    return ::waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOHANG | WNOWAIT) == 0 && info.si_pid == 0;
}

MemoryApp appOf(std::vector<std::int32_t> pids) {
    MemoryApp app;
    std::ranges::transform(pids, std::back_inserter(app.starts), startOf);
    app.pids = std::move(pids);
    return app;
}

} // namespace vellmoor::test
