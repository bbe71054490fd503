#include "call/Call.h"

#include "Words.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <system_error>
#include <utility>

namespace vellmoor::cli {
namespace {

namespace fs = std::filesystem;

using Wrong = std::unexpected<std::string>;
using Step = std::expected<void, std::string>;
using terminal::Words;

constexpr std::array<std::pair<std::string_view, Command>, 7> commands{{{"scan", Command::Scan},
                                                                        {"clean", Command::Clean},
                                                                        {"history", Command::History},
                                                                        {"put-back", Command::PutBack},
                                                                        {"keep", Command::Keep},
                                                                        {"kept", Command::Kept},
                                                                        {"offer", Command::Offer}}};

/// An option that is there or not.
struct Switch {
    std::string_view name;
    bool Call::* field;
    std::vector<Command> of;
};

const std::vector<Switch>& switches() {
    using enum Command;
    static const std::vector<Switch> all{{"--yes", &Call::isConfirmed, {Clean}},
                                         {"--only", &Call::onlyTicked, {Clean}},
                                         {"--for-good", &Call::mayRemoveForGood, {Clean}},
                                         {"--memory", &Call::mayFreeMemory, {Clean}},
                                         {"--dry-run", &Call::isDryRun, {Clean, PutBack}},
                                         {"--json", &Call::wantsJson, {Scan, Clean, History, PutBack, Kept}},
                                         {"--quiet", &Call::isQuiet, {Scan, Clean, PutBack}}};
    return all;
}

/// As the user means it: from the current folder, links seen through only where ".." needs it.
fs::path absolutePath(const std::string& word) {
    const fs::path path = fs::absolute(word);
    const bool climbs = std::ranges::find(path, fs::path("..")) != path.end();
    std::error_code unreadable; // then it stays as it is written, and is refused
    const fs::path plain = climbs ? fs::weakly_canonical(path, unreadable) : path;
    return unreadable ? path : plain;
}

Step readOption(Words& words, Call& call) {
    const std::string option = words.next();
    if (option == "--language") {
        const auto word = words.valueOf(option);
        const auto language = word ? terminal::languageOf(*word) : Wrong(word.error());
        if (!language) {
            return Wrong(language.error());
        }
        call.language = *language;
        return {};
    }
    if (option == "--tick" && call.command == Command::Clean) {
        auto tick = words.valueOf(option);
        if (!tick) {
            return Wrong(tick.error());
        }
        call.ticks.push_back(*std::move(tick));
        return {};
    }
    const auto found = std::ranges::find(switches(), option, &Switch::name);
    if (found == switches().end() || std::ranges::find(found->of, call.command) == found->of.end()) {
        return Wrong(L::tr("此命令没有选项 %@", option));
    }
    call.*(found->field) = true;
    return {};
}

/// A word that is no option: what the command works on.
Step readWord(const std::string& word, Call& call, bool isFirst) {
    switch (call.command) {
    case Command::Keep:
    case Command::Offer:
        if (word.empty()) {
            return Wrong(L::tr("路径不能为空"));
        }
        call.paths.push_back(absolutePath(word));
        return {};
    case Command::Scan:
    case Command::Clean:
        if (isFirst) {
            const auto module = terminal::moduleOf(word);
            call.module = module.value_or(call.module);
            return module ? Step() : Wrong(module.error());
        }
        break;
    case Command::PutBack:
        if (isFirst) {
            call.clean = word;
            return {};
        }
        break;
    default:
        break;
    }
    return Wrong(L::tr("多余的参数：%@", word));
}

Step readCommand(const std::string& word, Call& call) {
    const auto found = std::ranges::find(commands, word, &std::pair<std::string_view, Command>::first);
    if (found == commands.end()) {
        return Wrong(L::tr("没有名为 %@ 的命令，请看 --help", word));
    }
    call.command = found->second;
    return {};
}

/// What only the whole call tells.
Step checkWhole(const Call& call, bool hasWord) {
    if (call.command == Command::Clean && !hasWord) {
        return Wrong(L::tr("要清理哪个模块？可用：%@", terminal::moduleNames()));
    }
    if (call.command == Command::Clean && !call.isConfirmed && !call.isDryRun) {
        return Wrong(L::tr("清理会改动文件：请加 --yes，或用 --dry-run 先看结果"));
    }
    if (call.onlyTicked && call.ticks.empty()) {
        return Wrong(L::tr("--only 需要至少一个 --tick"));
    }
    if ((call.command == Command::Keep || call.command == Command::Offer) && call.paths.empty()) {
        return Wrong(L::tr("需要一个路径"));
    }
    return {};
}

} // namespace

bool Call::changesFiles() const {
    switch (command) {
    case Command::Clean:
    case Command::PutBack:
        return !isDryRun;
    case Command::Keep:
    case Command::Offer:
        return true;
    default:
        return false;
    }
}

std::optional<AppLanguage> askedLanguage(const std::vector<std::string>& words) {
    const auto option = std::ranges::find(words, "--language");
    return option == words.end() || option + 1 == words.end() ? std::nullopt : appLanguage(*(option + 1));
}

std::expected<Call, std::string> parseCall(const std::vector<std::string>& list) {
    Call call{.language = askedLanguage(list)};
    for (const auto& [option, command] : {std::pair("--help", Command::Help), {"--version", Command::Version}}) {
        if (std::ranges::find(list, option) != list.end()) {
            call.command = command;
            return call;
        }
    }
    Words words(list);
    bool hasCommand = false;
    bool hasWord = false;
    bool endsOptions = false; // behind "--" even what looks like an option is a word
    while (!words.empty()) {
        Step step;
        if (!endsOptions && words.front() == "--") {
            endsOptions = true;
            words.next();
        } else if (!endsOptions && words.startsWithOption()) {
            step = readOption(words, call);
        } else if (!hasCommand) {
            hasCommand = true;
            step = readCommand(words.next(), call);
        } else {
            step = readWord(words.next(), call, !hasWord);
            hasWord = true;
        }
        if (!step) {
            return Wrong(step.error());
        }
    }
    if (!hasCommand) {
        return Wrong(L::tr("需要一个命令，请看 --help"));
    }
    if (const Step step = checkWhole(call, hasWord); !step) {
        return Wrong(step.error());
    }
    return call;
}

} // namespace vellmoor::cli
