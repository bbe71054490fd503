#include "start/Wish.h"

namespace vellmoor {
namespace {

constexpr std::string_view showAction = "module";
constexpr std::string_view scanAction = "scan"; // packaging/linux names these two
constexpr std::string_view emptyTrashAction = "empty-trash";

} // namespace

WishedAction actionOf(const Wish& wish) {
    const std::string module(wish.module ? rawValue(*wish.module) : std::string_view());
    switch (wish.deed) {
    case Wish::Deed::scan:
        return {.name = std::string(scanAction), .module = module};
    case Wish::Deed::offerEmptyTrash:
        return {.name = std::string(emptyTrashAction), .module = {}};
    case Wish::Deed::none:
        break;
    }
    return {.name = std::string(wish.module ? showAction : std::string_view()), .module = module};
}

std::optional<Wish> wishOf(std::string_view action, std::string_view module) {
    if (action == showAction) {
        return Wish{.module = cleanerModule(module), .deed = Wish::Deed::none};
    }
    if (action == scanAction) {
        return Wish{.module = cleanerModule(module), .deed = Wish::Deed::scan};
    }
    if (action == emptyTrashAction) {
        return Wish{.module = {}, .deed = Wish::Deed::offerEmptyTrash};
    }
    return std::nullopt;
}

} // namespace vellmoor
