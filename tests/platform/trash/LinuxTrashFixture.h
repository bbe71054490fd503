#pragma once

#include "LinuxPlatform.h"
#include "TemporaryFolder.h"
#include "TrashHelp.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vellmoor {

/// Moves into a real Trash, which is missing at first, in a throw-away home.
class LinuxTrash : public ::testing::Test {
protected:
    [[nodiscard]] TrashPlaces places() const;
    Removal move(const RemovalRequest& request) { return test::moveToTrash(platform_, request, places()); }
    Removal move(const Path& path) { return move(test::requestFor(platform_, path)); }
    bool takes(const Path& path) { return move(path).result == RemovalResult::Done; }

    Path write(const Path& relative, const std::string& text = "text") const {
        return folder_.text(Path("home") / relative, text);
    }
    /// The names of the notes in the Trash.
    [[nodiscard]] std::vector<std::string> notes() const;
    [[nodiscard]] std::string noteOf(const std::string& name) const;

    test::TemporaryFolder folder_;
    Path home_ = folder_.folder("home");
    TrashFolder trash_{
        .folder = home_ / "data/Trash", .contents = home_ / "data/Trash/files", .anchor = home_ / "data"};
    LinuxPlatform platform_;
};

} // namespace vellmoor
