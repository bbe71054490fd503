#include "LinuxTrashFixture.h"

#include "FileContent.h"

#include <unistd.h>

namespace vellmoor {

TrashPlaces LinuxTrash::places() const {
    TrashPlaces all{.home = trash_, .known = {}, .volumeForms = {}, .anchors = {home_}};
    const std::string user = std::to_string(::getuid());
    all.volumeForms = {{.folder = Path(".Trash") / user, .needsStickyParent = true, .needsRealFolder = true},
                       {.folder = ".Trash-" + user, .needsRealFolder = true}};
    if (platform_.exists(trash_.folder)) {
        all.known.push_back(trash_);
    }
    return all;
}

std::vector<std::string> LinuxTrash::notes() const {
    std::vector<std::string> names;
    for (const FolderEntry& entry : platform_.entries(trash_.folder / "info").value_or(std::vector<FolderEntry>())) {
        names.push_back(entry.name);
    }
    return names;
}

std::string LinuxTrash::noteOf(const std::string& name) const {
    return test::contentOf(trash_.folder / "info" / (name + ".trashinfo"));
}

} // namespace vellmoor
