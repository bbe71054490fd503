// A test application: it runs until it is asked to end, and leaves a note of how it ended.
//
//   quit-app NOTE [stubborn]
//
// "ready" stands in the NOTE file when it listens. Asked by SIGTERM it adds "asked" and ends; a stubborn one adds the
// word and goes on. A process that was killed can add nothing.
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

bool note(const char* file, const char* word) {
    const int out = ::open(file, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (out < 0) {
        return false;
    }
    const auto length = static_cast<ssize_t>(std::strlen(word));
    const bool done = ::write(out, word, static_cast<std::size_t>(length)) == length;
    return ::close(out) == 0 && done;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("quit-app: NOTE is missing\n", stderr);
        return 2;
    }
    const bool stubborn = argc > 2 && std::strcmp(argv[2], "stubborn") == 0;
    sigset_t asked;
    sigemptyset(&asked);
    sigaddset(&asked, SIGTERM);
    if (sigprocmask(SIG_BLOCK, &asked, nullptr) != 0 || !note(argv[1], "ready\n")) {
        return 1;
    }
    while (true) {
        int signal = 0;
        if (sigwait(&asked, &signal) == 0 && (!note(argv[1], "asked\n") || !stubborn)) {
            return 0;
        }
    }
}
