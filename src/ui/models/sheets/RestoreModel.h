#pragma once

#include "CleanerStore.h"
#include "Desktop.h"
#include "KeyedListModel.h"

#include <QtQml/qqmlregistration.h>

namespace vellmoor {

/// What could not be put back, and why.
class RestoreModel final : public vellmoor::KeyedListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")
    /// Whether something stayed, which has to be read.
    Q_PROPERTY(bool present READ present NOTIFY changed FINAL)
    Q_PROPERTY(QString message READ message NOTIFY changed FINAL)

public:
    enum Role : std::uint16_t {
        NameRole = Qt::UserRole + 1, ///< of the file
        ReasonRole,
        TakenRole, ///< something else has its name: both can be shown
    };

    RestoreModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr);
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
    [[nodiscard]] bool present() const;
    [[nodiscard]] QString message() const { return QString::fromStdString(message_); }
    /// Shows what lies in the Trash and what has its place.
    Q_INVOKABLE void showBoth(int row) const;

Q_SIGNALS:
    void changed();
    /// Everything that was asked for went back.
    void succeeded(const QString& message);

protected:
    [[nodiscard]] std::vector<std::filesystem::path> pathsOf(int row) const override;
    [[nodiscard]] int nameRole() const override { return NameRole; }

private:
    void read();
    [[nodiscard]] const RestoreOutcome* outcomeAt(int row) const;

    CleanerStore& store_;
    std::vector<RestoreOutcome> stayed_; ///< the sheet that closes still shows them
    std::string message_;
};

} // namespace vellmoor
