#pragma once

#include "CleanerStore.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <cstdint>

namespace vellmoor {

/// What is ticked in the shown module, and what a clean of it would do: figures, and the words of the question that
/// stands before it.
class CleanOffer final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")
    Q_PROPERTY(QString selectedSize READ selectedSize NOTIFY changed FINAL)
    Q_PROPERTY(QString selectedText READ selectedText NOTIFY changed FINAL)
    /// Categories that hold something to clean.
    Q_PROPERTY(int selectedItemCount READ selectedItemCount NOTIFY changed FINAL)
    /// The line over the detail sheet: how many paths, how many bytes.
    Q_PROPERTY(QString selectedPathsText READ selectedPathsText NOTIFY changed FINAL)
    Q_PROPERTY(int recommendedCount READ recommendedCount NOTIFY changed FINAL)
    Q_PROPERTY(bool canClean READ canClean NOTIFY changed FINAL)
    /// Whether a clean shows its paths first: all but that of memory do.
    Q_PROPERTY(bool previewsClean READ previewsClean NOTIFY changed FINAL)
    /// Whether a clean removes anything for good.
    Q_PROPERTY(bool removesForGood READ removesForGood NOTIFY changed FINAL)
    Q_PROPERTY(QString cleanTitle READ cleanTitle NOTIFY changed FINAL)
    Q_PROPERTY(QString cleanBusyTitle READ cleanBusyTitle NOTIFY changed FINAL)
    Q_PROPERTY(QString confirmationTitle READ confirmationTitle NOTIFY changed FINAL)
    Q_PROPERTY(QString confirmationMessage READ confirmationMessage NOTIFY changed FINAL)
    /// What the confirmation adds, a line each, unless all goes to the Trash: how much does, how much goes for good,
    /// how much is memory.
    Q_PROPERTY(QStringList confirmationParts READ confirmationParts NOTIFY changed FINAL)

public:
    explicit CleanOffer(CleanerStore& store, QObject* parent = nullptr);
    void setModule(CleanerModule module);

    [[nodiscard]] QString selectedSize() const;
    [[nodiscard]] QString selectedText() const;
    [[nodiscard]] int selectedItemCount() const;
    [[nodiscard]] QString selectedPathsText() const;
    [[nodiscard]] int recommendedCount() const;
    [[nodiscard]] bool canClean() const;
    [[nodiscard]] bool previewsClean() const { return module_ != CleanerModule::memoryOptimization; }
    [[nodiscard]] bool removesForGood() const;
    [[nodiscard]] QString cleanTitle() const;
    [[nodiscard]] QString cleanBusyTitle() const;
    [[nodiscard]] QString confirmationTitle() const;
    [[nodiscard]] QString confirmationMessage() const;
    [[nodiscard]] QStringList confirmationParts() const;

Q_SIGNALS:
    void changed();

private:
    void noteSelectionChange();
    void tellChange();
    [[nodiscard]] QString riskSummary() const;
    /// Of what a module lists, as far as the shown one lists it too.
    [[nodiscard]] std::int64_t selectedBytesOf(CleanerModule part) const;

    CleanerStore& store_;
    CleanerModule module_;
    bool changePending_ = false;
};

} // namespace vellmoor
