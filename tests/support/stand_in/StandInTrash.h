#pragma once

#include "StandInPlatform.h"
#include "trash/TrashSession.h"

#include <functional>
#include <memory>

namespace vellmoor::test {

/// Of Linux's shape: the host's own session, with the stand-in's script in front. Of a Mac's shape: a Trash that is a
/// folder, where a name that is taken gets the time of day.
class StandInTrashSession final : public TrashSession {
public:
    StandInTrashSession(const StandInPlatform& platform, TrashPlaces places);

    [[nodiscard]] Removal moveToTrash(const RemovalRequest& request) override;
    [[nodiscard]] Removal removeFromTrash(const RemovalRequest& request, const TrashFolder& trash) override;
    [[nodiscard]] Return putBack(const ReturnRequest& request, const TrashFolder& trash) override;
    void forgetNotes(const std::set<Path>& places) override;
    void finish() override;

private:
    [[nodiscard]] Removal scripted(Operation operation, const RemovalRequest& request,
                                   const std::function<Removal()>& deed) const;

    const StandInPlatform& platform_;
    std::unique_ptr<TrashSession> host_; ///< none in a Mac's shape
};

} // namespace vellmoor::test
