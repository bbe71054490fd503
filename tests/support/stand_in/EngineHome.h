#pragma once

#include "CancelToken.h"
#include "StandInPlatform.h"
#include "TemporaryFolder.h"
#include "layouts/SystemLayout.h"
#include "layouts/linux/LinuxEnvironment.h"
#include "scan/EngineContext.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string_view>

namespace vellmoor::test {

/// A throw-away home and root of either system with real files, the stand-in platform over them and the system's
/// layout: all that an engine function needs. Sets the texts to the system's set, in English.
class EngineHome {
public:
    using Age = std::chrono::system_clock::duration;

    explicit EngineHome(System system);

private:
    TemporaryFolder folder_; // first: everything else lies in it

public:
    const Path home;              ///< …/Users/tester or …/home/tester
    const Path root;              ///< stands for "/"; empty at first
    LinuxEnvironment environment; ///< of the home; change it and call `useEnvironment` to try other base folders
    StandInPlatform platform;
    SystemLayout layout;
    CancelToken token;
    TimePoint now; ///< the moment of construction, in whole seconds; ages count from it

    /// A new context, as for one scan.
    [[nodiscard]] EngineContext context() const { return {platform, layout, token, now}; }
    /// Builds the Linux layout again.
    void useEnvironment();

    // Each makes one thing, with the folders above it, and answers its path. A relative path is below the home;
    // an absolute one that does not lie in the home or root is taken below the root.
    Path file(const Path& path, std::int64_t bytes = 4096, Age age = {}) const;
    Path text(const Path& path, std::string_view contents, Age age = {}) const;
    /// An executable file of text.
    Path script(const Path& path, std::string_view contents) const;
    Path folder(const Path& path) const;
    /// A symbolic link with `target` as its text.
    Path link(const Path& target, const Path& path) const;
    Path fifo(const Path& path) const;
    void setAge(const Path& path, Age age) const;
    void setMode(const Path& path, unsigned mode) const;

    /// Where the methods above put `path`.
    [[nodiscard]] Path place(const Path& path) const;
    /// Whether something (a link counts itself) is at that place.
    [[nodiscard]] bool has(const Path& path) const;

private:
    [[nodiscard]] Path relative(const Path& path) const;
};

/// Whole days, for ages.
constexpr EngineHome::Age days(int count) {
    return std::chrono::hours(24 * count);
}

} // namespace vellmoor::test
