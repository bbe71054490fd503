// Path arithmetic that needs no file system.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace vellmoor {

/// "//", "." and a trailing "/" dropped, ".." taken lexically; a relative path stays relative.
std::filesystem::path lexicallyStandardized(const std::filesystem::path& path);

/// Whether `path` lies strictly below `folder`; both standardised.
bool isStrictlyBelow(const std::filesystem::path& path, const std::filesystem::path& folder);

/// Whether `path` is `folder` or lies below it; both standardised.
bool isAtOrBelow(const std::filesystem::path& path, const std::filesystem::path& folder);

/// `path` as the user reads it: the home folder shown as "~".
std::string displayPath(const std::filesystem::path& path, const std::filesystem::path& home);

/// `path` as the children of a stand-in root see it: `root` in front of an absolute path; "/" changes nothing.
std::filesystem::path underRoot(const std::filesystem::path& root, std::string_view path);

/// `path` itself when it lies in the home folder or already below `root`, else as underRoot() places it.
std::filesystem::path placed(const std::filesystem::path& path, const std::filesystem::path& home,
                             const std::filesystem::path& root);

/// The last component, or the whole path when that is empty.
std::string displayName(const std::filesystem::path& path);

} // namespace vellmoor
