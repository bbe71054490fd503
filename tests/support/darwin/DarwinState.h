// What the files of the stand-in share: the traits of the moment and what is counted.
#pragma once

#include "DarwinSystem.h"

#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace vellmoor::test::darwin {

struct State {
    DarwinTraits traits;
    std::set<std::string> listed;
    std::multiset<std::string> statted;
    std::map<std::string, unsigned> batches; ///< by folder
    unsigned unguardedCalls = 0;
};

/// One lock for all: a test's threads are few.
std::mutex& lock();
/// Nothing while no DarwinSystem lives. Under the lock.
std::optional<State>& state();

// All of these under the lock, but for lastComponent().
const DarwinTraits& traits();
/// Counts a call for which the system may fetch something.
void noteCall();
std::string lastComponent(std::string_view path);

template <typename Value>
Value valueOr(const std::map<std::string, Value>& map, const std::string& name, Value other) {
    const auto found = map.find(name);
    return found != map.end() ? found->second : other;
}

} // namespace vellmoor::test::darwin
