#include "DarwinSystem.h"

#include "DarwinState.h"

#include <utility>

namespace vellmoor::test {
namespace darwin {

std::mutex& lock() {
    static std::mutex only;
    return only;
}

std::optional<State>& state() {
    static std::optional<State> only;
    return only;
}

const DarwinTraits& traits() {
    static const DarwinTraits plain;
    return state() ? state()->traits : plain;
}

void noteCall() {
    if (state() && threadMayFetch()) {
        ++state()->unguardedCalls;
    }
}

std::string lastComponent(std::string_view path) {
    return std::string(path.substr(path.find_last_of('/') + 1));
}

} // namespace darwin

DarwinSystem::DarwinSystem(DarwinTraits traits) {
    const std::lock_guard guard(darwin::lock());
    darwin::state().emplace().traits = std::move(traits);
}

DarwinSystem::~DarwinSystem() {
    const std::lock_guard guard(darwin::lock());
    darwin::state().reset();
}

std::set<std::string> DarwinSystem::listed() const {
    const std::lock_guard guard(darwin::lock());
    return darwin::state()->listed;
}

unsigned DarwinSystem::unguardedCalls() const {
    const std::lock_guard guard(darwin::lock());
    return darwin::state()->unguardedCalls;
}

std::multiset<std::string> DarwinSystem::statted() const {
    const std::lock_guard guard(darwin::lock());
    return darwin::state()->statted;
}

} // namespace vellmoor::test
