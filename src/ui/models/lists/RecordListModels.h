// The small lists: each shows one array of the store, whole.
#pragma once

#include "CleanerStore.h"
#include "Desktop.h"
#include "KeyedListModel.h"

#include <QtQml/qqmlregistration.h>

#include <string>

namespace vellmoor {

/// A list of one row per record.
class RecordListModel : public vellmoor::KeyedListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("a base")
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

public:
    RecordListModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr)
        : KeyedListModel(desktop, parent),
          store_(store) {}
    [[nodiscard]] int count() const { return rowCount(); }
    /// Reads the array again.
    void reload();

Q_SIGNALS:
    void countChanged();

protected:
    [[nodiscard]] const CleanerStore& store() const { return store_; }
    [[nodiscard]] int nameRole() const override;
    [[nodiscard]] virtual int recordCount() const = 0;
    /// What the record is, whatever its place; the same key twice is told apart by the base.
    [[nodiscard]] virtual std::string keyOf(int record) const = 0;

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
    ModuleListModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr);
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

protected:
    [[nodiscard]] int recordCount() const override;
    [[nodiscard]] std::string keyOf(int record) const override;
};

/// The parts of the disk bar; placeholders while the store has none.
class StorageSegmentModel final : public vellmoor::RecordListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")

public:
    StorageSegmentModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr);
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

protected:
    [[nodiscard]] int recordCount() const override;
    [[nodiscard]] std::string keyOf(int record) const override;
};

/// The largest files of the last scan, for reading only.
class FileCandidateModel final : public vellmoor::RecordListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")

public:
    FileCandidateModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr);
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

protected:
    [[nodiscard]] int recordCount() const override;
    [[nodiscard]] std::string keyOf(int record) const override;
    [[nodiscard]] std::vector<std::filesystem::path> pathsOf(int row) const override;
};

/// What starts at login.
class StartupListModel final : public vellmoor::RecordListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")
    Q_PROPERTY(int enabledCount READ enabledCount NOTIFY countChanged FINAL)

public:
    StartupListModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr);
    [[nodiscard]] int enabledCount() const;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

protected:
    [[nodiscard]] int recordCount() const override;
    [[nodiscard]] std::string keyOf(int record) const override;
    [[nodiscard]] std::vector<std::filesystem::path> pathsOf(int row) const override;
};

/// The applications that use the most memory.
class MemoryAppListModel final : public vellmoor::RecordListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")

public:
    MemoryAppListModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr);
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

protected:
    [[nodiscard]] int recordCount() const override;
    [[nodiscard]] std::string keyOf(int record) const override;
    [[nodiscard]] std::vector<std::filesystem::path> pathsOf(int row) const override;
};

/// The parts of the memory bar: programs, file caches where the system tells them, and what is free; empty until a scan
/// has read the memory.
class MemoryPartModel final : public vellmoor::RecordListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")

public:
    MemoryPartModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr);
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

protected:
    [[nodiscard]] int recordCount() const override;
    [[nodiscard]] std::string keyOf(int record) const override;
};

/// Which folders Vellmoor may read.
class PermissionListModel final : public vellmoor::RecordListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")

public:
    PermissionListModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr);
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

protected:
    [[nodiscard]] int recordCount() const override;
    [[nodiscard]] std::string keyOf(int record) const override;
};

} // namespace vellmoor
