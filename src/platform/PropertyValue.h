// Property lists (macOS) as values, and which of their values count: one of an unexpected kind counts as absent.
#pragma once

#include "Platform.h"

#include <map>
#include <string>
#include <variant>
#include <vector>

namespace vellmoor {

/// One value, as far as its kind matters here; the first alternative stands for every other kind, and for the Boolean
/// false.
struct PropertyValue : std::variant<std::monostate, std::string, bool, std::vector<PropertyValue>> {
    using variant::variant;
};

using PropertyDictionary = std::map<std::string, PropertyValue>;

/// The names of a bundle, out of its Info.plist.
BundleInfo bundleInfoIn(const PropertyDictionary& values);

/// The keys of a launch agent. An argument that is no text makes the whole list of them count as absent.
LaunchAgent launchAgentIn(const PropertyDictionary& values);

} // namespace vellmoor
