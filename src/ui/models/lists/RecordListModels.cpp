#include "RecordListModels.h"

#include "ApplicationIconProvider.h"
#include "ByteCount.h"
#include "ModuleLook.h"
#include "Paths.h"
#include "QtText.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vellmoor {
namespace {

// The roles of all lists; each list answers its own ones.
enum Role : std::uint16_t {
    RawRole = Qt::UserRole + 1,
    TitleRole,
    SubtitleRole,
    SymbolRole,
    ValueRole,
    FractionRole,
    TintRole,
    NameRole,
    LocationRole,
    SizeRole,
    ModifiedRole,
    IconRole,
    EnabledRole,
    KindRole,
    ProcessesRole,
    MemoryRole,
    GrantedRole,
    RecommendationRole,
};

/// Null where there is no record, or no longer.
template <class Record>
const Record* recordAt(const std::vector<Record>& records, const KeyedRow* row) {
    const bool inside = row != nullptr && row->record < static_cast<int>(records.size());
    return inside ? &records[static_cast<std::size_t>(row->record)] : nullptr;
}

struct PlaceholderSegment {
    std::string_view label;
    double fraction;
    Tint tint;
};

// Shown before the first scan has read the disk.
constexpr std::array<PlaceholderSegment, 3> placeholders{
    {{"已使用", 0.72, Tint::cyan}, {"可清理", 0.06, Tint::green}, {"可用", 0.22, Tint::gray}}};

QVariant placeholderData(int row, int role) {
    const PlaceholderSegment& segment = placeholders.at(static_cast<std::size_t>(row));
    switch (role) {
    case TitleRole:
        return localised(segment.label);
    case FractionRole:
        return segment.fraction;
    case TintRole:
        return toQt(tintName(segment.tint));
    default:
        return QString();
    }
}

} // namespace

int RecordListModel::nameRole() const {
    return NameRole;
}

void RecordListModel::reload() {
    std::vector<KeyedRow> fresh;
    DistinctKeys keys(static_cast<std::size_t>(recordCount()));
    for (int record = 0; record < recordCount(); ++record) {
        fresh.push_back({.key = keys.next(keyOf(record)), .record = record});
    }
    setRows(fresh);
    Q_EMIT countChanged();
}

ModuleListModel::ModuleListModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : RecordListModel(store, desktop, parent) {
    reload();
}

int ModuleListModel::recordCount() const {
    return static_cast<int>(allCleanerModules.size());
}

std::string ModuleListModel::keyOf(int record) const {
    return std::string(rawValue(allCleanerModules.at(static_cast<std::size_t>(record))));
}

QVariant ModuleListModel::data(const QModelIndex& index, int role) const {
    if (index.row() < 0 || index.row() >= count()) {
        return {};
    }
    const CleanerModule module = allCleanerModules.at(static_cast<std::size_t>(index.row()));
    switch (role) {
    case RawRole:
        return toQt(rawValue(module));
    case TitleRole:
        return toQt(title(module));
    case SubtitleRole:
        return toQt(subtitle(module));
    case SymbolRole:
        return moduleSymbol(module);
    default:
        return {};
    }
}

QHash<int, QByteArray> ModuleListModel::roleNames() const {
    return {{RawRole, "module"}, {TitleRole, "title"}, {SubtitleRole, "subtitle"}, {SymbolRole, "symbol"}};
}

StorageSegmentModel::StorageSegmentModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : RecordListModel(store, desktop, parent) {
    connect(&store, &CleanerStore::storageSegmentsChanged, this, &StorageSegmentModel::reload);
    reload();
}

int StorageSegmentModel::recordCount() const {
    const std::size_t read = store().storageSegments().size();
    return static_cast<int>(read == 0 ? placeholders.size() : read);
}

/// The parts keep their places: their widths move from one reading to the next.
std::string StorageSegmentModel::keyOf(int record) const {
    return std::to_string(record);
}

QVariant StorageSegmentModel::data(const QModelIndex& index, int role) const {
    const KeyedRow* row = rowAt(index.row());
    if (row != nullptr && store().storageSegments().empty() && row->record < static_cast<int>(placeholders.size())) {
        return placeholderData(row->record, role);
    }
    const StorageSegment* segment = recordAt(store().storageSegments(), row);
    if (segment == nullptr) {
        return {};
    }
    switch (role) {
    case TitleRole:
        return toQt(segment->label);
    case ValueRole:
        return toQt(segment->value);
    case FractionRole:
        return std::clamp(segment->fraction, 0.0, 1.0);
    case TintRole:
        return toQt(tintName(segment->color));
    default:
        return {};
    }
}

