#include "shown/ProgressLine.h"

#include "TextTable.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <sys/ioctl.h>
#include <unistd.h>

namespace vellmoor::cli {
namespace {

constexpr std::size_t usualWidth = 80;

std::size_t terminalWidth() {
    winsize size{};
    const bool isKnown = ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : usualWidth;
}

/// A terminal that knows no control codes says so.
bool isFullTerminal() {
    const char* name = std::getenv("TERM");
    return ::isatty(STDERR_FILENO) != 0 && name != nullptr && std::string(name) != "dumb";
}

int percent(double fraction) {
    return static_cast<int>(std::clamp(fraction, 0.0, 1.0) * 100);
}

} // namespace

ProgressLine::ProgressLine(bool isQuiet) : isQuiet_(isQuiet), isTerminal_(isFullTerminal()) {}

ProgressLine::~ProgressLine() {
    clear();
}

void ProgressLine::show(double fraction, const std::string& stage, const std::string& detail) {
    if (isQuiet_) {
        return;
    }
    if (isTerminal_) {
        const std::string line =
            std::to_string(percent(fraction)) + " %  " + stage + (detail.empty() ? "" : "  " + detail);
        std::cerr << "\r\x1b[K" << terminal::fitted(line, terminalWidth() - 1) << std::flush;
        isShown_ = true;
        return;
    }
    const std::string line = std::to_string(percent(fraction) / 10 * 10) + " %  " + stage;
    if (line != said_) {
        std::cerr << line << '\n';
        said_ = line;
    }
}

void ProgressLine::clear() {
    if (isShown_) {
        std::cerr << "\r\x1b[K" << std::flush;
        isShown_ = false;
    }
}

} // namespace vellmoor::cli
