// Back out of a Trash: the part of LinuxTrashSession that undoes the others.
#include "disk/Files.h"
#include "disk/Rename.h"
#include "trash/LinuxTrashSession.h"

#include <cerrno>
#include <fcntl.h>
#include <ranges>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace vellmoor {
namespace {

Return failure(int error) {
    return {.result = ReturnResult::Failed, .reason = files::reason(error)};
}

/// The folder above an item's place. Missing folders are made, and go again unless the item came.
class WayBack {
public:
    explicit WayBack(Parents& parents) : parents_(parents) {}
    WayBack(const WayBack&) = delete;
    WayBack& operator=(const WayBack&) = delete;
    ~WayBack() {
        for (const Made& made : std::views::reverse(made_)) {
            ::unlinkat(made.above.get(), made.name.c_str(), AT_REMOVEDIR); // one that is used by now stays
        }
    }

    std::expected<int, int> open(const Path& folder, const std::vector<std::uint32_t>& modes) {
        std::vector<Path> missing;
        auto found = parents_.open(folder);
        for (Path above = folder; !found && found.error() == ENOENT && above.has_relative_path();) {
            missing.push_back(above);
            above = above.parent_path();
            found = parents_.open(above);
        }
        for (std::size_t index = missing.size(); found && index > 0; --index) {
            const auto mode = index <= modes.size() ? std::optional<mode_t>(modes[index - 1]) : std::nullopt;
            found = make(std::move(*found), missing[index - 1].filename().string(), mode);
        }
        if (!found) {
            return std::unexpected(found.error());
        }
        folder_ = std::move(*found);
        return folder_.get();
    }

    /// The item came. The innermost folder gets its mode first: another one may close the way to it.
    void keep() {
        for (const Made& made : std::views::reverse(made_)) {
            const auto folder = made.mode ? openFolder(made.above.get(), made.name.c_str()) : std::unexpected(0);
            if (folder) {
                setMode(folder->get(), *made.mode);
            }
        }
        made_.clear();
    }

private:
    struct Made {
        Descriptor above;
        std::string name;
        std::optional<mode_t> mode;
    };

    std::expected<Descriptor, int> make(Descriptor above, std::string name, std::optional<mode_t> mode) {
        const bool isOurs = ::mkdirat(above.get(), name.c_str(), mode ? 0700 : 0777) == 0;
        if (!isOurs && errno != EEXIST) {
            return std::unexpected(errno);
        }
        auto folder = openFolder(above.get(), name.c_str());
        if (isOurs) {
            made_.push_back({std::move(above), std::move(name), mode});
        }
        return folder;
    }

    Parents& parents_;
    Descriptor folder_;
    std::vector<Made> made_; ///< the outermost first
};

} // namespace

Return LinuxTrashSession::putBack(const ReturnRequest& request, const TrashFolder& folder) {
    const auto known = known_.find(folder.folder);
    const bool isDirectlyInside = request.place.parent_path() == folder.contents && request.place.has_filename();
    if (known == known_.end() || !isDirectlyInside || !request.path.is_absolute() || !request.path.has_filename()) {
        return failure(EINVAL);
    }
    TrashDirectory& trash = *known->second;
    if (const int error = trash.open(); error != 0) {
        return failure(error);
    }
    const std::string name = request.place.filename().string();
    const auto seen = factsAt(trash.files(), name.c_str());
    if (!seen) {
        return meansGone(seen.error()) ? Return{.result = ReturnResult::Vanished, .reason = ""} : failure(seen.error());
    }
    if (!isSame(request.identity, seen->identity, Sameness::File)) {
        return {.result = ReturnResult::Changed, .reason = ""};
    }
    trash.begin();
    WayBack way(parents_);
    const auto above = way.open(request.path.parent_path(), request.parentModes);
    if (!above) {
        return failure(above.error());
    }
    const std::string item = request.path.filename().string();
    const int error = renameWithRights(trash.files(), name.c_str(), seen->identity, *above, item.c_str());
    if (error != 0) {
        return error == EEXIST ? Return{.result = ReturnResult::NameTaken, .reason = ""} : failure(error);
    }
    if (const auto moved = factsAt(*above, item.c_str());
        !moved || !isSame(seen->identity, moved->identity, Sameness::File)) {
        // Another file had the name when it moved.
        const int back = renameWithoutReplacing(*above, item.c_str(), trash.files(), name.c_str());
        return back == 0 ? Return{.result = ReturnResult::Changed, .reason = ""} : failure(back);
    }
    way.keep();
    trash.forgetSize(name);
    (void)trash.removeNote(name); // the item is where it was, which is what was asked for
    return {};
}

} // namespace vellmoor
