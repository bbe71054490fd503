#include "scan/Offers.h"

#include "disk/Paths.h"
#include "texts/L.h"

#include <algorithm>
#include <optional>

namespace vellmoor {
namespace {

bool staysWhole(const EngineContext& context, const Path& path) {
    const Platform& platform = context.platform();
    if (platform.isPackage(path)) {
        return true;
    }
    const Path place = platform.realPlace(path).value_or(path);
    return std::ranges::any_of(context.layout().wholeFolders, [&](const Path& whole) {
        return isAtOrBelow(path, whole) || isAtOrBelow(place, platform.realPath(whole).value_or(whole));
    });
}

/// What lies directly in a folder that may be split.
std::optional<std::vector<FolderEntry>> partsOf(const EngineContext& context, const Path& path, Splitting splitting) {
    if (splitting == Splitting::Never || staysWhole(context, path)) {
        return std::nullopt;
    }
    auto entries = context.platform().entries(path);
    return entries ? std::optional(*std::move(entries)) : std::nullopt; // a closed folder can only stay
}

void addOffers(EngineContext& context, const Path& path, Splitting splitting, std::vector<Offer>& offers) {
    const Platform& platform = context.platform();
    const KeptPaths& kept = keptPaths(context);
    if (kept.covers(platform, path)) {
        return;
    }
    if (!kept.liesBelow(platform, path)) {
        offers.push_back({.path = path, .heldBack = ""});
        return;
    }
    const auto parts = partsOf(context, path, splitting);
    if (!parts) {
        offers.push_back({.path = path, .heldBack = L::tr("其中有你保留的项目，而它只能整体移除")});
        return;
    }
    for (const FolderEntry& part : *parts) {
        if (!platform.isMountPoint(path / part.name)) { // another disk is no part of it
            addOffers(context, path / part.name, splitting, offers);
        }
    }
}

} // namespace

const KeptPaths& keptPaths(EngineContext& context) {
    struct Known {
        std::optional<KeptPaths> list;
    };
    auto& known = context.remembered<Known>().list;
    if (!known) {
        known = KeptPaths::read(context.platform(), context.layout()).value_or(KeptPaths());
    }
    return *known;
}

std::vector<Offer> offersOf(EngineContext& context, const Path& path, Splitting splitting) {
    std::vector<Offer> offers;
    addOffers(context, path, splitting, offers);
    return offers;
}

} // namespace vellmoor
