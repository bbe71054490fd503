#pragma once

#include "CleanerStore.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <deque>
#include <optional>

namespace vellmoor {

/// What a dialog asks before an application or a login item is touched. It holds the record itself, not its row: the
/// next list gives that to another. When the record no longer exists the question goes away and says so.
class Question final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")
    /// "quit", "end", "disable" or "restore"; empty while nothing is asked.
    Q_PROPERTY(QString kind READ kind NOTIFY changed FINAL)
    /// Of the application or item.
    Q_PROPERTY(QString name READ name NOTIFY changed FINAL)
    /// Another one for each question: a dialog that closes late must not take away the next.
    Q_PROPERTY(int number READ number NOTIFY changed FINAL)

public:
    explicit Question(CleanerStore& store, QObject* parent = nullptr);

    [[nodiscard]] QString kind() const;
    [[nodiscard]] QString name() const;
    [[nodiscard]] int number() const { return number_; }

    /// Asks about the record that is in that row of the list now.
    Q_INVOKABLE void askQuit(int row);
    Q_INVOKABLE void askStartup(int row);
    /// The user agreed to the question of that number, or closed its dialog; nothing for any other one.
    Q_INVOKABLE void accept(int number);
    Q_INVOKABLE void drop(int number);

Q_SIGNALS:
    void changed();
    /// The user agreed that the item be switched.
    void switchAgreed(const vellmoor::StartupItem& item);

private:
    enum class Farewell : std::uint8_t { Quit, End };

    void ask(std::optional<MemoryApp> app, Farewell farewell, std::optional<StartupItem> item);
    void askNext();
    void checkApp();
    void checkItem();

    CleanerStore& store_;
    std::deque<MemoryApp> waiting_; ///< that can only be ended; asked about one after another
    std::optional<MemoryApp> app_;
    std::optional<StartupItem> item_;
    Farewell farewell_ = Farewell::Quit;
    int number_ = 0;
};

} // namespace vellmoor
