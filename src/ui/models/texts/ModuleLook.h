#pragma once

#include "found/CleanerModule.h"

#include <QString>

namespace vellmoor {

/// The symbol of a module in the sidebar and in its header.
QString moduleSymbol(CleanerModule module);
/// The headline over a module's page, localised.
QString moduleHeadline(CleanerModule module);
/// The sentence under the headline, localised.
QString moduleDescription(CleanerModule module);
/// What a clean of the module is called while it runs, localised.
QString cleaningTitle(CleanerModule module);

} // namespace vellmoor
