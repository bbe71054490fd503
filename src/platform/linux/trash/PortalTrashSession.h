#pragma once

#include "trash/LinuxTrashSession.h"

namespace vellmoor {

/// The same from inside a sandbox, where only the desktop's own service may move something to the Trash.
class PortalTrashSession final : public LinuxTrashSession {
public:
    using LinuxTrashSession::LinuxTrashSession;

    [[nodiscard]] Removal moveToTrash(const RemovalRequest& request) override;
    [[nodiscard]] bool seesNotes() const override { return false; }
};

} // namespace vellmoor
