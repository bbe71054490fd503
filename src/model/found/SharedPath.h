#pragma once

#include <concepts>
#include <filesystem>
#include <memory>
#include <string>

namespace vellmoor {

/// A path that is kept by the ten thousand, in several lists: its copy costs a reference, and nothing but its text is
/// held. (A std::filesystem::path keeps each of its parts beside the text: 300 bytes of five.)
class SharedPath {
public:
    SharedPath() = default;
    template <std::convertible_to<std::filesystem::path> Source>
        requires(!std::same_as<Source, SharedPath>)
    SharedPath(const Source& source)
        : text_(std::make_shared<const std::string>(std::filesystem::path(source).native())) {}

    [[nodiscard]] const std::string& native() const {
        static const std::string empty;
        return text_ ? *text_ : empty;
    }
    [[nodiscard]] bool empty() const { return native().empty(); }
    [[nodiscard]] std::filesystem::path path() const { return native(); }
    operator std::filesystem::path() const { return path(); }

    /// As paths are compared: by their parts.
    friend bool operator==(const SharedPath& a, const std::filesystem::path& b) { return a.path() == b; }
    template <std::same_as<SharedPath> Other>
    friend bool operator==(const SharedPath& a, const Other& b) {
        return a.text_ == b.text_ || a.path() == b.path();
    }

private:
    std::shared_ptr<const std::string> text_;
};

} // namespace vellmoor