QHash<int, QByteArray> StorageSegmentModel::roleNames() const {
    return {{TitleRole, "title"}, {ValueRole, "value"}, {FractionRole, "fraction"}, {TintRole, "tint"}};
}

FileCandidateModel::FileCandidateModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : RecordListModel(store, desktop, parent) {
    connect(&store, &CleanerStore::fileCandidatesChanged, this, &FileCandidateModel::reload);
    reload();
}

int FileCandidateModel::recordCount() const {
    return static_cast<int>(store().fileCandidates().size());
}

std::string FileCandidateModel::keyOf(int record) const {
    return store().fileCandidates().at(static_cast<std::size_t>(record)).url.native();
}

QVariant FileCandidateModel::data(const QModelIndex& index, int role) const {
    const FileCandidate* file = recordAt(store().fileCandidates(), rowAt(index.row()));
    if (file == nullptr) {
        return {};
    }
    switch (role) {
    case NameRole:
        return toQt(file->name);
    case LocationRole:
        return toQt(file->location);
    case SizeRole:
        return toQt(file->size);
    case ModifiedRole:
        return toQt(file->modified);
    case SymbolRole:
        return toQt(file->symbol);
    default:
        return {};
    }
}

QHash<int, QByteArray> FileCandidateModel::roleNames() const {
    return {{NameRole, "name"},
            {LocationRole, "location"},
            {SizeRole, "size"},
            {ModifiedRole, "modified"},
            {SymbolRole, "symbol"}};
}

std::vector<std::filesystem::path> FileCandidateModel::pathsOf(int row) const {
    const FileCandidate* file = recordAt(store().fileCandidates(), rowAt(row));
    return file == nullptr ? std::vector<std::filesystem::path>() : std::vector{file->url};
}

StartupListModel::StartupListModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : RecordListModel(store, desktop, parent) {
    connect(&store, &CleanerStore::startupItemsChanged, this, &StartupListModel::reload);
    reload();
}

int StartupListModel::enabledCount() const {
    return static_cast<int>(std::ranges::count_if(store().startupItems(), &StartupItem::isEnabled));
}

int StartupListModel::recordCount() const {
    return static_cast<int>(store().startupItems().size());
}

/// A switch moves the file into another folder; the item stays the same.
std::string StartupListModel::keyOf(int record) const {
    return store().startupItems().at(static_cast<std::size_t>(record)).plistURL.filename().native();
}

QVariant StartupListModel::data(const QModelIndex& index, int role) const {
    const StartupItem* item = recordAt(store().startupItems(), rowAt(index.row()));
    if (item == nullptr) {
        return {};
    }
    switch (role) {
    case NameRole:
        return toQt(item->name);
    case LocationRole:
        return toQt(displayPath(item->program ? std::filesystem::path(*item->program) : item->plistURL,
                                desktop().homeFolder()));
    case EnabledRole:
        return item->isEnabled;
    case KindRole:
        return item->startsAtLogin ? localised("登录启动") : localised("后台代理");
    case IconRole:
        return item->appURL ? applicationIconSource(desktop(), *item->appURL) : QString();
    default:
        return {};
    }
}

QHash<int, QByteArray> StartupListModel::roleNames() const {
    return {{NameRole, "name"},
            {LocationRole, "location"},
            {EnabledRole, "startsEnabled"},
            {KindRole, "kind"},
            {IconRole, "icon"}};
}

std::vector<std::filesystem::path> StartupListModel::pathsOf(int row) const {
    const StartupItem* item = recordAt(store().startupItems(), rowAt(row));
    return item == nullptr ? std::vector<std::filesystem::path>() : std::vector{item->plistURL};
}

MemoryAppListModel::MemoryAppListModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : RecordListModel(store, desktop, parent) {
    connect(&store, &CleanerStore::memoryAppsChanged, this, &MemoryAppListModel::reload);
    reload();
}

int MemoryAppListModel::recordCount() const {
    return static_cast<int>(store().memoryApps().size());
}

std::string MemoryAppListModel::keyOf(int record) const {
    return store().memoryApps().at(static_cast<std::size_t>(record)).id;
}

