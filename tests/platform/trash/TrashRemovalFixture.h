#pragma once

#include "LinuxPlatform.h"
#include "TemporaryFolder.h"
#include "TrashHelp.h"

#include <gtest/gtest.h>

#include <string>

namespace vellmoor {

/// Removes from a Trash that lies in a throw-away folder; names are those of its items.
class TrashRemoval : public ::testing::Test {
protected:
    TrashRemoval() {
        folder_.folder("Trash/files");
        folder_.folder("Trash/info");
    }

    Removal removal(const Path& path, const TrashFolder& trash) {
        return test::removeFromTrash(platform_, test::requestFor(platform_, path), trash);
    }
    Removal removal(const Path& name) { return removal(trash_.contents / name, trash_); }
    bool remove(const Path& name) { return removal(name).result == RemovalResult::Done; }
    Path note(const std::string& name) { return folder_.text("Trash/info/" + name + ".trashinfo", "[Trash Info]\n"); }
    [[nodiscard]] bool isIn(const Path& name) const { return platform_.exists(trash_.contents / name); }

    test::TemporaryFolder folder_;
    LinuxPlatform platform_;
    TrashFolder trash_{folder_ / "Trash", folder_ / "Trash/files", folder_.path()};
};

} // namespace vellmoor
