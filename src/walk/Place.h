// A directory of the walk: its name, its way to the root, and what is left to do in it.
#pragma once

#include "MountPoints.h"
#include "Walk.h"

#include <atomic>
#include <string>
#include <utility>

namespace vellmoor::walk {

class PlaceRef;

/// Made when a directory is opened, gone when the last directory below it is done; so that there are never more
/// than the directories being read or waiting, and their ancestors.
class Place final : public DirectoryPath {
public:
    /// `parent` is null for the root, whose `name` is its whole path without a slash at the end ("" for "/").
    static PlaceRef create(PlaceRef parent, std::string name, const MountPoints* mounts);

    [[nodiscard]] std::filesystem::path path() const override;
    [[nodiscard]] Place* parent() const { return parent_; }
    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] std::string_view lastComponent() const;
    [[nodiscard]] std::uint32_t depth() const { return depth_; }
    /// What is mounted below here; null almost everywhere.
    [[nodiscard]] const MountPoints* mounts() const { return mounts_; }

    int fd = -1;        ///< open on the directory; -1: done with, or closed to spare descriptors (see WorkQueue.cpp)
    unsigned users = 0; ///< workers that need `fd` now; under the queue's lock
    void close();

    /// The names of the directories to enter, first in the hands of the worker that reads, then under the queue's lock.
    void addChild(std::string_view name) { (children_ += name) += '\0'; }
    [[nodiscard]] bool hasWork() const { return nextChild_ < children_.size(); }
    [[nodiscard]] std::string takeChild();

private:
    friend class PlaceRef;
    Place(Place* parent, std::string name, const MountPoints* mounts)
        : parent_(parent),
          name_(std::move(name)),
          mounts_(mounts),
          depth_(parent != nullptr ? parent->depth_ + 1 : 0) {}
    ~Place() override { close(); }

    Place* parent_; ///< one of its references is ours
    std::string name_;
    const MountPoints* mounts_;
    std::string children_;      ///< each with a NUL behind it
    std::size_t nextChild_ = 0; ///< where the first name that nobody has taken begins
    std::uint32_t depth_;
    std::atomic<std::uint32_t> references_{1};
};

/// A counted reference. std::shared_ptr would free a chain of ancestors by recursion, which a tree of some
/// thousand levels turns into a stack overflow.
class PlaceRef {
public:
    PlaceRef() = default;
    explicit PlaceRef(Place* adopted) : place_(adopted) {}
    PlaceRef(const PlaceRef& other);
    PlaceRef(PlaceRef&& other) noexcept : place_(std::exchange(other.place_, nullptr)) {}
    PlaceRef& operator=(PlaceRef other) noexcept {
        std::swap(place_, other.place_);
        return *this;
    }
    ~PlaceRef();

    [[nodiscard]] Place* get() const { return place_; }
    Place* operator->() const { return place_; }
    Place& operator*() const { return *place_; }
    explicit operator bool() const { return place_ != nullptr; }
    /// Gives the reference away without releasing it.
    [[nodiscard]] Place* leak() { return std::exchange(place_, nullptr); }

private:
    Place* place_ = nullptr;
};

/// Opens a directory in a directory (or AT_FDCWD), never through a link; -1 and errno.
int openDirectory(int parent, const char* name);

} // namespace vellmoor::walk
