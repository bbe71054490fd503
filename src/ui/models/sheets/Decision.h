#pragma once

#include "CleanerStore.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace vellmoor {

/// What a dialog asks before something of the history is ended for good.
class Decision final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")
    /// "finish", "forGood" or "forget"; empty while nothing is asked.
    Q_PROPERTY(QString kind READ kind NOTIFY changed FINAL)
    Q_PROPERTY(QString title READ title NOTIFY changed FINAL)
    Q_PROPERTY(QString message READ message NOTIFY changed FINAL)
    Q_PROPERTY(QString action READ action NOTIFY changed FINAL)

public:
    explicit Decision(CleanerStore& store, QObject* parent = nullptr) : QObject(parent), store_(store) {}

    [[nodiscard]] QString kind() const { return kind_; }
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString message() const;
    [[nodiscard]] QString action() const;

    /// Whether the rest of a clean that was cut off is to be done.
    Q_INVOKABLE void askFinish(const QString& clean);
    /// Whether what that clean put into the Trash is to go for good.
    Q_INVOKABLE void askForGood(const QString& clean);
    /// Whether the history is to be forgotten.
    Q_INVOKABLE void askForget();
    Q_INVOKABLE void accept();
    Q_INVOKABLE void drop();

Q_SIGNALS:
    void changed();

private:
    void ask(const QString& kind, const QString& clean);
    [[nodiscard]] const HistoryClean* clean() const;

    CleanerStore& store_;
    QString kind_;
    std::string clean_;
};

} // namespace vellmoor
