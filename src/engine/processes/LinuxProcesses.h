#pragma once

#include "Platform.h"
#include "ProcessLine.h"
#include "layouts/SystemLayout.h"
#include "scan/EngineContext.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vellmoor {

/// The processes of the user as /proc shows them: each file is read when it is first asked for, and once. For another
/// look make another object. A process that has ended, or that may not be looked into, answers nothing. For one thread.
class LinuxProcesses {
public:
    LinuxProcesses(const Platform& platform, const SystemLayout& layout) : platform_(platform), layout_(layout) {}
    /// Those of the call's first look, for all who ask in one scan.
    static const LinuxProcesses& of(EngineContext& context);
    /// Begins that look on two threads of its own, while the scan does something else: of() waits for them. Nothing
    /// where the system has no /proc.
    static void lookAhead(EngineContext& context);

    /// Programs of the user only, ascending. The kernel's threads are root's, and none: they hold neither memory nor
    /// files.
    [[nodiscard]] const std::vector<std::int32_t>& pids() const;

    /// Path of the program, below the layout's root; one that was deleted or replaced meanwhile keeps its old path.
    [[nodiscard]] const std::optional<Path>& executable(std::int32_t pid) const;
    /// The process's own name, at most 15 bytes, which it may change.
    [[nodiscard]] std::string name(std::int32_t pid) const;
    [[nodiscard]] std::optional<std::int64_t> residentBytes(std::int32_t pid) const;
    [[nodiscard]] std::optional<std::int32_t> parent(std::int32_t pid) const;
    /// What the kernel writes of it in one line.
    [[nodiscard]] std::optional<ProcessLine> line(std::int32_t pid) const;
    /// Whether it is over and only waits for the one that started it to take note of it.
    [[nodiscard]] bool hasEnded(std::int32_t pid) const;
    /// The words that it was started with, which it may change; the first is what it calls itself.
    [[nodiscard]] std::vector<std::string> arguments(std::int32_t pid) const;
    /// Its path in the unified control group tree; empty: none.
    [[nodiscard]] std::string group(std::int32_t pid) const;
    /// All variables that it was started with, for environmentValue().
    [[nodiscard]] const std::string& environment(std::int32_t pid) const;

    /// The AppImage that its program is a part of, as the file that it is; nothing for a program that only inherited
    /// the variables of the one that started it.
    [[nodiscard]] std::optional<Path> appImage(std::int32_t pid) const;
    /// The ID of the Flatpak it runs in; empty: none.
    [[nodiscard]] std::string flatpak(std::int32_t pid) const;
    /// The name of the snap it runs in; empty: none.
    [[nodiscard]] std::string snap(std::int32_t pid) const;
    /// The name of the snap that a program is a part of; empty: of none.
    [[nodiscard]] std::string snapOf(const Path& program) const;

private:
    void readAll();
    void read(std::span<const std::int32_t> some);
    /// The numbers of all processes, ascending.
    [[nodiscard]] std::vector<std::int32_t> allPids() const;
    [[nodiscard]] bool isProgramOfUser(std::int32_t pid) const { return !isKernelThread(pid) && isOwn(pid); }
    [[nodiscard]] Path file(std::int32_t pid, std::string_view name) const;
    [[nodiscard]] const std::string& contents(std::int32_t pid, std::string_view name) const;
    [[nodiscard]] bool isOwn(std::int32_t pid) const;
    [[nodiscard]] bool isKernelThread(std::int32_t pid) const;
    [[nodiscard]] Path placedPath(std::string_view path) const;

    /// What was read of one process so far.
    struct Known {
        std::map<std::string, std::string, std::less<>> files;
        std::optional<std::optional<Path>> executable;
        std::optional<std::string> flatpak;
    };

    const Platform& platform_;
    const SystemLayout& layout_;
    mutable std::optional<std::vector<std::int32_t>> pids_;
    mutable std::unordered_map<std::int32_t, Known> known_;
};

} // namespace vellmoor
