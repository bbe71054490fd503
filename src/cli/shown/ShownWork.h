#pragma once

#include "done/CleanProgress.h"

#include <string>

namespace vellmoor::cli {

class ProgressLine;

/// Shows a clean or a putting back on `line`, which must outlive the answer.
CleanProgressCallback showingOn(ProgressLine& line, const std::string& what);

} // namespace vellmoor::cli
