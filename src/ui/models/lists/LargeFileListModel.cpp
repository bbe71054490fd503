#include "LargeFileListModel.h"

#include "CheckedMath.h"
#include "QtText.h"
#include "texts/ByteCount.h"

#include <algorithm>

namespace vellmoor {

LargeFileListModel::LargeFileListModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : CleanupListModel(store, desktop, parent) {
    setModule(CleanerModule::largeFiles);
    connect(&store, &CleanerStore::cleanupItemsChanged, this, &LargeFileListModel::listAllWhenWanted);
    // What the user looks for may be any of the files.
    connect(this, &CleanupListModel::filterChanged, this, [this] {
        if (!search().isEmpty() || order() != QLatin1String("given")) {
            listAll();
        }
    });
    connect(this, &LargeFileListModel::filtersChanged, this, &LargeFileListModel::listAll);
}

int LargeFileListModel::resultCount() const {
    return itemCount() + static_cast<int>(store().furtherLargeFiles().size());
}

QString LargeFileListModel::moreText() const {
    const std::vector<CleanupItem>& further = store().furtherLargeFiles();
    if (further.empty()) {
        return {};
    }
    std::int64_t bytes = 0;
    for (const CleanupItem& file : further) {
        bytes = checkedAdd(bytes, file.bytes);
    }
    const std::string size = byteCountText(bytes);
    return further.size() == 1 ? localised("另有 1 个文件，共 %@", size)
                               : localised("另有 %d 个文件，共 %@",
                                           groupedText(static_cast<std::int64_t>(further.size())).toStdString(), size);
}

void LargeFileListModel::listAll() {
    wantsAll_ = true;
    store().listFurtherLargeFiles();
}

void LargeFileListModel::listAllWhenWanted() {
    if (wantsAll_) {
        store().listFurtherLargeFiles();
    }
}

void LargeFileListModel::setAllSelected(bool selected) {
    listAll();
    CleanupListModel::setAllSelected(selected);
}

void LargeFileListModel::setKind(int kind) {
    if (kind != this->kind() && kind >= 0 && kind < static_cast<int>(allLargeFileKinds.size())) {
        kind_ = allLargeFileKinds[static_cast<std::size_t>(kind)];
        rebuild();
        Q_EMIT filtersChanged();
    }
}

void LargeFileListModel::setAge(int age) {
    if (age != this->age() && age >= 0 && age < static_cast<int>(allLargeFileAges.size())) {
        age_ = allLargeFileAges[static_cast<std::size_t>(age)];
        rebuild();
        Q_EMIT filtersChanged();
    }
}

QStringList LargeFileListModel::kindTitles() const {
    QStringList titles;
    for (const LargeFileKindFilter kind : allLargeFileKinds) {
        titles << toQt(title(kind));
    }
    return titles;
}

QStringList LargeFileListModel::ageTitles() const {
    QStringList titles;
    for (const LargeFileAgeFilter age : allLargeFileAges) {
        titles << toQt(title(age));
    }
    return titles;
}

QString LargeFileListModel::choiceText() const {
    const QString chosen = CleanupListModel::choiceText();
    const bool isFiltered = kind_ != LargeFileKindFilter::all || age_ != LargeFileAgeFilter::all;
    return isFiltered ? chosen + QLatin1Char(' ') + toQt(rawValue(kind_)) + QLatin1Char(' ') + toQt(rawValue(age_))
                      : chosen;
}

void LargeFileListModel::recallChoice(CleanerModule module, const QString& text) {
    const auto named = [words = text.split(QLatin1Char(' '))](const auto& all, int word) {
        const auto* const found =
            std::ranges::find(all, words.value(word), [](auto filter) { return toQt(rawValue(filter)); });
        return found == all.end() ? all.front() : *found;
    };
    kind_ = named(allLargeFileKinds, 2);
    age_ = named(allLargeFileAges, 3);
    Q_EMIT filtersChanged();
    CleanupListModel::recallChoice(module, text);
}

void LargeFileListModel::showAll() {
    kind_ = LargeFileKindFilter::all;
    age_ = LargeFileAgeFilter::all;
    Q_EMIT filtersChanged();
    CleanupListModel::showAll();
}

std::vector<int> LargeFileListModel::listedItems() const {
    std::vector<int> listed = store().itemIndices(module(), CleanupFilter::all);
    const TimePoint now = std::chrono::system_clock::now();
    std::erase_if(listed, [&](int index) {
        const CleanupItem& item = store().cleanupItems().at(static_cast<std::size_t>(index));
        return std::ranges::none_of(item.targets, [&](const CleanupTarget& file) {
            return matches(kind_, file, fileKinds()) && matches(age_, file, now);
        });
    });
    return listed;
}

} // namespace vellmoor
