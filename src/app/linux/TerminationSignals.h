#pragma once

#include <QObject>

namespace vellmoor {

/// SIGTERM, SIGINT and SIGHUP as a signal of Qt's, so that the end of a session ends the program in order: a clean
/// that runs is finished. One in a process; a second termination signal ends the process at once.
class TerminationSignals final : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(QObject* parent = nullptr);

Q_SIGNALS:
    void asked();
};

} // namespace vellmoor
