#include "trash/ReturnByPath.h"

#include "disk/PosixFiles.h"

#include <cerrno>
#include <ranges>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace vellmoor {
namespace {

Return failure(std::string reason) {
    return {.result = ReturnResult::Failed, .reason = std::move(reason)};
}

/// Folders that are missing above an item; they go again unless it came.
class MissingFolders {
public:
    MissingFolders() = default;
    MissingFolders(const MissingFolders&) = delete;
    MissingFolders& operator=(const MissingFolders&) = delete;
    ~MissingFolders() {
        for (const auto& [folder, mode] : std::views::reverse(made_)) {
            ::rmdir(folder.c_str()); // one that is used by now stays
        }
    }

    Outcome make(const Platform& platform, const Path& folder, const std::vector<std::uint32_t>& modes) {
        std::vector<Path> missing;
        for (Path above = folder; !platform.facts(above) && above.has_relative_path(); above = above.parent_path()) {
            missing.push_back(above);
        }
        for (std::size_t index = missing.size(); index > 0; --index) {
            const auto mode = index <= modes.size() ? std::optional<mode_t>(modes[index - 1]) : std::nullopt;
            if (::mkdir(missing[index - 1].c_str(), mode ? 0700 : 0777) != 0) {
                return files::failure(errno);
            }
            made_.emplace_back(missing[index - 1], mode);
        }
        return {};
    }

    /// The innermost folder gets its mode first: another one may close the way to it.
    void keep() {
        for (const auto& [folder, mode] : std::views::reverse(made_)) {
            if (mode) {
                ::chmod(folder.c_str(), *mode);
            }
        }
        made_.clear();
    }

private:
    std::vector<std::pair<Path, std::optional<mode_t>>> made_; ///< the outermost first
};

} // namespace

Return putBackByPath(const Platform& platform, const ReturnRequest& request) {
    const std::optional<FileIdentity> seen = platform.identity(request.place);
    if (!seen) {
        return platform.exists(request.place) ? failure(files::reason(EACCES))
                                              : Return{.result = ReturnResult::Vanished, .reason = ""};
    }
    if (!isSame(request.identity, *seen, Sameness::File)) {
        return {.result = ReturnResult::Changed, .reason = ""};
    }
    MissingFolders folders;
    if (const Outcome made = folders.make(platform, request.path.parent_path(), request.parentModes); !made) {
        return failure(made.error());
    }
    if (const Outcome moved = platform.moveItem(request.place, request.path); !moved) {
        const bool isTaken = platform.facts(request.path) && platform.facts(request.place);
        return isTaken ? Return{.result = ReturnResult::NameTaken, .reason = ""} : failure(moved.error());
    }
    if (const auto moved = platform.identity(request.path); !moved || !isSame(*seen, *moved, Sameness::File)) {
        const Outcome back = platform.moveItem(request.path, request.place);
        return back ? Return{.result = ReturnResult::Changed, .reason = ""} : failure(back.error());
    }
    folders.keep();
    return {};
}

} // namespace vellmoor
