#pragma once

#include "CleanerStore.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace vellmoor {

/// The memory figures as texts; "--" for each that no scan has read yet.
class MemoryModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")
    /// False until a scan has read the memory.
    Q_PROPERTY(bool known READ known NOTIFY changed FINAL)
    Q_PROPERTY(QString total READ total NOTIFY changed FINAL)
    Q_PROPERTY(QString used READ used NOTIFY changed FINAL)
    Q_PROPERTY(QString available READ available NOTIFY changed FINAL)
    Q_PROPERTY(QString reclaimable READ reclaimable NOTIFY changed FINAL)
    /// 0 to 1.
    Q_PROPERTY(double usage READ usage NOTIFY changed FINAL)
    /// Whether the system tells how much of the available memory holds file caches.
    Q_PROPERTY(bool hasCaches READ hasCaches NOTIFY changed FINAL)
    Q_PROPERTY(QString usageText READ usageText NOTIFY changed FINAL)
    Q_PROPERTY(QString pressure READ pressure NOTIFY changed FINAL)
    /// The name of the tint that says how tight memory is.
    Q_PROPERTY(QString pressureTint READ pressureTint NOTIFY changed FINAL)

public:
    explicit MemoryModel(CleanerStore& store, QObject* parent = nullptr);

    [[nodiscard]] bool known() const { return snapshot().totalBytes > 0; }
    [[nodiscard]] QString total() const;
    [[nodiscard]] QString used() const;
    [[nodiscard]] QString available() const;
    [[nodiscard]] QString reclaimable() const;
    [[nodiscard]] double usage() const { return snapshot().usagePercent() / 100.0; }
    [[nodiscard]] bool hasCaches() const { return known() && snapshot().fileCacheBytes() > 0; }
    [[nodiscard]] QString usageText() const;
    [[nodiscard]] QString pressure() const;
    [[nodiscard]] QString pressureTint() const;

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] const MemorySnapshot& snapshot() const { return store_.memorySnapshot(); }
    [[nodiscard]] QString amount(std::int64_t bytes) const;
    CleanerStore& store_;
};

} // namespace vellmoor
