#include "clean/CleanRun.h"

#include "CheckedMath.h"
#include "applications/AppUninstaller.h"
#include "clean/DiskRoom.h"
#include "clean/Recovery.h"
#include "disk/Paths.h"
#include "disk/PosixFiles.h"
#include "memory/Memory.h"
#include "trash/CleanPlaces.h"

#include <algorithm>
#include <cerrno>
#include <thread>
#include <utility>

namespace vellmoor {
namespace {

constexpr std::size_t mostNotes = 50; // the outcomes have them all
constexpr std::chrono::seconds askAgain{1};

/// Whether the system might take `url` for something else than what lies at `place`: a relative one depends on the
/// current folder, and ".." leads elsewhere behind a link.
bool isAmbiguous(const Platform& platform, const Path& url, const std::optional<Path>& place) {
    if (!url.is_absolute()) {
        return true;
    }
    const bool climbs = std::ranges::find(url, Path("..")) != url.end();
    return climbs && platform.realPlace(url) != place;
}

std::string line(const Path& path, const std::string& reason) {
    return displayName(path) + ": " + reason;
}

} // namespace

CleanRun::CleanRun(EngineContext& context, std::chrono::milliseconds settle, const CleanProgressCallback& progress)
    : context_(context),
      platform_(context.platform()),
      settle_(settle),
      progress_(progress),
      guard_(platform_, context.layout()),
      trashed_(TrashedPaths::of(context)),
      session_(platform_.trashSession(cleanPlaces(context, *trashed_, guard_))),
      owners_(context) {
    recoverCutOff(context, *session_);
}

CleanupReport CleanRun::run(const CleanPlan& plan, CleanRecord& record) {
    report_.attemptedCount = plan.attempted;
    report_.freedBytes = plan.estimate;
    const DiskRoom room(context_, plan);
    WorkProgress progress(progress_, plan.attempted, plan.estimate);
    for (const CleanPlan::Row& row : plan.rows) {
        if (row.item.module == CleanerModule::memoryOptimization) {
            if (context_.isCancelled()) {
                report_.untriedCount += std::ssize(row.targets);
            } else {
                optimize(row);
            }
            for (const CleanupTarget& target : row.targets) {
                progress.done(target.bytes);
            }
        } else {
            cleanRow(row, record, progress);
        }
    }
    finish(record);
    room.measure(report_);
    progress.end();
    return std::move(report_);
}

void CleanRun::finish(CleanRecord& record) {
    session_->finish();
    record.end();
    report_.historyId = record.id();
    report_.wasStopped = report_.wasStopped || (context_.isCancelled() && report_.untriedCount > 0);
    if (report_.trashedCount > 0 && !session_->seesNotes()) {
        report_.notes.push_back(L::tr("项目由系统移到废纸篓，无法检查其回收记录"));
    }
    if (report_.trashedCount > 0 && record.problem()) {
        report_.notes.push_back(L::tr("无法撤销此次清理：%@", *record.problem()));
    }
}

void CleanRun::optimize(const CleanPlan::Row& row) {
    report_.memoryBefore = memorySnapshot(context_);
    MemoryOptimization result = optimizeMemory(context_);
    if (result.succeeded) {
        ++report_.removedCount;
        report_.processedBytes = checkedAdd(report_.processedBytes, row.item.selectedBytes());
        std::this_thread::sleep_for(settle_);
    } else {
        fail(std::move(result.message));
    }
    report_.memoryAfter = memorySnapshot(context_);
}

void CleanRun::cleanRow(const CleanPlan::Row& row, CleanRecord& record, WorkProgress& progress) {
    rowKept_.reset();
    folder_.reset();
    askedApplication_.reset();
    owners_.refresh();
    if (isInstalledAgain(row)) {
        rowKept_ = L::tr("应用已重新安装，已保留");
    }
    kept_ = KeptPaths::read(platform_, context_.layout());
    for (const CleanupTarget& target : row.targets) {
        progress.begin(target.url);
        Answer answer = remove(row, target);
        const bool stays = answer.fate == CleanupFate::Kept || answer.fate == CleanupFate::Failed;
        if (isBody(row.item, target) && stays) {
            rowKept_ = answer.reason; // what it has left behind is still in use
        }
        record.did(count(target, std::move(answer)));
        progress.done(target.bytes);
    }
}

/// What an application has left behind is its own again when it is back.
bool CleanRun::isInstalledAgain(const CleanPlan::Row& row) const {
    const auto isItself = [&](const CleanupTarget& target) { return isBody(row.item, target); };
    return row.isFinishing && row.item.appInfo && std::ranges::none_of(row.targets, isItself) &&
           platform_.exists(row.item.appInfo->appPath);
}

const CleanRun::Folder& CleanRun::folderOf(const Path& path) {
    Path folder = path.parent_path();
    if (!folder_ || folder_->named != folder) {
        std::optional<Path> real = platform_.realPath(folder);
        folder_ =
            Folder{.named = std::move(folder), .real = std::move(real), .holdsFlatpaks = isFlatpakBody(context_, path)};
    }
    return *folder_;
}

CleanRun::Subject CleanRun::subject(const CleanPlan::Row& row, const CleanupTarget& target) {
    Subject subject{.row = row, .target = target, .path = platform_.standardized(target.url), .place = std::nullopt};
    if (const Folder& folder = folderOf(subject.path); folder.real) {
        subject.place = *folder.real / subject.path.filename();
    }
    return subject;
}

CleanRun::Answer CleanRun::remove(const CleanPlan::Row& row, const CleanupTarget& target) {
    if (ended_ || context_.isCancelled()) { // what is at hand is finished first
        return {.fate = CleanupFate::Untried, .reason = "", .place = {}, .note = ""};
    }
    const Subject at = subject(row, target);
    const Path& path = at.path;
    std::optional<std::string> reason = refusal(at);
    if (reason && !platform_.exists(path)) {
        return {.fate = CleanupFate::Vanished, .reason = "", .place = {}, .note = ""};
    }
    if (reason) {
        return {.fate = CleanupFate::Failed, .reason = std::move(*reason), .place = {}, .note = ""};
    }
    if (std::optional<Answer> kept = keptBack(path)) {
        return *std::move(kept);
    }
    if (!rowKept_) {
        if (const std::optional<std::string> user = runningUser(at)) {
            std::string kept = L::tr("%@ 正在运行，已保留", *user);
            if (row.item.module != CleanerModule::systemJunk) { // its rows hold the folders of many applications
                rowKept_ = std::move(kept);
            } else {
                return {.fate = CleanupFate::Kept, .reason = std::move(kept), .place = {}, .note = ""};
            }
        }
    }
    if (rowKept_) {
        const bool isThere = platform_.exists(path);
        return {
            .fate = isThere ? CleanupFate::Kept : CleanupFate::Vanished, .reason = *rowKept_, .place = {}, .note = ""};
    }
    return removeExisting(at);
}

std::optional<CleanRun::Answer> CleanRun::keptBack(const Path& path) const {
    Answer answer{.fate = CleanupFate::Kept, .reason = "", .place = {}, .note = ""};
    if (!kept_) {
        answer = {.fate = CleanupFate::Failed,
                  .reason = L::tr("无法读取保留列表：%@", kept_.error()),
                  .place = {},
                  .note = ""};
    } else if (kept_->covers(platform_, path)) {
        answer.reason = L::tr("你要求保留此项目");
    } else if (kept_->liesBelow(platform_, path)) {
        answer.reason = L::tr("其中有你保留的项目");
    }
    return answer.reason.empty() || !platform_.exists(path) ? std::nullopt : std::optional(std::move(answer));
}

/// The application that uses the path now, if one runs: asked at the start of a row and again each second.
std::optional<std::string> CleanRun::runningUser(const Subject& subject) {
    const CleanPlan::Row& row = subject.row;
    if (row.item.appInfo) {
        const auto now = std::chrono::steady_clock::now();
        if (!askedApplication_ || now - *askedApplication_ >= askAgain) {
            askedApplication_ = now;
            if (applicationRuns(context_, row.item)) {
                return row.item.title;
            }
        }
        return std::nullopt;
    }
    const bool isAsked = row.item.module == CleanerModule::privacy || row.item.module == CleanerModule::systemJunk;
    return isAsked ? owners_.ownerOf(subject.path, subject.place) : std::nullopt;
}

std::optional<std::string> CleanRun::refusal(const Subject& subject) const {
    if (isAmbiguous(platform_, subject.target.url, subject.place)) {
        return files::reason(EINVAL);
    }
    return subject.place ? guard_.refusalReason(subject.path, *subject.place) : guard_.refusalReason(subject.path);
}

/// Decides how one target is removed, and does it. A failed move to the Trash stays a failure: nothing is deleted in
/// its place.
CleanRun::Answer CleanRun::removeExisting(const Subject& subject) {
    const Path& path = subject.path;
    if (folderOf(path).holdsFlatpaks) {
        return removeFlatpak(subject);
    }
    RemovalRequest request{.path = path, .identity = subject.target.identity, .sameness = subject.target.sameness};
    const auto trashed = subject.place ? trashed_->find(path, *subject.place) : std::nullopt;
    if (!trashed && trashed_->names(path) && platform_.exists(path)) {
        // A link leads out of the Trash, to something of the user's.
        return {.fate = CleanupFate::Failed, .reason = files::reason(ELOOP), .place = {}, .note = ""};
    }
    if (trashed) {
        request.path = trashed->path;
    }
    Removal removal = trashed ? session_->removeFromTrash(request, trashed->trash) : session_->moveToTrash(request);
    const auto answer = [&](CleanupFate fate, std::string reason, bool endsClean = false) {
        return Answer{.fate = fate,
                      .reason = std::move(reason),
                      .place = std::move(removal.place),
                      .endsClean = endsClean,
                      .note = removal.noteRemains ? L::tr("已移除，但其回收记录仍保留") : "",
                      .moved = removal.moved};
    };
    switch (removal.result) {
    case RemovalResult::Done:
        return answer(trashed ? CleanupFate::Removed : CleanupFate::Trashed, "");
    case RemovalResult::Vanished:
        return answer(CleanupFate::Vanished, "");
    case RemovalResult::Changed:
        return answer(CleanupFate::Kept, L::tr("自扫描后已更改，已保留"));
    case RemovalResult::HoldsMount:
        return answer(CleanupFate::Kept, L::tr("其中有挂载点，已保留"));
    case RemovalResult::NoTrash:
        return answer(CleanupFate::Failed, L::tr("此磁盘没有废纸篓"));
    case RemovalResult::DiskFull:
        return answer(CleanupFate::Failed, trashed ? removal.reason : L::tr("此磁盘已满，请先清空废纸篓"), true);
    case RemovalResult::ReadOnly:
        return answer(CleanupFate::Failed, removal.reason, true);
    case RemovalResult::Stopped:
        report_.wasStopped = true;
        return answer(CleanupFate::Kept, L::tr("已停止，剩余部分仍在废纸篓中"));
    case RemovalResult::Failed:
        break;
    }
    return answer(CleanupFate::Failed, removal.reason);
}

CleanRun::Answer CleanRun::removeFlatpak(const Subject& subject) {
    const CleanupTarget& target = subject.target;
    const Path& path = subject.path;
    const std::optional<FileIdentity> found = platform_.identity(path);
    if (target.identity && found && !isSame(*target.identity, *found, target.sameness)) {
        return {.fate = CleanupFate::Kept, .reason = L::tr("自扫描后已更改，已保留"), .place = {}, .note = ""};
    }
    if (!platform_.exists(path)) {
        return {.fate = CleanupFate::Vanished, .reason = "", .place = {}, .note = ""};
    }
    Outcome outcome = uninstallFlatpak(context_, path);
    if (!outcome) {
        return {.fate = CleanupFate::Failed, .reason = std::move(outcome.error()), .place = {}, .note = ""};
    }
    return {.fate = CleanupFate::Removed, .reason = "", .place = {}, .note = ""};
}

const CleanupOutcome& CleanRun::count(const CleanupTarget& target, Answer answer) {
    switch (answer.fate) {
    case CleanupFate::Trashed:
        ++report_.trashedCount;
        report_.trashedBytes = checkedAdd(report_.trashedBytes, target.bytes);
        ++report_.removedCount;
        report_.processedBytes = checkedAdd(report_.processedBytes, target.bytes);
        break;
    case CleanupFate::Removed:
        report_.removedBytes = checkedAdd(report_.removedBytes, target.bytes);
        ++report_.removedCount;
        report_.processedBytes = checkedAdd(report_.processedBytes, target.bytes);
        break;
    case CleanupFate::Kept:
        ++report_.keptCount;
        note(line(target.url, answer.reason));
        break;
    case CleanupFate::Failed:
        fail(line(target.url, answer.reason));
        break;
    case CleanupFate::Untried:
        ++report_.untriedCount;
        break;
    case CleanupFate::Vanished:
        break;
    }
    if (!answer.note.empty()) {
        note(line(target.url, answer.note));
    }
    ended_ = ended_ || answer.endsClean;
    report_.outcomes.push_back({.path = target.url,
                                .fate = answer.fate,
                                .place = std::move(answer.place),
                                .bytes = target.bytes,
                                .identity = answer.moved ? answer.moved : target.identity,
                                .reason = std::move(answer.reason)});
    return report_.outcomes.back();
}

void CleanRun::note(std::string line) {
    if (report_.notes.size() < mostNotes) {
        report_.notes.push_back(std::move(line));
    }
}

void CleanRun::fail(std::string line) {
    ++report_.failedCount;
    if (report_.failures.size() < mostFailureLines) {
        report_.failures.push_back(std::move(line));
    }
}

} // namespace vellmoor
