#pragma once

#include "CleanerStore.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace vellmoor {

/// The header's figures and texts: the running scan, and what the last one found in the shown module.
class ScanModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")
    Q_PROPERTY(bool scanning READ scanning NOTIFY changed FINAL)
    Q_PROPERTY(bool cleaning READ cleaning NOTIFY changed FINAL)
    /// Whether the shown module has a result.
    Q_PROPERTY(bool scanned READ scanned NOTIFY changed FINAL)
    /// 0 to 1.
    Q_PROPERTY(double progress READ progress NOTIFY changed FINAL)
    /// Such as "42%".
    Q_PROPERTY(QString progressText READ progressText NOTIFY changed FINAL)
    /// Whether a scan can start now.
    Q_PROPERTY(bool ready READ ready NOTIFY changed FINAL)
    /// What the headline's figure is made of: how much is memory, how much is ticked; empty without a figure.
    Q_PROPERTY(QString findings READ findings NOTIFY changed FINAL)
    /// Whether a clean runs that tells how far it is, or a scan.
    Q_PROPERTY(bool working READ working NOTIFY changed FINAL)
    /// How far a running clean, or else the scan, has come; 0 to 1.
    Q_PROPERTY(double workProgress READ workProgress NOTIFY changed FINAL)
    Q_PROPERTY(QString stage READ stage NOTIFY changed FINAL)
    Q_PROPERTY(QString status READ status NOTIFY changed FINAL)
    /// The path that a clean is at; empty when none tells.
    Q_PROPERTY(QString current READ current NOTIFY changed FINAL)
    Q_PROPERTY(QString lastScan READ lastScan NOTIFY changed FINAL)
    Q_PROPERTY(QString title READ title NOTIFY changed FINAL)
    Q_PROPERTY(QString headline READ headline NOTIFY changed FINAL)
    Q_PROPERTY(QString description READ description NOTIFY changed FINAL)
    /// Inside the ring: empty before a scan and while one runs without a result.
    Q_PROPERTY(QString ringNumber READ ringNumber NOTIFY changed FINAL)
    Q_PROPERTY(QString ringUnit READ ringUnit NOTIFY changed FINAL)
    Q_PROPERTY(int itemCount READ itemCount NOTIFY changed FINAL)
    Q_PROPERTY(QString cleanable READ cleanable NOTIFY changed FINAL)
    Q_PROPERTY(QString diskSummary READ diskSummary NOTIFY changed FINAL)
    Q_PROPERTY(int startupCount READ startupCount NOTIFY changed FINAL)
    Q_PROPERTY(int backgroundCount READ backgroundCount NOTIFY changed FINAL)
    Q_PROPERTY(int privacyCount READ privacyCount NOTIFY changed FINAL)

public:
    explicit ScanModel(CleanerStore& store, QObject* parent = nullptr);
    void setModule(CleanerModule module);

    [[nodiscard]] bool scanning() const { return store_.isScanning(); }
    [[nodiscard]] bool cleaning() const { return store_.isCleaning(); }
    [[nodiscard]] bool scanned() const { return store_.hasResult(module_); }
    [[nodiscard]] double progress() const { return store_.scanProgress(); }
    [[nodiscard]] QString progressText() const;
    [[nodiscard]] bool ready() const { return !scanning() && !cleaning(); }
    [[nodiscard]] bool tellsClean() const { return cleaning() && store_.cleanProgress().has_value(); }
    [[nodiscard]] bool working() const { return scanning() || tellsClean(); }
    [[nodiscard]] double workProgress() const;
    [[nodiscard]] QString findings() const;
    [[nodiscard]] QString stage() const;
    [[nodiscard]] QString status() const;
    [[nodiscard]] QString current() const;
    [[nodiscard]] QString lastScan() const;
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString headline() const;
    [[nodiscard]] QString description() const;
    [[nodiscard]] QString ringNumber() const;
    [[nodiscard]] QString ringUnit() const;
    [[nodiscard]] int itemCount() const;
    [[nodiscard]] QString cleanable() const;
    [[nodiscard]] QString diskSummary() const;
    [[nodiscard]] int startupCount() const { return static_cast<int>(store_.startupCount()); }
    [[nodiscard]] int backgroundCount() const { return static_cast<int>(store_.backgroundCount()); }
    [[nodiscard]] int privacyCount() const { return static_cast<int>(store_.privacyCount()); }

Q_SIGNALS:
    void changed();
    /// For those who hear what they do not see: a scan began, went on by a quarter, or ended.
    void announced(const QString& text);

private:
    void announceStartOrEnd();
    void announceQuarter();
    [[nodiscard]] QString cleanText() const;
    CleanerStore& store_;
    CleanerModule module_ = CleanerModule::smartScan;
    int announcedQuarters_ = 0;
};

} // namespace vellmoor
