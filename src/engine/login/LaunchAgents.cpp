#include "desktop/AppNames.h"
#include "desktop/DesktopEntries.h"
#include "disk/Paths.h"
#include "login/StartupEntries.h"

#include <algorithm>

namespace vellmoor {
namespace {

/// The text up to and including the first ".app"; nothing without one.
std::optional<std::string> bundlePart(const std::string& text) {
    static constexpr std::string_view ending = ".app";
    const auto sameLetter = [](char a, char b) { return a == (b >= 'A' && b <= 'Z' ? b - 'A' + 'a' : b); };
    const auto found = std::ranges::search(text, ending, [&](char a, char b) { return sameLetter(b, a); });
    if (found.empty()) {
        return std::nullopt;
    }
    return std::string(text.begin(), found.end());
}

} // namespace

std::optional<Path> appURLForStartupItem(EngineContext& context, std::string_view label,
                                         const std::optional<std::string>& program,
                                         const std::vector<std::string>& arguments) {
    std::vector<std::string> candidates;
    if (program) {
        candidates.push_back(*program);
    }
    candidates.insert(candidates.end(), arguments.begin(), arguments.end());
    for (const std::string& candidate : candidates) {
        const std::optional<std::string> bundle = bundlePart(candidate);
        if (!bundle || !bundle->starts_with('/')) {
            continue; // an agent has no working folder that a relative path could count from
        }
        const Path path = placedProgram(context.layout(), *bundle);
        if (context.platform().exists(path)) {
            return path;
        }
    }
    return appLookupByBundleID(context, label);
}

std::optional<StartupFacts> launchAgentFacts(EngineContext& context, const Path& file) {
    const std::optional<LaunchAgent> agent = context.platform().launchAgent(file);
    if (!agent) {
        return std::nullopt;
    }
    StartupFacts facts;
    facts.label = agent->label && !agent->label->empty() ? *agent->label : file.stem().string();
    facts.program = agent->program;
    if (!facts.program && !agent->arguments.empty()) {
        facts.program = agent->arguments.front();
    }
    facts.application = appURLForStartupItem(context, facts.label, facts.program, agent->arguments);
    facts.startsAtLogin = agent->hasKeepAlive || agent->runAtLoad;
    return facts;
}

} // namespace vellmoor
