#pragma once

#include "Platform.h"

#include <csignal>
#include <cstdint>
#include <string>
#include <sys/types.h>
#include <vector>

namespace vellmoor::test {

/// A program of ours to be quit; killed and reaped at the end whatever it did.
class Child {
public:
    /// `script` runs in a shell that prints something, such as "ready", once its traps are set; that is waited for.
    explicit Child(const std::string& script);
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    [[nodiscard]] std::int32_t pid() const { return pid_; }
    [[nodiscard]] bool isAlive() const;

private:
    pid_t pid_ = 0;
};

// Scripts of children: one that a signal ends, and one that only a kill ends.
inline constexpr const char* waits = "echo ready; exec sleep 300";
inline constexpr const char* ignores = "trap '' TERM; echo ready; while :; do sleep 0.05; done";

/// An application of these processes, as they are now; one that is gone has 0 for its start.
MemoryApp appOf(std::vector<std::int32_t> pids);

} // namespace vellmoor::test
