#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace vellmoor::test {

/// A mount in a mount namespace of this process: nobody else sees it, and it is gone with this object. Where the
/// kernel forbids it, `refusal` tells why; a test then skips with that text.
class ScopedMount {
public:
    /// An empty file system in memory; `options` as for mount(8), e.g. "size=64k".
    static ScopedMount memory(const std::filesystem::path& at, const std::string& options = "size=1m");
    /// `source` a second time at another place, on the same device.
    static ScopedMount bind(const std::filesystem::path& source, const std::filesystem::path& at);

    /// A disk of its own, as a stick is one: ext2 in the file `image`, which is made. Needs a loop device.
    static ScopedMount disk(const std::filesystem::path& image, const std::filesystem::path& at);

    ScopedMount(ScopedMount&& other) noexcept;
    ScopedMount(const ScopedMount&) = delete;
    ScopedMount& operator=(const ScopedMount&) = delete;
    ~ScopedMount();

    [[nodiscard]] const std::optional<std::string>& refusal() const { return refusal_; }
    /// From now on nothing can be changed there.
    void makeReadOnly();

private:
    explicit ScopedMount(std::filesystem::path at) : at_(std::move(at)) {}
    void note(const char* what, int result);

    std::filesystem::path at_; ///< empty: moved from
    std::optional<std::string> refusal_;
};

} // namespace vellmoor::test

/// Skips the test, saying why, when the mount could not be made.
#define VELLMOOR_NEEDS_MOUNT(scopedMount)                                                                              \
    if ((scopedMount).refusal()) {                                                                                     \
        GTEST_SKIP() << "mounts are not permitted here: " << *(scopedMount).refusal();                                 \
    }                                                                                                                  \
    static_assert(true)
