// What the rows of a cleanup list say.
#include "ApplicationIconProvider.h"
#include "CleanupListModel.h"
#include "FileKindLook.h"
#include "QtText.h"
#include "texts/ByteCount.h"

#include <utility>

namespace vellmoor {
namespace {

QString itemName(int position) {
    return QStringLiteral("item.%1").arg(position);
}

QString pathText(const CleanupTarget& target) {
    return standsForFile(target) ? toQt(target.url.native()) : QString();
}

QString filesText(std::int64_t files) {
    return countText("%d 个文件", "1 个文件", files);
}

QString amountText(const CleanupItem& item) {
    const std::string size = item.sizeText();
    switch (item.module == CleanerModule::memoryOptimization ? 0 : item.files) { // memory has none
    case 0:
        return toQt(size);
    case 1:
        return filesText(1) + QStringLiteral(" · ") + toQt(size);
    default:
        return localised("%d 文件 · %@", groupedText(item.files).toStdString(), size);
    }
}

} // namespace

// Those that do not carry a path of /dev, or none.
bool standsForFile(const CleanupTarget& target) {
    const std::string& path = target.url.native();
    return path.starts_with('/') && !path.starts_with("/dev/");
}

QHash<int, QByteArray> CleanupListModel::roleNames() const {
    return {{NameRole, "name"},         {IsTargetRole, "isTarget"},     {TitleRole, "title"},
            {DetailRole, "detail"},     {AmountRole, "amount"},         {SizeRole, "size"},
            {ModifiedRole, "modified"}, {SymbolRole, "symbol"},         {TintRole, "tint"},
            {RiskRole, "risk"},         {RiskTitleRole, "riskTitle"},   {CleanableRole, "cleanable"},
            {TickedRole, "ticked"},     {PartialRole, "partial"},       {ExpandedRole, "expanded"},
            {LastRole, "last"},         {ExpandableRole, "expandable"}, {KindRole, "kind"},
            {IconRole, "icon"},         {KindSymbolRole, "kindSymbol"}, {RunningRole, "running"},
            {BundleRole, "bundle"},     {LeftoversRole, "leftovers"},   {PathRole, "path"},
            {FilesRole, "files"},       {ReturnableRole, "returnable"}};
}

QVariant CleanupListModel::data(const QModelIndex& index, int role) const {
    const KeyedRow* row = rowAt(index.row());
    if (row == nullptr) {
        return {};
    }
    const CleanupItem& item = itemOf(*row);
    if (role == IsTargetRole) {
        return row->part >= 0;
    }
    if (role == LastRole) {
        return index.row() + 1 == rowCount();
    }
    if (role == CleanableRole) {
        return item.isCleanable && (row->part < 0 || item.targets.at(static_cast<std::size_t>(row->part)).mayGo());
    }
    if (role == RiskRole) {
        return toQt(rawValue(item.risk));
    }
    if (role == RiskTitleRole) {
        const std::string risk = vellmoor::title(item.risk);
        // What lies in a Trash goes for good, however safe that is.
        return item.module == CleanerModule::trash && item.isCleanable ? localised("%@ · 永久删除", risk) : toQt(risk);
    }
    if (role == FilesRole) {
        return !pathsOf(index.row()).empty();
    }
    return row->part >= 0 ? targetData(*row, item, role) : categoryData(*row, item, role);
}

QVariant CleanupListModel::categoryData(const KeyedRow& row, const CleanupItem& item, int role) const {
    switch (role) {
    case NameRole:
        return itemName(row.record);
    case TitleRole:
        return toQt(item.title);
    case DetailRole:
        return toQt(item.description);
    case AmountRole:
        return amountText(item);
    case SizeRole:
        return toQt(item.sizeText());
    case SymbolRole:
        return toQt(item.symbol);
    case TintRole:
        return toQt(tintName(item.tint));
    case TickedRole:
        return item.isCleanable && item.isSelected;
    case PartialRole:
        return item.isSelected && std::cmp_less(ticksOf(row).selectedPaths, item.targets.size());
    case ExpandedRole:
        return isExpanded(row.key);
    case ExpandableRole:
        return !item.targets.empty();
    case PathRole:
        return item.targets.size() == 1 ? pathText(item.targets.front()) : QString();
    case ModifiedRole:
    case KindRole:
    case KindSymbolRole:
        return fileData(item, role);
    default:
        return appData(item, role);
    }
}

QVariant CleanupListModel::fileData(const CleanupItem& item, int role) const {
    if (item.targets.empty()) {
        return QString();
    }
    const CleanupTarget& file = item.targets.front();
    if (role == ModifiedRole) {
        return file.modifiedAt ? toQt(file.modified) : localised("未知");
    }
    const LargeFileKindFilter kind = fileKind(file.url, fileKinds());
    return role == KindSymbolRole ? kindSymbol(kind) : kindTitle(kind);
}

QVariant CleanupListModel::appData(const CleanupItem& item, int role) const {
    if (role == ReturnableRole) {
        return false;
    }
    if (!item.appInfo) {
        return role == RunningRole ? QVariant(false) : QVariant(QString());
    }
    switch (role) {
    case IconRole:
        return applicationIconSource(desktop(), item.appInfo->appPath);
    case RunningRole:
        return item.appInfo->isRunning;
    case BundleRole:
        return item.appInfo->bundleIdentifier ? toQt(*item.appInfo->bundleIdentifier) : localised("未读取到 Bundle ID");
    case LeftoversRole:
        return countText("%d 个残留", "1 个残留", item.appInfo->residualCount);
    default:
        return {};
    }
}

QVariant CleanupListModel::targetData(const KeyedRow& row, const CleanupItem& item, int role) const {
    const CleanupTarget& target = item.targets.at(static_cast<std::size_t>(row.part));
    switch (role) {
    case NameRole:
        return itemName(row.record) + QStringLiteral(".target.%1").arg(row.part);
    case TitleRole:
        return toQt(target.name);
    case PathRole:
        return pathText(target);
    case DetailRole:
        return toQt(target.heldBack.empty() ? target.location : target.location + " · " + target.heldBack) +
               (target.isFromClean ? QStringLiteral(" · ") + localised("来自清理，可放回") : QString());
    case ReturnableRole:
        return target.origin.has_value();
    case AmountRole:
        return filesText(target.files);
    case SizeRole:
        return toQt(target.sizeText());
    case ModifiedRole:
        return toQt(target.modified);
    case SymbolRole:
        return toQt(target.symbol);
    case TintRole:
        return toQt(tintName(item.tint));
    case TickedRole:
        return item.isCleanable && target.isSelected;
    case PartialRole:
    case ExpandedRole:
    case ExpandableRole:
    case RunningRole:
        return false;
    default:
        return QString();
    }
}

} // namespace vellmoor
