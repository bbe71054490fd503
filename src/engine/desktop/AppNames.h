// How an application is known: by its name, its identifier, and whether it is the system's own.
#pragma once

#include "scan/EngineContext.h"

#include <optional>
#include <string>
#include <string_view>

namespace vellmoor {

/// Applications that are never offered for removal: the system's own, and this program.
bool isProtectedSystemAppPath(const EngineContext& context, const Path& path);
/// The first application of that identifier: on macOS a bundle of the application folders, on Linux a desktop
/// entry, the user's first.
std::optional<Path> appLookupByBundleID(EngineContext& context, std::string_view identifier);
/// The name of a bundle or of a desktop entry.
std::string appDisplayName(EngineContext& context, const Path& app);
/// The name in a bundle's property list, else its folder's name without the extension.
std::string bundleName(const EngineContext& context, const Path& bundle);
/// The identifier of a bundle or of a desktop entry.
std::optional<std::string> appIdentifier(EngineContext& context, const Path& app);
/// The last piece of a dotted identifier, with dashes and underscores as spaces.
std::string friendlyName(std::string_view identifier, std::string_view fallback);

} // namespace vellmoor
