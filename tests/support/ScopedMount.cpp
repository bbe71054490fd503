#include "ScopedMount.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sched.h>
#include <sys/mount.h>
#include <utility>

namespace vellmoor::test {
namespace {

int enterNamespace() {
    static const int result = [] {
        if (::unshare(CLONE_NEWNS) != 0) {
            return -1;
        }
        return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
    }();
    return result;
}

} // namespace

void ScopedMount::note(const char* what, int result) {
    if (result != 0 && !refusal_) {
        refusal_ = std::string(what) + ": " + std::strerror(errno);
    }
}

ScopedMount ScopedMount::memory(const std::filesystem::path& at, const std::string& options) {
    ScopedMount made(at);
    made.note("unshare", enterNamespace());
    if (!made.refusal_) {
        made.note("mount", ::mount("vellmoor-test", at.c_str(), "tmpfs", MS_NOSUID | MS_NODEV, options.c_str()));
    }
    return made;
}

ScopedMount ScopedMount::bind(const std::filesystem::path& source, const std::filesystem::path& at) {
    ScopedMount made(at);
    made.note("unshare", enterNamespace());
    if (!made.refusal_) {
        made.note("mount", ::mount(source.c_str(), at.c_str(), nullptr, MS_BIND, nullptr));
    }
    return made;
}

ScopedMount ScopedMount::disk(const std::filesystem::path& image, const std::filesystem::path& at) {
    ScopedMount made(at);
    made.note("unshare", enterNamespace());
    if (!made.refusal_) {
        std::ofstream(image) << "";
        std::filesystem::resize_file(image, 4 << 20);
        const std::string tools = "PATH=$PATH:/sbin:/usr/sbin; mke2fs -q -F '" + image.string() +
                                  "' && mount -o loop,nosuid '" + image.string() + "' '" + at.string() + "'";
        if (std::system(tools.c_str()) != 0) {
            made.refusal_ = "no disk could be made of a file";
        }
    }
    return made;
}

ScopedMount::ScopedMount(ScopedMount&& other) noexcept
    : at_(std::exchange(other.at_, {})),
      refusal_(std::move(other.refusal_)) {}

ScopedMount::~ScopedMount() {
    if (!at_.empty() && !refusal_) {
        ::umount2(at_.c_str(), MNT_DETACH);
    }
}

void ScopedMount::makeReadOnly() {
    note("remount", ::mount(nullptr, at_.c_str(), nullptr, MS_REMOUNT | MS_RDONLY | MS_NOSUID | MS_NODEV, nullptr));
}

} // namespace vellmoor::test
