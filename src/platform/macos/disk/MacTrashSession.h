#pragma once

#include "trash/TrashSession.h"

namespace vellmoor {

/// The Trash by Foundation, which chooses the folder. An item is compared before it moves and where it lies then; a
/// stranger goes back.
class MacTrashSession final : public TrashSession {
public:
    /// Both must outlive it. `stop` ends a removal between two entries; null: nothing does.
    explicit MacTrashSession(const Platform& platform, const CancelToken* stop = nullptr)
        : platform_(platform),
          stop_(stop) {}

    /// Fails where the volume has no Trash, which many network shares have not.
    [[nodiscard]] Removal moveToTrash(const RemovalRequest& request) override;
    /// Refused unless the path really lies below the Trash folder, whatever links lie on the way. Links inside are
    /// removed, never followed, and no other disk is entered; the first thing that cannot be removed ends it. What is
    /// left of a folder lies where it was and under its name.
    [[nodiscard]] Removal removeFromTrash(const RemovalRequest& request, const TrashFolder& trash) override;
    /// Foundation keeps no notes that others may read: the request alone says where the item goes.
    [[nodiscard]] Return putBack(const ReturnRequest& request, const TrashFolder& trash) override;
    void forgetNotes(const std::set<Path>& /*places*/) override {}
    void finish() override {}

private:
    /// Whether nothing is there. What cannot be seen is.
    [[nodiscard]] bool isGone(const Path& path) const;
    [[nodiscard]] std::optional<RemovalResult> objection(const RemovalRequest& request) const;
    [[nodiscard]] Removal returned(const Path& place, const Path& path) const;

    const Platform& platform_;
    const CancelToken* stop_;
};

} // namespace vellmoor
