#pragma once

#include <dirent.h>
#include <memory>
#include <unistd.h>
#include <utility>

namespace vellmoor {

/// Owns a file descriptor; -1 is none.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    [[nodiscard]] int get() const { return number_; }
    explicit operator bool() const { return number_ >= 0; }
    [[nodiscard]] int release() { return std::exchange(number_, -1); }
    /// Whether the system took everything that was written.
    bool close() { return number_ < 0 || ::close(std::exchange(number_, -1)) == 0; }

private:
    int number_ = -1;
};

struct CloseDirectory {
    void operator()(DIR* directory) const { ::closedir(directory); }
};
using DirectoryStream = std::unique_ptr<DIR, CloseDirectory>;

} // namespace vellmoor
