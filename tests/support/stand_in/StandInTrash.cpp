#include "StandInTrash.h"

#include "Host.h"
#include "disk/Paths.h"
#include "trash/ReturnByPath.h"

#include <ctime>
#include <iomanip>
#include <sstream>
#include <system_error>
#include <utility>

namespace vellmoor::test {
namespace {

std::string localTime(const char* pattern) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    std::ostringstream text;
    text << std::put_time(&local, pattern);
    return text.str();
}

// "name", then "name 10.23.45.ext" and "name 10.23.45 2.ext".
std::string candidate(const Path& path, int attempt) {
    if (attempt == 1) {
        return path.filename().string();
    }
    const std::string again = attempt == 2 ? "" : " " + std::to_string(attempt - 1);
    return path.stem().string() + " " + localTime("%H.%M.%S") + again + path.extension().string();
}

Removal failure(std::string reason) {
    return {.result = RemovalResult::Failed, .reason = std::move(reason), .place = {}};
}

Removal plain(RemovalResult result) {
    return {.result = result, .reason = "", .place = {}};
}

std::optional<RemovalResult> objection(const RemovalRequest& request, const Path& place) {
    const std::optional<FileIdentity> found = hostPlatform().identity(place);
    if (!found) {
        return hostPlatform().exists(place) ? RemovalResult::Failed : RemovalResult::Vanished;
    }
    const bool isSameFile = !request.identity || isSame(*request.identity, *found, request.sameness);
    return isSameFile ? std::nullopt : std::optional(RemovalResult::Changed);
}

Removal moveIntoFolder(const RemovalRequest& request, const Path& folder) {
    if (const auto result = objection(request, request.path)) {
        return plain(*result);
    }
    if (const Outcome made = hostPlatform().createFolder(folder); !made) {
        return failure(made.error());
    }
    for (int attempt = 1;; ++attempt) {
        const Path place = folder / candidate(request.path, attempt);
        const Outcome moved = hostPlatform().moveItem(request.path, place);
        if (!moved && hostPlatform().exists(place) && attempt < 1000) {
            continue;
        }
        if (!moved) {
            return failure(moved.error());
        }
        if (const auto result = objection(request, place)) {
            (void)hostPlatform().moveItem(place, request.path); // the next look shows where it is
            return plain(*result);
        }
        return {.result = RemovalResult::Done, .reason = "", .place = place, .moved = hostPlatform().identity(place)};
    }
}

// Nothing but what really lies below the Trash folder.
Removal removeFromFolder(const RemovalRequest& request, const Path& folder) {
    const std::optional<Path> place = hostPlatform().realPlace(request.path);
    const std::optional<Path> real = hostPlatform().realPath(folder);
    if (!place || !real || !isStrictlyBelow(*place, *real)) {
        return failure(std::generic_category().message(EPERM));
    }
    if (const auto result = objection(request, request.path)) {
        return plain(*result);
    }
    std::error_code error;
    std::filesystem::remove_all(*place, error);
    return error ? failure(error.message()) : Removal{};
}

} // namespace

StandInTrashSession::StandInTrashSession(const StandInPlatform& platform, TrashPlaces places)
    : platform_(platform),
      host_(platform.system == System::Linux ? hostPlatform().trashSession(std::move(places)) : nullptr) {}

Removal StandInTrashSession::scripted(Operation operation, const RemovalRequest& request,
                                      const std::function<Removal()>& deed) const {
    Removal removal;
    const Outcome outcome = platform_.change(operation, request.path, [&]() -> Outcome {
        removal = deed();
        return removal.result == RemovalResult::Done ? Outcome() : std::unexpected(removal.reason);
    });
    const bool isRefused = !outcome && removal.result == RemovalResult::Done;
    return isRefused ? failure(outcome.error()) : removal;
}

Removal StandInTrashSession::moveToTrash(const RemovalRequest& request) {
    return scripted(Operation::MoveToTrash, request, [&] {
        return host_ ? host_->moveToTrash(request) : moveIntoFolder(request, platform_.trashFor(request.path).contents);
    });
}

Removal StandInTrashSession::removeFromTrash(const RemovalRequest& request, const TrashFolder& trash) {
    return scripted(Operation::RemoveFromTrash, request, [&] {
        return host_ ? host_->removeFromTrash(request, trash) : removeFromFolder(request, trash.contents);
    });
}

Return StandInTrashSession::putBack(const ReturnRequest& request, const TrashFolder& trash) {
    Return answer;
    const Outcome outcome = platform_.change(Operation::PutBack, request.place, [&]() -> Outcome {
        answer = host_ ? host_->putBack(request, trash) : putBackByPath(hostPlatform(), request);
        return answer.result == ReturnResult::Done ? Outcome() : std::unexpected(answer.reason);
    });
    const bool isRefused = !outcome && answer.result == ReturnResult::Done;
    return isRefused ? Return{.result = ReturnResult::Failed, .reason = outcome.error()} : answer;
}

void StandInTrashSession::forgetNotes(const std::set<Path>& places) {
    if (host_) {
        host_->forgetNotes(places);
    }
}

void StandInTrashSession::finish() {
    if (host_) {
        host_->finish();
    }
}

} // namespace vellmoor::test
