#include "Json.h"
#include "Report.h"
#include "commands/CliCommands.h"
#include "commands/ModuleScan.h"
#include "service/SystemCleanerService.h"
#include "shown/ProgressLine.h"
#include "shown/Stop.h"

#include <iostream>
#include <unistd.h>
#include <utility>

namespace vellmoor::cli {

ScanSnapshot scanned(const terminal::OwnSystem& own, CleanerModule module, bool isQuiet) {
    SystemCleanerService service(*own.platform, own.layout);
    ProgressLine progress(isQuiet);
    const auto show = [&](const ScanProgressUpdate& update) { progress.show(update.fraction, update.stage); };
    ScanSnapshot snapshot = service.scan(module, show, stopOnSignals());
    snapshot.cleanupItems = countedOnce(std::move(snapshot.cleanupItems));
    return snapshot;
}

ExitStatus runScan(const terminal::OwnSystem& own, const Call& call) {
    const ScanSnapshot snapshot = scanned(own, call.module, call.isQuiet);
    if (call.wantsJson) {
        std::cout << terminal::text(terminal::json(snapshot)) << '\n';
        return ExitStatus::Done;
    }
    std::cout << terminal::report(snapshot, {.module = call.module,
                                             .home = own.layout.home.string(),
                                             .isBold = ::isatty(STDOUT_FILENO) != 0,
                                             .isForCleaning = true});
    return ExitStatus::Done;
}

} // namespace vellmoor::cli
