// The memory page's rows and its two questions, for scripts that try them on real programs of this desktop.
//
//   memory-tool list                 one line a row: name, process numbers
//   memory-tool quit|end NAME        asks or ends the row of that name and prints the outcome
#include "LinuxPlatform.h"
#include "layouts/SystemLayout.h"
#include "service/SystemCleanerService.h"
#include "texts/L.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

using namespace vellmoor;

const char* text(QuitOutcome outcome) {
    switch (outcome) {
    case QuitOutcome::NotRunning:
        return "NotRunning";
    case QuitOutcome::Requested:
        return "Requested";
    case QuitOutcome::NoResponse:
        return "NoResponse";
    case QuitOutcome::CannotAsk:
        break;
    }
    return "CannotAsk";
}

int run(std::string_view deed, std::string_view name) {
    const LinuxPlatform platform;
    const SystemLayout layout = linuxLayout(processEnvironment(), platform.userId());
    SystemCleanerService service(platform, layout);
    const CancelToken never;
    const auto apps =
        service.scan(CleanerModule::memoryOptimization, [](const ScanProgressUpdate&) {}, never).memoryApps;
    if (deed == "list") {
        for (const MemoryApp& app : apps) {
            std::printf("%s", app.name.c_str());
            std::ranges::for_each(app.pids, [](std::int32_t pid) { std::printf("\t%d", pid); });
            std::printf("\n");
        }
        return EXIT_SUCCESS;
    }
    const auto app = std::ranges::find(apps, name, &MemoryApp::name);
    if (app == apps.end() || (deed != "quit" && deed != "end")) {
        std::fprintf(stderr, "memory-tool: no such deed or row\n");
        return EXIT_FAILURE;
    }
    std::puts(text(deed == "quit" ? service.requestQuit(*app) : service.endApplication(*app)));
    return EXIT_SUCCESS;
}

} // namespace

int main(int count, char** words) {
    L::setTextSet(TextSet::Linux);
    L::setLanguage(AppLanguage::english);
    return run(count > 1 ? words[1] : "", count > 2 ? words[2] : "");
}
