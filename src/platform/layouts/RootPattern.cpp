#include "layouts/RootPattern.h"

#include "disk/Glob.h"
#include "disk/Paths.h"

#include <algorithm>

namespace vellmoor {
namespace {

/// "*{A|B}" taken apart.
RootComponent component(std::string_view text) {
    const std::size_t brace = text.find('{');
    if (brace == std::string_view::npos) {
        return {.names = std::string(text), .holding = {}};
    }
    const std::string_view held = text.substr(brace + 1, text.size() - brace - 2);
    return {.names = std::string(text.substr(0, brace)), .holding = separated(held, '|')};
}

} // namespace

std::vector<RootComponent> components(const RootPattern& pattern) {
    std::vector<RootComponent> levels;
    for (const std::string& text : separated(pattern.below, '/')) {
        levels.push_back(component(text));
    }
    return levels;
}

bool admits(const RootPattern& pattern, const RootComponent& component, std::string_view name) {
    return !name.starts_with('.') && globMatchesAny(component.names, name) &&
           std::ranges::none_of(pattern.except, [&](const std::string& never) { return globMatches(never, name); });
}

} // namespace vellmoor
