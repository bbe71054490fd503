// Files that Vellmoor keeps for itself: small, private to the user, and right again after a crash.
#pragma once

#include "Platform.h"
#include "disk/Descriptor.h"

#include <expected>
#include <optional>
#include <string>
#include <string_view>

namespace vellmoor {

/// A text file of ours. Its folder is made 0700 and the file 0600 when they are missing; a link in its place is
/// refused, whoever put it there.
class OwnFile {
public:
    explicit OwnFile(Path path) : path_(std::move(path)) {}

    [[nodiscard]] const Path& path() const { return path_; }

    /// All of it; empty when there is no such file; the system's reason when it cannot be read.
    [[nodiscard]] std::expected<std::string, std::string> read() const;
    /// The new text in place of the old one: whatever happens, one of the two is there whole.
    [[nodiscard]] Outcome replace(std::string_view text) const;

private:
    Path path_;
};

/// An OwnFile that grows line by line.
class OwnLog {
public:
    /// Opens it for appending, and makes it when it is missing. A last line that a crash cut off is ended, so that it
    /// cannot swallow the next one.
    static std::expected<OwnLog, std::string> open(const Path& path);

    /// Adds whole lines. What was written of them when the disk is full is taken back.
    [[nodiscard]] Outcome append(std::string_view lines);
    /// Waits until the disk has everything.
    [[nodiscard]] Outcome sync();

private:
    explicit OwnLog(Descriptor descriptor) : descriptor_(std::move(descriptor)) {}

    Descriptor descriptor_;
};

/// A lock between processes: one holds it, until the object or the process ends.
class OwnLock {
public:
    /// Nothing while somebody else holds it; the system's reason when the file cannot be made.
    static std::expected<std::optional<OwnLock>, std::string> tryTake(const Path& path);

private:
    explicit OwnLock(Descriptor descriptor) : descriptor_(std::move(descriptor)) {}

    Descriptor descriptor_;
};

} // namespace vellmoor
