#include "trash/PortalTrashSession.h"

#include "GlibPointers.h"
#include "disk/Files.h"

#include <gio/gio.h>

#include <cerrno>

namespace vellmoor {

Removal PortalTrashSession::moveToTrash(const RemovalRequest& request) {
    const auto parent = parents_.of(request.path);
    if (!parent) {
        return {.result = meansGone(parent.error()) ? RemovalResult::Vanished : RemovalResult::Failed,
                .reason = files::reason(parent.error()),
                .place = {}};
    }
    if (const auto seen = inspect(request, (*parent)->folder.get(), (*parent)->real); !seen) {
        return seen.error();
    }
    const glib::Object<GFile> file(g_file_new_for_path(request.path.c_str()));
    GError* error = nullptr;
    if (g_file_trash(file.get(), nullptr, &error)) {
        return {};
    }
    const glib::ErrorPointer owned(error);
    return {.result = RemovalResult::Failed,
            .reason = owned ? std::string(owned->message) : files::reason(EIO),
            .place = {}};
}

} // namespace vellmoor
