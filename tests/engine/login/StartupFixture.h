// What the tests of the login items share.
#pragma once

#include "EngineHome.h"
#include "FileContent.h"
#include "found/ScanSnapshot.h"
#include "login/StartupItems.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vellmoor::test {

inline std::vector<StartupItem> startup(const EngineHome& home) {
    EngineContext context = home.context();
    return startupItems(context);
}

inline std::vector<std::string> labels(const EngineHome& home) {
    std::vector<std::string> all;
    for (const StartupItem& item : startup(home)) {
        all.push_back(item.label);
    }
    return all;
}

/// The only item; an empty one, and a failure, when there is another number.
inline StartupItem onlyItem(const EngineHome& home) {
    const std::vector<StartupItem> items = startup(home);
    if (items.size() != 1) {
        ADD_FAILURE() << items.size() << " items";
        return {};
    }
    return items.front();
}

inline StartupActionResult disable(const EngineHome& home, const StartupItem& item) {
    EngineContext context = home.context();
    return disableStartupItem(context, item);
}

inline StartupActionResult enable(const EngineHome& home, const StartupItem& item) {
    EngineContext context = home.context();
    return enableStartupItem(context, item);
}

using test::contentOf;

/// The arguments of every tool call, each call as one text.
inline std::vector<std::string> calls(const EngineHome& home) {
    std::vector<std::string> all;
    for (const Invocation& call : home.platform.invocations()) {
        std::string text;
        for (const std::string& argument : call.arguments) {
            text += (text.empty() ? "" : " ") + argument;
        }
        all.push_back(text);
    }
    return all;
}

} // namespace vellmoor::test
