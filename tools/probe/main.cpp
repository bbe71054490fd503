// vellmoor-probe: the engine without a window. What it can do stands in Arguments.cpp.
#include "Arguments.h"
#include "Json.h"
#include "Report.h"
#include "Session.h"
#include "disk/Paths.h"
#include "found/ScanSnapshot.h"
#include "login/StartupItems.h"
#include "scan/PathMeasurement.h"
#include "service/SystemCleanerService.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <iostream>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace vellmoor::probe {
namespace {

using terminal::Json;
using terminal::json;
using terminal::report;
using terminal::text;

constexpr int succeeded = 0;
constexpr int failed = 1;
constexpr int wrongCall = 2;

int complain(const std::string& line) {
    std::cerr << "vellmoor-probe: " << line << '\n';
    return wrongCall;
}

void print(const Json& value) {
    std::cout << text(value) << '\n';
}

ScanSnapshot scan(const Session& session, CleanerModule module, const ProgressCallback& progress) {
    SystemCleanerService service(*session.platform, session.layout);
    return service.scan(module, progress, CancelToken());
}

int runScan(const Session& session, const Arguments& arguments) {
    const auto show = [&](const ScanProgressUpdate& update) {
        if (arguments.showsProgress) {
            std::cerr << text(json(update), -1) << '\n';
        }
    };
    print(json(scan(session, arguments.module, show)));
    return succeeded;
}

int runReport(const Session& session, const Arguments& arguments) {
    const bool isWatched = ::isatty(STDERR_FILENO) != 0;
    const auto show = [&](const ScanProgressUpdate& update) {
        if (isWatched) {
            std::cerr << "\r\x1b[K" << static_cast<int>(update.fraction * 100) << " % " << update.stage << std::flush;
        }
    };
    ScanSnapshot snapshot = scan(session, arguments.module, show);
    snapshot.cleanupItems = countedOnce(std::move(snapshot.cleanupItems)); // marks are made by a Smart Scan only
    if (isWatched) {
        std::cerr << "\r\x1b[K" << std::flush;
    }
    std::cout << report(
        snapshot,
        {.module = arguments.module, .home = session.layout.home.string(), .isBold = ::isatty(STDOUT_FILENO) != 0});
    return succeeded;
}

int runMeasure(const Session& session, const Arguments& arguments) {
    EngineContext context(*session.platform, session.layout, std::chrono::system_clock::now());
    std::vector<ScannedPath> measured;
    for (const Path& path : arguments.paths) {
        const PathStats size = stats(context, path);
        measured.push_back({.url = path, .bytes = size.bytes, .files = size.files, .modified = std::nullopt});
    }
    print(json(measured));
    return succeeded;
}

/// A throw-away home is no reason to touch this machine: its volumes' Trash, its crash reports.
bool mayBeCleaned(const Session& session, const CleanupItem& item, const Path& path) {
    const Path& root = session.layout.root;
    return item.module == CleanerModule::memoryOptimization || isStrictlyBelow(path, session.layout.home) ||
           (root != "/" && isStrictlyBelow(path, root));
}

void select(const Session& session, const Arguments& arguments, std::vector<CleanupItem>& items) {
    for (CleanupItem& item : items) {
        const bool isTicked = std::ranges::find(arguments.ticks, item.title) != arguments.ticks.end();
        const bool isWhole = item.isCleanable && (isTicked || arguments.selection == Selection::All);
        const bool keeps = arguments.selection == Selection::Default;
        item.isSelected = isWhole || (keeps && item.isSelected);
        for (CleanupTarget& target : item.targets.edit()) {
            target.isSelected = (isWhole || (keeps && target.isSelected)) && mayBeCleaned(session, item, target.url);
        }
    }
}

int runClean(const Session& session, const Arguments& arguments) {
    std::vector<CleanupItem> items = scan(session, arguments.module, [](const ScanProgressUpdate&) {}).cleanupItems;
    for (const std::string& tick : arguments.ticks) {
        const auto isIt = [&](const CleanupItem& item) { return item.title == tick && item.isCleanable; };
        if (std::ranges::none_of(items, isIt)) {
            return complain("no row that can be cleaned is titled \"" + tick + '"');
        }
    }
    select(session, arguments, items);
    SystemCleanerService service(*session.platform, session.layout);
    const CancelToken untilDone;
    print(json(service.clean(items, {}, untilDone)));
    return succeeded;
}

/// Takes back all that the history knows, the newest clean first, after what a kill has left was put right.
int runPutBack(const Session& session) {
    SystemCleanerService service(*session.platform, session.layout);
    service.recover();
    History history = service.history();
    if (!history.problem.empty()) {
        return complain(history.problem);
    }
    std::ranges::sort(history.cleans, std::ranges::greater(), &HistoryClean::at);
    const CancelToken untilDone;
    bool isWhole = true;
    for (const HistoryClean& clean : history.cleans) {
        const RestoreReport report = service.putBack(clean.id, {}, {}, untilDone);
        std::cout << report.message() << '\n';
        for (const RestoreOutcome& outcome : report.outcomes) {
            if (outcome.fate != RestoreFate::Restored) {
                isWhole = false;
                complain(outcome.path.string() + ": " + outcome.reason);
            }
        }
    }
    return isWhole ? succeeded : failed;
}

int runStartup(const Session& session, const Arguments& arguments) {
    EngineContext context(*session.platform, session.layout, std::chrono::system_clock::now());
    const std::vector<StartupItem> items = startupItems(context);
    if (arguments.command == Command::StartupList) {
        print(json(items));
        return succeeded;
    }
    const auto item = std::ranges::find(items, arguments.startupId, &StartupItem::id);
    if (item == items.end()) {
        return complain("no login item has the ID " + arguments.startupId);
    }
    SystemCleanerService service(*session.platform, session.layout);
    const StartupActionResult result = arguments.command == Command::StartupDisable ? service.disableStartupItem(*item)
                                                                                    : service.enableStartupItem(*item);
    print(json(result));
    return result.succeeded ? succeeded : failed;
}

int run(const std::vector<std::string>& words) {
    const auto arguments = parse(words);
    if (!arguments) {
        return complain(arguments.error());
    }
    if (arguments->command == Command::Help) {
        std::cout << help();
        return succeeded;
    }
    const auto session = openSession(*arguments);
    if (!session) {
        return complain(session.error());
    }
    switch (arguments->command) {
    case Command::Scan:
        return runScan(*session, *arguments);
    case Command::Report:
        return runReport(*session, *arguments);
    case Command::Measure:
        return runMeasure(*session, *arguments);
    case Command::Clean:
        return runClean(*session, *arguments);
    case Command::PutBack:
        return runPutBack(*session);
    default:
        return runStartup(*session, *arguments);
    }
}

} // namespace
} // namespace vellmoor::probe

int main(int count, char** words) {
    try {
        const int status = vellmoor::probe::run({words + 1, words + count});
        std::cout.flush();
        return std::cout ? status : 1;
    } catch (const std::exception& error) {
        std::cerr << "vellmoor-probe: " << error.what() << '\n';
        return 1;
    }
}
