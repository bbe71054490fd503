#pragma once

namespace vellmoor {

/// Before the first window: draws with Qt Quick's software renderer where no graphics processor is at hand. A choice
/// that the user made in the environment stands.
void chooseRenderer();

} // namespace vellmoor
