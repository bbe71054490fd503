#include "clean/RunningOwners.h"

#include "desktop/DesktopEntries.h"
#include "disk/Glob.h"
#include "disk/Paths.h"
#include "privacy/Privacy.h"
#include "processes/ProcessTable.h"
#include "scan/UserPlaces.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vellmoor {
namespace {

constexpr std::chrono::seconds lifetime{1};

bool overlap(const Path& a, const Path& b) {
    return isAtOrBelow(a, b) || isAtOrBelow(b, a);
}

/// The child of the owned folder in which `path` lies, if it is one of those that are meant; empty: another place.
std::string ownedChild(const OwnedFolders& owned, const Path& path) {
    if (!isStrictlyBelow(path, owned.folder)) {
        return {};
    }
    const std::string child = path.lexically_relative(owned.folder).begin()->string();
    return globMatchesAny(owned.names, child) ? child : std::string();
}

} // namespace

RunningOwners& RunningOwners::of(EngineContext& context) {
    struct Known {
        std::optional<RunningOwners> owners;
    };
    std::optional<RunningOwners>& known = context.remembered<Known>().owners;
    if (!known) {
        known.emplace(context);
    }
    return *known;
}

RunningOwners::RunningOwners(EngineContext& context) : context_(context) {
    for (const OwnedFolders& owned : context.layout().owned) {
        add(owned);
    }
    // The traces themselves: a profile may lie anywhere.
    for (const auto& browser : browserPrivacyDefinitions(context.platform(), context.layout())) {
        for (const PrivacyCategory& category : browser.categories) {
            for (const Path& path : category.urls) {
                add({path, "", browser.name, browser.processNames});
            }
        }
    }
}

void RunningOwners::add(OwnedFolders folders) {
    const std::optional<Path> real = context_.platform().realPath(folders.folder);
    folders.folder = context_.platform().standardized(folders.folder);
    owned_.push_back(folders);
    if (real && *real != folders.folder) {
        folders.folder = *real;
        owned_.push_back(std::move(folders));
    }
}

std::optional<std::string> RunningOwners::ownerOf(const Path& path) {
    const Path plain = context_.platform().standardized(path);
    refreshWhenOld();
    return inUse_.empty() ? std::nullopt : ownerOf(plain, context_.platform().realPlace(plain));
}

std::optional<std::string> RunningOwners::ownerOf(const Path& path, const std::optional<Path>& place) {
    refreshWhenOld();
    for (const OwnedFolders& owned : inUse_) {
        std::optional<std::string> owner = runningOwner(owned, path);
        if (!owner && place && *place != path) {
            owner = runningOwner(owned, *place);
        }
        if (owner) {
            return owner;
        }
    }
    return std::nullopt;
}

void RunningOwners::refreshWhenOld() {
    const Moment now = std::chrono::steady_clock::now();
    if (!asked_ || now - *asked_ >= lifetime) {
        running_ = std::exchange(mayShareLook_, false) ? runningNames(context_)
                                                       : runningProcessNames(context_.platform(), context_.layout());
        asked_ = now;
        inUse_.clear();
        std::ranges::copy_if(owned_, std::back_inserter(inUse_), [&](const OwnedFolders& one) { return mayRun(one); });
    }
}

/// Whether one of the applications that own the folders runs; a token that ends with ":" stands for several.
bool RunningOwners::mayRun(const OwnedFolders& owned) const {
    return std::ranges::any_of(owned.tokens, [&](const std::string& token) {
        const auto first = running_.lower_bound(token);
        return first != running_.end() && (token.ends_with(':') ? first->starts_with(token) : *first == token);
    });
}

std::optional<std::string> RunningOwners::runningOwner(const OwnedFolders& owned, const Path& path) const {
    const std::string child = owned.names.empty() ? std::string() : ownedChild(owned, path);
    if (owned.names.empty() ? !overlap(path, owned.folder) : child.empty()) {
        return std::nullopt;
    }
    for (const std::string& token : owned.tokens) {
        const std::string whole = token.ends_with(':') ? token + child : token;
        if (running_.contains(whole)) {
            return owned.owner.empty() ? nameOf(whole, child) : owned.owner;
        }
    }
    return std::nullopt;
}

/// As its desktop entry names it, else its ID. The entries of snaps are named NAME_APP.
std::string RunningOwners::nameOf(const std::string& token, const std::string& child) const {
    const std::string prefix = token.starts_with("snap:") ? child + "_" : child;
    for (const InstalledEntry& entry : installedEntries(context_)) {
        const bool isIts = prefix == child ? entry.id == child : entry.id.starts_with(prefix);
        if (isIts && !entry.noDisplay && !entry.name.empty()) {
            return entry.name;
        }
    }
    return child;
}

} // namespace vellmoor
