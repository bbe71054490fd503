#pragma once

#include <string>

namespace vellmoor::cli {

/// How far something has come, on standard error: on a terminal one line that is written over and over, elsewhere a
/// plain line for each new stage or tenth.
class ProgressLine {
public:
    explicit ProgressLine(bool isQuiet);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// `fraction`: 0 to 1. `stage`: what is done, which a plain line names; `detail`: for a terminal only.
    void show(double fraction, const std::string& stage, const std::string& detail = "");
    /// Takes the line away; the next show() brings it back.
    void clear();

private:
    bool isQuiet_;
    bool isTerminal_;
    bool isShown_ = false;
    std::string said_; ///< the last plain line
};

} // namespace vellmoor::cli
