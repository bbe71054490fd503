#include "desktop/Workspace.h"

#include <algorithm>

namespace vellmoor {

std::optional<Placement> placedInSquare(double width, double height, int side) {
    if (!(width > 0) || !(height > 0) || side < 1) {
        return std::nullopt;
    }
    const double room = side;
    const double shrink = std::min({1.0, room / width, room / height});
    const Placement shrunk{.width = width * shrink, .height = height * shrink};
    return Placement{.x = (room - shrunk.width) / 2,
                     .y = (room - shrunk.height) / 2,
                     .width = shrunk.width,
                     .height = shrunk.height};
}

} // namespace vellmoor
