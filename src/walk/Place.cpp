#include "Place.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace vellmoor::walk {

PlaceRef Place::create(PlaceRef parent, std::string name, const MountPoints* mounts) {
    return PlaceRef(new Place(parent.leak(), std::move(name), mounts));
}

std::filesystem::path Place::path() const {
    std::size_t length = 0;
    for (const Place* place = this; place != nullptr; place = place->parent_) {
        length += place->name_.size() + 1;
    }
    std::string text(length - 1, '/'); // filled from the end, so that the ancestors need no list
    std::size_t end = text.size();
    for (const Place* place = this; place != nullptr; place = place->parent_) {
        end -= place->name_.size();
        std::ranges::copy(place->name_, text.begin() + static_cast<std::ptrdiff_t>(end));
        end -= end > 0 ? 1 : 0;
    }
    return text.empty() ? "/" : text;
}

std::string_view Place::lastComponent() const {
    const std::string_view name = name_;
    return parent_ != nullptr ? name : name.substr(name.find_last_of('/') + 1);
}

void Place::close() {
    if (fd >= 0) {
        ::close(std::exchange(fd, -1));
    }
}

std::string Place::takeChild() {
    std::string name = children_.c_str() + nextChild_;
    nextChild_ += name.size() + 1;
    if (!hasWork()) {
        children_ = std::string(); // the place may live on for long, as an ancestor
        nextChild_ = 0;
    }
    return name;
}

int openDirectory(int parent, const char* name) {
    int fd = -1;
    do {
        fd = ::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    } while (fd < 0 && errno == EINTR);
    return fd;
}

PlaceRef::PlaceRef(const PlaceRef& other) : place_(other.place_) {
    if (place_ != nullptr) {
        place_->references_.fetch_add(1, std::memory_order_relaxed);
    }
}

PlaceRef::~PlaceRef() {
    for (Place* place = place_; place != nullptr;) {
        if (place->references_.fetch_sub(1, std::memory_order_acq_rel) != 1) {
            return;
        }
        Place* const up = place->parent_;
        delete place;
        place = up;
    }
}

} // namespace vellmoor::walk
