#include "MountPoints.h"

#include <sys/mount.h>
#include <sys/param.h>

namespace vellmoor::walk {
namespace {

// As the kernel remembers them: asking the file systems themselves could wait for a dead server.
std::vector<struct statfs> mountedFileSystems() {
    std::vector<struct statfs> all;
    constexpr int attempts = 5; // others may mount meanwhile
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const int expected = ::getfsstat(nullptr, 0, MNT_NOWAIT);
        if (expected < 0) {
            break;
        }
        all.resize(static_cast<std::size_t>(expected) + 8);
        const int count = ::getfsstat(all.data(), static_cast<int>(all.size() * sizeof all.front()), MNT_NOWAIT);
        if (count >= 0 && static_cast<std::size_t>(count) < all.size()) {
            all.resize(static_cast<std::size_t>(count));
            return all;
        }
    }
    return {}; // the device test alone must do
}

} // namespace

std::expected<std::unique_ptr<const MountPoints>, std::errc> MountPoints::below(const std::filesystem::path& root) {
    // The data volume's folders have two names, and everybody uses the short one: "/Users", not this and "/Users".
    constexpr std::string_view dataVolume = "/System/Volumes/Data";
    std::vector<std::string> places;
    for (const struct statfs& mounted : mountedFileSystems()) {
        const std::string_view name(mounted.f_mntonname);
        places.emplace_back(name);
        if (name.starts_with(dataVolume) && name.substr(dataVolume.size()).starts_with('/')) {
            places.emplace_back(name.substr(dataVolume.size()));
        }
    }
    // They are named with their links resolved, but /tmp is a link to /private/tmp.
    std::error_code error;
    const std::filesystem::path real = std::filesystem::canonical(root, error);
    return among(places, error ? root.native() : real.native());
}

} // namespace vellmoor::walk
