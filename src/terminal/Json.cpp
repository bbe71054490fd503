#include "Json.h"

#include <chrono>
#include <optional>

namespace vellmoor::terminal {

namespace {

Json json(const std::optional<std::string>& value) {
    return value ? Json(*value) : Json();
}

Json json(const std::optional<std::filesystem::path>& value) {
    return value ? Json(value->string()) : Json();
}

Json json(const std::optional<TimePoint>& date) {
    return date ? Json(std::chrono::duration<double>(date->time_since_epoch()).count()) : Json();
}

Json json(const MemorySnapshot& memory) {
    return {{"totalBytes", memory.totalBytes},
            {"freeBytes", memory.freeBytes},
            {"activeBytes", memory.activeBytes},
            {"wiredBytes", memory.wiredBytes},
            {"compressedBytes", memory.compressedBytes},
            {"cachedBytes", memory.cachedBytes},
            {"reclaimableBytes", memory.reclaimableBytes},
            {"unusedBytes", memory.unusedBytes}};
}

Json json(const std::optional<MemorySnapshot>& memory) {
    return memory ? json(*memory) : Json();
}

Json json(const std::optional<AppCleanupInfo>& info) {
    if (!info) {
        return {};
    }
    return {{"bundleIdentifier", json(info->bundleIdentifier)},
            {"appPath", info->appPath},
            {"appBytes", info->appBytes},
            {"residualBytes", info->residualBytes},
            {"residualCount", info->residualCount},
            {"isRunning", info->isRunning}};
}

const char* stateName(HistoryState state) {
    switch (state) {
    case HistoryState::CutOff:
        return "cutOff";
    case HistoryState::LeftoversStayed:
        return "leftoversStayed";
    case HistoryState::Finished:
        break;
    }
    return "finished";
}

Json rawValues(const std::vector<CleanerModule>& modules) {
    Json list = Json::array();
    for (const CleanerModule module : modules) {
        list.push_back(rawValue(module));
    }
    return list;
}

} // namespace

Json json(const CleanupTarget& target) {
    return {{"id", target.id.text()},      {"url", target.url.native()},
            {"name", target.name},         {"location", target.location},
            {"bytes", target.bytes},       {"files", target.files},
            {"modified", target.modified}, {"modifiedAt", json(target.modifiedAt)},
            {"symbol", target.symbol},     {"isSelected", target.isSelected},
            {"heldBack", target.heldBack}};
}

Json json(const CleanupItem& item) {
    return {{"id", item.id.text()},
            {"module", rawValue(item.module)},
            {"key", item.key},
            {"title", item.title},
            {"description", item.description},
            {"bytes", item.bytes},
            {"files", item.files},
            {"symbol", item.symbol},
            {"tint", tintName(item.tint)},
            {"risk", rawValue(item.risk)},
            {"isCleanable", item.isCleanable},
            {"appInfo", json(item.appInfo)},
            {"isSelected", item.isSelected},
            {"targets", json<CleanupTarget>(item.targets)}};
}

Json json(const FileCandidate& candidate) {
    return {{"id", candidate.id.text()},    {"name", candidate.name},         {"location", candidate.location},
            {"size", candidate.size},       {"modified", candidate.modified}, {"symbol", candidate.symbol},
            {"url", candidate.url.string()}};
}

Json json(const StorageSegment& segment) {
    return {{"id", segment.id.text()},
            {"label", segment.label},
            {"value", segment.value},
            {"fraction", segment.fraction},
            {"color", tintName(segment.color)}};
}

Json json(const MemoryApp& app) {
    return {{"id", app.id},           {"name", app.name},        {"bundleIdentifier", json(app.bundleIdentifier)},
            {"path", json(app.path)}, {"bytes", app.bytes},      {"processCount", app.processCount},
            {"pids", app.pids},       {"isActive", app.isActive}};
}

Json json(const StartupItem& item) {
    return {{"id", item.id},
            {"name", item.name},
            {"label", item.label},
            {"description", item.description},
            {"plistURL", item.plistURL.string()},
            {"appURL", json(item.appURL)},
            {"program", json(item.program)},
            {"isEnabled", item.isEnabled},
            {"startsAtLogin", item.startsAtLogin}};
}

Json json(const StartupActionResult& result) {
    return {{"succeeded", result.succeeded}, {"message", result.message}};
}

Json json(const PermissionHint& hint) {
    return {{"id", hint.id.text()},
            {"title", hint.title},
            {"description", hint.description},
            {"isGranted", hint.isGranted},
            {"symbol", hint.symbol},
            {"affectedModules", rawValues(hint.affectedModules)},
            {"recommendation", hint.recommendation}};
}

Json json(const ScanSnapshot& snapshot) {
    return {{"cleanupItems", json(snapshot.cleanupItems)},
            {"fileCandidates", json(snapshot.fileCandidates)},
            {"storageSegments", json(snapshot.storageSegments)},
            {"diskSummary", snapshot.diskSummary},
            {"startupCount", snapshot.startupCount},
            {"backgroundCount", snapshot.backgroundCount},
            {"privacyCount", snapshot.privacyCount},
            {"memorySnapshot", json(snapshot.memorySnapshot)},
            {"memoryApps", json(snapshot.memoryApps)},
            {"startupItems", json(snapshot.startupItems)},
            {"permissionHints", json(snapshot.permissionHints)}};
}

Json json(const ScanProgressUpdate& update) {
    return {{"stage", update.stage}, {"fraction", update.fraction}};
}

Json json(const ScannedPath& path) {
    return {{"path", path.url.string()}, {"bytes", path.bytes}, {"files", path.files}};
}

Json json(const CleanupOutcome& outcome) {
    return {{"path", outcome.path.native()},
            {"fate", rawValue(outcome.fate)},
            {"place", outcome.place.native()},
            {"bytes", outcome.bytes},
            {"reason", outcome.reason}};
}

Json json(const CleanupReport& report) {
    return {{"id", report.id.text()},
            {"completedAt", std::chrono::duration<double>(report.completedAt.time_since_epoch()).count()},
            {"attemptedCount", report.attemptedCount},
            {"removedCount", report.removedCount},
            {"failedCount", report.failedCount},
            {"keptCount", report.keptCount},
            {"untriedCount", report.untriedCount},
            {"wasStopped", report.wasStopped},
            {"trashedCount", report.trashedCount},
            {"trashedBytes", report.trashedBytes},
            {"removedBytes", report.removedBytes},
            {"freedNow", report.freedNow ? Json(*report.freedNow) : Json()},
            {"historyId", report.historyId},
            {"freedBytes", report.freedBytes},
            {"processedBytes", report.processedBytes},
            {"notes", report.notes},
            {"failures", report.failures},
            {"outcomes", json(report.outcomes)},
            {"memoryBefore", json(report.memoryBefore)},
            {"memoryAfter", json(report.memoryAfter)},
            {"message", report.message()}};
}

Json json(const HistoryItem& item) {
    return {{"index", item.index},         {"path", item.path},           {"title", item.title},
            {"bytes", item.bytes},         {"fate", rawValue(item.fate)}, {"place", item.place},
            {"isPutBack", item.isPutBack}, {"reason", item.reason}};
}

Json json(const HistoryItems& items) {
    Json list = Json::array();
    for (const HistoryItem& item : items.all()) {
        list.push_back(json(item));
    }
    return list;
}

Json json(const HistoryClean& clean) {
    return {{"id", clean.id},
            {"at", json(std::optional(clean.at))},
            {"module", rawValue(clean.module)},
            {"state", stateName(clean.state)},
            {"movedCount", clean.movedCount},
            {"movedBytes", clean.movedBytes},
            {"trashedCount", clean.trashedCount},
            {"trashedBytes", clean.trashedBytes},
            {"openCount", clean.openCount},
            {"openBytes", clean.openBytes},
            {"items", json(clean.items)}};
}

Json json(const HistorySwitch& change) {
    return {{"at", json(std::optional(change.at))},
            {"name", change.name},
            {"file", change.file.string()},
            {"isEnabled", change.isEnabled},
            {"canBePutBack", change.canBePutBack}};
}

Json json(const History& history) {
    return {{"cleans", json(history.cleans)}, {"switches", json(history.switches)}};
}

Json json(const RestoreOutcome& outcome) {
    return {{"path", outcome.path.string()},
            {"place", outcome.place.string()},
            {"fate", rawValue(outcome.fate)},
            {"bytes", outcome.bytes},
            {"reason", outcome.reason}};
}

Json json(const RestoreReport& report) {
    return {{"id", report.id.text()},
            {"completedAt", json(std::optional(report.completedAt))},
            {"attemptedCount", report.attemptedCount},
            {"restoredCount", report.restoredCount},
            {"restoredBytes", report.restoredBytes},
            {"failedCount", report.failedCount},
            {"untriedCount", report.untriedCount},
            {"wasStopped", report.wasStopped},
            {"failures", report.failures},
            {"outcomes", json(report.outcomes)},
            {"message", report.message()}};
}

std::string text(const Json& value, int indent) {
    return value.dump(indent, ' ', false, Json::error_handler_t::replace);
}

} // namespace vellmoor::terminal
