#pragma once

#include "CleanerStore.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace vellmoor {

/// The result sheet's texts: what a clean or a memory optimisation did.
class ReportModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")
    /// Whether there is a report to show.
    Q_PROPERTY(bool present READ present NOTIFY changed FINAL)
    Q_PROPERTY(bool memory READ memory NOTIFY changed FINAL)
    Q_PROPERTY(bool failed READ failed NOTIFY changed FINAL)
    /// Nothing at all was processed though something was tried.
    Q_PROPERTY(bool nothingDone READ nothingDone NOTIFY changed FINAL)
    Q_PROPERTY(QString title READ title NOTIFY changed FINAL)
    Q_PROPERTY(QString subtitle READ subtitle NOTIFY changed FINAL)
    Q_PROPERTY(QString freed READ freed NOTIFY changed FINAL)
    Q_PROPERTY(QString processed READ processed NOTIFY changed FINAL)
    Q_PROPERTY(QString failures READ failures NOTIFY changed FINAL)
    /// The fourth tile: the change of memory use, or how many of the paths were processed.
    Q_PROPERTY(QString share READ share NOTIFY changed FINAL)
    /// The file caches before and after a memory optimisation; empty where the system tells none.
    Q_PROPERTY(QString caches READ caches NOTIFY changed FINAL)
    /// Where it went: each empty when it is nothing, or not known.
    Q_PROPERTY(QString trashed READ trashed NOTIFY changed FINAL)
    Q_PROPERTY(QString removedForGood READ removedForGood NOTIFY changed FINAL)
    Q_PROPERTY(QString freedNow READ freedNow NOTIFY changed FINAL)
    Q_PROPERTY(bool hasSums READ hasSums NOTIFY changed FINAL)
    /// Something of it lies in the Trash and can be put back, or removed for good.
    Q_PROPERTY(bool returnable READ returnable NOTIFY changed FINAL)
    /// The clean in the history.
    Q_PROPERTY(QString clean READ clean NOTIFY changed FINAL)
    /// Every failure, a line each.
    Q_PROPERTY(QStringList failureLines READ failureLines NOTIFY changed FINAL)
    /// What was kept on purpose, and what else is worth telling.
    Q_PROPERTY(QStringList noteLines READ noteLines NOTIFY changed FINAL)

public:
    explicit ReportModel(CleanerStore& store, QObject* parent = nullptr);
    /// The module whose clean the next report tells of.
    void setModule(CleanerModule module) { module_ = module; }
    [[nodiscard]] CleanerModule module() const { return module_; }

    [[nodiscard]] bool present() const { return store_.latestReport().has_value(); }
    [[nodiscard]] bool memory() const { return module_ == CleanerModule::memoryOptimization; }
    [[nodiscard]] bool failed() const { return report().failedCount > 0; }
    [[nodiscard]] bool nothingDone() const { return failed() && report().removedCount == 0; }
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString subtitle() const;
    [[nodiscard]] QString freed() const;
    [[nodiscard]] QString processed() const;
    [[nodiscard]] QString failures() const;
    [[nodiscard]] QString share() const;
    [[nodiscard]] QString caches() const;
    [[nodiscard]] QString trashed() const;
    [[nodiscard]] QString removedForGood() const;
    [[nodiscard]] QString freedNow() const;
    [[nodiscard]] bool hasSums() const;
    [[nodiscard]] bool returnable() const;
    [[nodiscard]] QString clean() const { return QString::fromStdString(report().historyId); }
    [[nodiscard]] QStringList failureLines() const;
    /// Puts all failures on the clipboard.
    Q_INVOKABLE void copyFailures() const;
    [[nodiscard]] QStringList noteLines() const;

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] const CleanupReport& report() const { return shown_; }
    CleanerStore& store_;
    CleanupReport shown_; ///< the last one: the sheet that closes still shows it
    CleanerModule module_ = CleanerModule::smartScan;
};

} // namespace vellmoor
