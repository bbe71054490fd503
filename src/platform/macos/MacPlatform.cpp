// What needs nothing of Foundation. The other members stand in the file of their kind: single paths in MacFiles.cpp, by
// Foundation and AppKit the rest (*.mm).
#include "MacPlatform.h"

#include <pthread/qos.h>
#include <unistd.h>

namespace vellmoor {

UserFolders MacPlatform::userFolders() const {
    return {}; // the layout's own: Finder translates their names, the disk does not
}

std::optional<KeyFile> MacPlatform::keyFile(const Path& /*path*/) const {
    return std::nullopt; // macOS has property lists in their place
}

std::uint32_t MacPlatform::userId() const {
    return ::getuid();
}

void MacPlatform::enterWorker() const {
    // It fails only on a thread whose priority was set by hand; that one keeps its own.
    (void)::pthread_set_qos_class_self_np(QOS_CLASS_USER_INITIATED, 0);
}

} // namespace vellmoor
