#include "start/TerminationSignals.h"

#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace vellmoor {
namespace {

/// Written by the handler, read by the event loop. -1: none.
int writingEnd = -1;
volatile std::sig_atomic_t sent = 0;

void tell(int) {
    sent = 1;
    const char one = 1;
    // The pipe takes one byte; when it does not, the loop was told already.
    [[maybe_unused]] const auto written = ::write(writingEnd, &one, 1);
}

} // namespace

bool TerminationSignals::wereSent() {
    return sent != 0;
}

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return; // the signals end the process at once, as they do without this object
    }
    writingEnd = ends[1];
    auto* notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        Q_EMIT asked();
    });
    struct sigaction action{};
    action.sa_handler = tell;
    // The handler is for the first signal only: whoever sends a second one does not want to wait.
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        ::sigaction(number, &action, nullptr);
    }
}

} // namespace vellmoor
