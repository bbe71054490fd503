#pragma once

#include <QObject>

namespace vellmoor {

/// SIGTERM, SIGINT and SIGHUP as a signal of Qt's, so that the end of a session ends the program in order: a clean
/// that runs is finished. One in a process; a second termination signal ends the process at once.
class TerminationSignals final : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(QObject* parent = nullptr);
    /// Whether one was sent, also while no event loop runs that could say so.
    [[nodiscard]] static bool wereSent();

Q_SIGNALS:
    void asked();
};

} // namespace vellmoor