QVariant MemoryAppListModel::data(const QModelIndex& index, int role) const {
    const MemoryApp* app = recordAt(store().memoryApps(), rowAt(index.row()));
    if (app == nullptr) {
        return {};
    }
    switch (role) {
    case NameRole:
        return toQt(app->name);
    case ProcessesRole:
        return countText("%d 个进程", "1 个进程", app->processCount);
    case MemoryRole:
        return toQt(byteCountText(app->bytes));
    case IconRole:
        return app->path ? applicationIconSource(desktop(), *app->path) : QString();
    default:
        return {};
    }
}

QHash<int, QByteArray> MemoryAppListModel::roleNames() const {
    return {{NameRole, "name"}, {ProcessesRole, "processes"}, {MemoryRole, "memory"}, {IconRole, "icon"}};
}

std::vector<std::filesystem::path> MemoryAppListModel::pathsOf(int row) const {
    const MemoryApp* app = recordAt(store().memoryApps(), rowAt(row));
    return app == nullptr || !app->path ? std::vector<std::filesystem::path>()
                                        : std::vector<std::filesystem::path>{*app->path};
}

namespace {

struct MemoryPart {
    std::string_view label;
    std::int64_t bytes;
    Tint tint;
};

std::vector<MemoryPart> memoryParts(const MemorySnapshot& memory) {
    if (memory.totalBytes < 1) {
        return {};
    }
    std::vector<MemoryPart> parts{{"程序", memory.usedBytes(), Tint::orange}};
    if (memory.fileCacheBytes() > 0) {
        parts.push_back({"文件缓存", memory.fileCacheBytes(), Tint::mint});
    }
    parts.push_back({"空闲", memory.unusedBytes, Tint::gray});
    return parts;
}

} // namespace

MemoryPartModel::MemoryPartModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : RecordListModel(store, desktop, parent) {
    connect(&store, &CleanerStore::memorySnapshotChanged, this, &MemoryPartModel::reload);
    reload();
}

int MemoryPartModel::recordCount() const {
    return static_cast<int>(memoryParts(store().memorySnapshot()).size());
}

/// A part keeps its place by its colour: its width moves from one reading to the next.
std::string MemoryPartModel::keyOf(int record) const {
    return std::string(tintName(memoryParts(store().memorySnapshot()).at(static_cast<std::size_t>(record)).tint));
}

QVariant MemoryPartModel::data(const QModelIndex& index, int role) const {
    const std::vector<MemoryPart> parts = memoryParts(store().memorySnapshot());
    const MemoryPart* part = recordAt(parts, rowAt(index.row()));
    if (part == nullptr) {
        return {};
    }
    switch (role) {
    case TitleRole:
        return localised(part->label);
    case ValueRole:
        return toQt(byteCountText(part->bytes));
    case FractionRole: {
        const auto total = static_cast<double>(store().memorySnapshot().totalBytes);
        return std::clamp(static_cast<double>(part->bytes) / total, 0.0, 1.0);
    }
    case TintRole:
        return toQt(tintName(part->tint));
    default:
        return {};
    }
}

QHash<int, QByteArray> MemoryPartModel::roleNames() const {
    return {{TitleRole, "title"}, {ValueRole, "value"}, {FractionRole, "fraction"}, {TintRole, "tint"}};
}

PermissionListModel::PermissionListModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : RecordListModel(store, desktop, parent) {
    connect(&store, &CleanerStore::permissionHintsChanged, this, &PermissionListModel::reload);
    reload();
}

int PermissionListModel::recordCount() const {
    return static_cast<int>(store().permissionHints().size());
}

std::string PermissionListModel::keyOf(int record) const {
    return store().permissionHints().at(static_cast<std::size_t>(record)).title;
}

QVariant PermissionListModel::data(const QModelIndex& index, int role) const {
    const PermissionHint* hint = recordAt(store().permissionHints(), rowAt(index.row()));
    if (hint == nullptr) {
        return {};
    }
    switch (role) {
    case TitleRole:
        return toQt(hint->title);
    case SubtitleRole:
        return toQt(hint->description);
    case GrantedRole:
        return hint->isGranted;
    case SymbolRole:
        return toQt(hint->symbol);
    case RecommendationRole:
        return toQt(hint->recommendation);
    default:
        return {};
    }
}

QHash<int, QByteArray> PermissionListModel::roleNames() const {
    return {{TitleRole, "title"},
            {SubtitleRole, "subtitle"},
            {GrantedRole, "granted"},
            {SymbolRole, "symbol"},
            {RecommendationRole, "recommendation"}};
}

} // namespace vellmoor
