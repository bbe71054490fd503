#include "programs/QuitAnswers.h"

#include <algorithm>

namespace vellmoor::mac {

QuitOutcome quitOutcome(const std::vector<bool>& answers) {
    if (answers.empty()) {
        return QuitOutcome::NotRunning;
    }
    return std::ranges::find(answers, true) != answers.end() ? QuitOutcome::Requested : QuitOutcome::NoResponse;
}

} // namespace vellmoor::mac
