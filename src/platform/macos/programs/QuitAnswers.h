#pragma once

#include "Platform.h"

#include <vector>

namespace vellmoor::mac {

/// What came of asking each process of an application to quit; `answers` says of each whether the request was sent.
QuitOutcome quitOutcome(const std::vector<bool>& answers);

} // namespace vellmoor::mac
