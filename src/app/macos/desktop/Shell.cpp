#include "desktop/Shell.h"

namespace vellmoor {

void performEdit(std::string_view action, const std::function<bool(std::string_view)>& window,
                 const std::function<void()>& responders) {
    if (!window || !window(action)) {
        responders();
    }
}

} // namespace vellmoor
