// Moves outside the Trash, by Foundation, whose sentences the user reads. Platform.h says what each one answers.
#pragma once

#include "Platform.h"

namespace vellmoor::mac {

Outcome moveItem(const Path& from, const Path& to);
Outcome createFolder(const Path& folder);

} // namespace vellmoor::mac
