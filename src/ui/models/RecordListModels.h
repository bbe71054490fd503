// The small lists: each shows one array of the store, whole.
#pragma once

#include "CleanerStore.h"
#include "Desktop.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace vellmoor {

/// A list of one row per record, reset as a whole when its array changes.
class RecordListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("a base")
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

public:
    explicit RecordListModel(CleanerStore& store, QObject* parent = nullptr)
        : QAbstractListModel(parent),
          store_(store) {}
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : count(); }
    [[nodiscard]] virtual int count() const = 0;
    /// Reads the array again.
    void reload();

Q_SIGNALS:
    void countChanged();

protected:
    [[nodiscard]] const CleanerStore& store() const { return store_; }

private:
    CleanerStore& store_;
};

// The base's name is spelled out below: Qt's type registration looks it up by this very text.

/// The sidebar's rows.
class ModuleListModel final : public vellmoor::RecordListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")

public:
    explicit ModuleListModel(CleanerStore& store, QObject* parent = nullptr) : RecordListModel(store, parent) {}
    [[nodiscard]] int count() const override { return static_cast<int>(allCleanerModules.size()); }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
};

/// The parts of the disk bar; placeholders while the store has none.
class StorageSegmentModel final : public vellmoor::RecordListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")

public:
    explicit StorageSegmentModel(CleanerStore& store, QObject* parent = nullptr);
    [[nodiscard]] int count() const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
};

/// The largest files of the last scan, for reading only.
class FileCandidateModel final : public vellmoor::RecordListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")

public:
    explicit FileCandidateModel(CleanerStore& store, QObject* parent = nullptr);
    [[nodiscard]] int count() const override { return static_cast<int>(store().fileCandidates().size()); }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
};

/// What starts at login.
class StartupListModel final : public vellmoor::RecordListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")
    Q_PROPERTY(int enabledCount READ enabledCount NOTIFY countChanged FINAL)

public:
    StartupListModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr);
    [[nodiscard]] int count() const override { return static_cast<int>(store().startupItems().size()); }
    [[nodiscard]] int enabledCount() const;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
    /// Shows the item's configuration in the file manager.
    Q_INVOKABLE void reveal(int row);

private:
    Desktop& desktop_;
};

/// The applications that use the most memory.
class MemoryAppListModel final : public vellmoor::RecordListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")

public:
    MemoryAppListModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr);
    [[nodiscard]] int count() const override { return static_cast<int>(store().memoryApps().size()); }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    Desktop& desktop_;
};

/// The parts of the memory bar: programs, file caches where the system tells them, and what is free; empty until a scan
/// has read the memory.
class MemoryPartModel final : public vellmoor::RecordListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")

public:
    explicit MemoryPartModel(CleanerStore& store, QObject* parent = nullptr);
    [[nodiscard]] int count() const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
};

/// Which folders Vellmoor may read.
class PermissionListModel final : public vellmoor::RecordListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")

public:
    explicit PermissionListModel(CleanerStore& store, QObject* parent = nullptr);
    [[nodiscard]] int count() const override { return static_cast<int>(store().permissionHints().size()); }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
};

} // namespace vellmoor
