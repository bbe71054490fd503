#include "LargeFileListModel.h"

#include "QtText.h"

#include <algorithm>

namespace vellmoor {

LargeFileListModel::LargeFileListModel(CleanerStore& store, Desktop& desktop, QObject* parent)
    : CleanupListModel(store, desktop, parent) {
    setModule(CleanerModule::largeFiles);
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
