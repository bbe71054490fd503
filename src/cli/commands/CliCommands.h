// The commands: each does what the call asks for, prints it, and answers the exit status.
#pragma once

#include "OwnSystem.h"
#include "call/Call.h"
#include "call/ExitStatus.h"

namespace vellmoor::cli {

ExitStatus runScan(const terminal::OwnSystem& own, const Call& call);
ExitStatus runClean(const terminal::OwnSystem& own, const Call& call);
ExitStatus runHistory(const terminal::OwnSystem& own, const Call& call);
ExitStatus runPutBack(const terminal::OwnSystem& own, const Call& call);
ExitStatus runKeep(const terminal::OwnSystem& own, const Call& call);
ExitStatus runKept(const terminal::OwnSystem& own, const Call& call);
ExitStatus runOffer(const terminal::OwnSystem& own, const Call& call);

} // namespace vellmoor::cli
