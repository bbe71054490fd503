#include "shown/Stop.h"

#include <csignal>
#include <initializer_list>

namespace vellmoor::cli {
namespace {

CancelToken& token() {
    static CancelToken one; // made before a handler may look at it
    return one;
}

extern "C" void askToStop(int) {
    token().cancel();
}

} // namespace

CancelToken& stopOnSignals() {
    CancelToken& asked = token();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        std::signal(signal, &askToStop);
    }
    std::signal(SIGPIPE, SIG_IGN);
    return asked;
}

} // namespace vellmoor::cli
