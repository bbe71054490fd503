#include "Arguments.h"

#include "Words.h"

#include <system_error>

namespace vellmoor::probe {
namespace {

namespace fs = std::filesystem;

using Wrong = std::unexpected<std::string>;
using Step = std::expected<void, std::string>;
using terminal::Words;

std::expected<fs::path, std::string> folder(const std::string& option, const std::string& value) {
    std::error_code error;
    fs::path real = fs::canonical(value, error);
    if (error || !fs::is_directory(real, error)) {
        return Wrong(option + ": no such folder: " + value);
    }
    return real;
}

Step setFolder(const std::string& option, const std::string& value, Arguments& arguments) {
    auto found = folder(option, value);
    if (!found) {
        return Wrong(std::move(found.error()));
    }
    if (option == "--home") {
        arguments.home = *std::move(found);
    } else {
        arguments.root = *std::move(found);
    }
    return {};
}

Step setLayout(const std::string& value, Arguments& arguments) {
    if (value != "linux" && value != "macos") {
        return Wrong("--layout is linux or macos, not " + value);
    }
    arguments.layout = value == "linux" ? Layout::Linux : Layout::Mac;
    return {};
}

Step setLanguage(const std::string& value, Arguments& arguments) {
    const auto language = terminal::languageOf(value);
    if (!language) {
        return Wrong(language.error());
    }
    arguments.language = *language;
    return {};
}

Step readGeneralOption(Words& words, Arguments& arguments) {
    const std::string option = words.next();
    if (option == "--help") {
        return {}; // the command is Help as long as none is named
    }
    if (option != "--layout" && option != "--home" && option != "--root" && option != "--running" &&
        option != "--language") {
        return Wrong("unknown option " + option);
    }
    const auto value = words.valueOf(option);
    if (!value) {
        return Wrong(value.error());
    }
    if (option == "--layout") {
        return setLayout(*value, arguments);
    }
    if (option == "--language") {
        return setLanguage(*value, arguments);
    }
    if (option == "--running") {
        arguments.running = *value;
        return {};
    }
    return setFolder(option, *value, arguments);
}

Step readModule(Words& words, Arguments& arguments) {
    const auto word = words.valueOf("the command");
    if (!word) {
        return Wrong("which module? One of " + terminal::moduleNames());
    }
    const auto module = terminal::moduleOf(*word);
    if (!module) {
        return Wrong(module.error());
    }
    arguments.module = *module;
    return {};
}

Step readSelection(const std::string& value, Arguments& arguments) {
    if (value == "default") {
        arguments.selection = Selection::Default;
    } else if (value == "all") {
        arguments.selection = Selection::All;
    } else if (value == "none") {
        arguments.selection = Selection::None;
    } else {
        return Wrong("--select is default, all or none, not " + value);
    }
    return {};
}

Step readCommandOption(Words& words, Arguments& arguments) {
    const std::string option = words.next();
    if (option == "--progress" && arguments.command == Command::Scan) {
        arguments.showsProgress = true;
        return {};
    }
    const bool isClean = arguments.command == Command::Clean;
    if (!isClean || (option != "--select" && option != "--tick")) {
        return Wrong("this command does not know " + option);
    }
    auto value = words.valueOf(option);
    if (!value) {
        return Wrong(value.error());
    }
    if (option == "--select") {
        return readSelection(*value, arguments);
    }
    arguments.ticks.push_back(*std::move(value));
    return {};
}

Step readModuleCommand(Words& words, Arguments& arguments) {
    bool hasModule = false;
    while (!words.empty()) {
        const bool isOption = words.startsWithOption();
        if (hasModule && !isOption) {
            return Wrong("one module only");
        }
        if (const Step step = isOption ? readCommandOption(words, arguments) : readModule(words, arguments); !step) {
            return step;
        }
        hasModule = hasModule || !isOption;
    }
    return hasModule ? Step() : readModule(words, arguments);
}

Step readPaths(Words& words, Arguments& arguments) {
    while (!words.empty()) {
        arguments.paths.push_back(fs::absolute(words.next()));
    }
    return arguments.paths.empty() ? Wrong("measure needs a path") : Step();
}

Step readStartup(Words& words, Arguments& arguments) {
    const auto deed = words.valueOf("startup");
    if (deed && *deed == "list" && words.empty()) {
        arguments.command = Command::StartupList;
        return {};
    }
    if (!deed || (*deed != "disable" && *deed != "enable")) {
        return Wrong("startup takes list, disable ID or enable ID");
    }
    const auto id = words.valueOf("startup " + *deed);
    if (!id || !words.empty()) {
        return Wrong("startup " + *deed + " takes one ID");
    }
    arguments.command = *deed == "disable" ? Command::StartupDisable : Command::StartupEnable;
    arguments.startupId = *id;
    return {};
}

Step readCommand(Words& words, Arguments& arguments) {
    const std::string name = words.next();
    if (name == "startup") {
        return readStartup(words, arguments);
    }
    if (name == "measure") {
        arguments.command = Command::Measure;
        return readPaths(words, arguments);
    }
    if (name == "put-back") {
        arguments.command = Command::PutBack;
        return words.empty() ? Step() : Wrong("put-back takes nothing");
    }
    if (name == "scan") {
        arguments.command = Command::Scan;
    } else if (name == "report") {
        arguments.command = Command::Report;
    } else if (name == "clean") {
        arguments.command = Command::Clean;
    } else {
        return Wrong("unknown command " + name);
    }
    return readModuleCommand(words, arguments);
}

} // namespace

bool Arguments::changesFiles() const {
    return command == Command::Clean || command == Command::PutBack || command == Command::StartupDisable ||
           command == Command::StartupEnable;
}

std::expected<Arguments, std::string> parse(const std::vector<std::string>& list) {
    Arguments arguments;
    Words words(list);
    bool wantsHelp = false;
    while (words.startsWithOption()) {
        wantsHelp = wantsHelp || list.front() == "--help";
        if (const Step step = readGeneralOption(words, arguments); !step) {
            return Wrong(step.error());
        }
    }
    if (words.empty()) {
        return wantsHelp ? std::expected<Arguments, std::string>(arguments) : Wrong("which command? See --help");
    }
    if (const Step step = readCommand(words, arguments); !step) {
        return Wrong(step.error());
    }
    if (arguments.running && arguments.layout != Layout::Mac) {
        return Wrong("--running needs --layout macos; on Linux the processes below --root are read");
    }
    if (arguments.changesFiles() && !arguments.home) {
        return Wrong("this command changes files: it needs --home");
    }
    return arguments;
}

std::string help() {
    return R"(vellmoor-probe [--layout linux|macos] [--home DIR] [--root DIR] [--running FILE] [--language zh|en] COMMAND

  scan MODULE [--progress]   a ScanSnapshot; with --progress each update as one JSON line on standard error
  report MODULE              the same scan as a readable table
  measure PATH...            [{"path", "bytes", "files"}]
  clean MODULE [--select default|all|none] [--tick TITLE]...
                             scans, sets the selection, cleans; a CleanupReport and its message
  put-back                   takes back all that the history knows; a line for each clean
  startup list | disable ID | enable ID

  MODULE          smartScan, systemJunk, largeFiles, privacy, appUninstaller, performance, memoryOptimization, trash
  --home DIR      the home folder of the whole process; no variable of the real user counts
  --root DIR      stands for / in every absolute path outside the home
  --running FILE  the running applications (macOS): [{"name", "bundleIdentifier", "bundlePath", "pid", "isActive"}]
  --layout        that of the running system when it is left out; Linux shows both, a Mac its own

clean, put-back, disable and enable need --home, refuse the real one, and touch nothing outside --home and --root.
A wrong call exits with 2, a failure of the engine with 1.
)";
}

} // namespace vellmoor::probe
