#pragma once

#include <QProcess>
#include <QStringList>

#include <string>

namespace vellmoor::journey {

/// A process of the test application, installed in the home as "Sleeper". Ends with this object, whatever the test
/// did.
class RunningApp {
public:
    /// Puts the program and its desktop entry into the home.
    static void install();

    explicit RunningApp(const QStringList& manner = {});
    ~RunningApp();
    RunningApp(const RunningApp&) = delete;
    RunningApp& operator=(const RunningApp&) = delete;

    /// What it noted of its life: "ready", "asked".
    [[nodiscard]] static std::string note();
    /// Shows the engine this process and no other one of the machine.
    void list() const;
    [[nodiscard]] bool runs() const { return process_.state() == QProcess::Running; }
    [[nodiscard]] bool endedByItself() const;
    [[nodiscard]] qint64 pid() const { return process_.processId(); }

private:
    QProcess process_;
};

} // namespace vellmoor::journey
