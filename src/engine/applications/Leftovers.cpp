#include "applications/Leftovers.h"

#include "Glob.h"
#include "Paths.h"

#include <algorithm>
#include <set>

namespace vellmoor {
namespace {

constexpr std::ptrdiff_t shortestName = 4;

bool isLongEnough(std::string_view text) {
    const auto isFirstByte = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; };
    return std::ranges::count_if(text, isFirstByte) >= shortestName;
}

bool isOrIsBelow(const Path& path, const Path& folder) {
    return path == folder || isStrictlyBelow(path, folder);
}

} // namespace

LeftoverTokens leftoverTokens(const Platform& platform, const std::optional<std::string>& identifier,
                              std::string_view displayName) {
    LeftoverTokens tokens;
    const auto addName = [&](std::string_view name) {
        std::string plain = platform.lettersAndDigits(name);
        if (isLongEnough(plain)) {
            tokens.names.push_back(std::move(plain));
        }
    };
    if (identifier && !identifier->empty()) {
        tokens.exactIdentifier = *identifier;
        // A plain word would be found in names that have nothing to do with it.
        if (identifier->find('.') != std::string::npos) {
            tokens.identifier = platform.lowerCase(*identifier);
        } else {
            addName(*identifier);
        }
    }
    addName(displayName);
    return tokens;
}

LeftoverFinder::LeftoverFinder(EngineContext& context, const std::vector<ApplicationMetadata>& applications)
    : context_(context),
      platform_(context.platform()),
      layout_(context.layout().apps),
      applications_(applications) {
    for (const ApplicationMetadata& application : applications) {
        realPaths_.push_back(platform_.realPath(application.appURL).value_or(application.appURL));
        tokens_.push_back(leftoverTokens(platform_, application.bundleIdentifier, application.displayName));
    }
    collectForeignTokens();
    listFolders();
}

void LeftoverFinder::collectForeignTokens() {
    for (const InstalledEntry& entry : installedEntries(context_)) {
        context_.throwIfCancelled();
        if (isInstalledElsewhere(entry)) {
            foreign_.push_back(leftoverTokens(platform_, entry.id, entry.name));
        }
    }
}

bool LeftoverFinder::startsOurs(const InstalledEntry& entry) const {
    const std::vector<EntryProgram> programs = entryPrograms(context_, entry);
    for (std::size_t i = 0; i < applications_.size(); ++i) {
        const ApplicationMetadata& application = applications_[i];
        const bool isOurs = application.kind == ApplicationKind::Flatpak
                                ? entry.flatpakId == application.bundleIdentifier
                                : std::ranges::any_of(programs, [&](const EntryProgram& program) {
                                      return isProgramOf(program, application.appURL, realPaths_[i]);
                                  });
        if (isOurs) {
            return true;
        }
    }
    return false;
}

/// Whether the entry is that of an installed application which is none of the removable ones.
bool LeftoverFinder::isInstalledElsewhere(const InstalledEntry& entry) const {
    if (!isStrictlyBelow(entry.path, context_.layout().home)) {
        return true;
    }
    if (startsOurs(entry)) {
        return false;
    }
    // An entry whose program is gone is a leftover itself.
    return programPath(context_, entry.execProgram).has_value();
}

LeftoverFinder::Child LeftoverFinder::child(const Path& folder, const std::string& name, bool exactIdentifier) const {
    return {.path = folder / name,
            .name = name,
            .lower = platform_.lowerCase(name),
            .plain = platform_.lettersAndDigits(Path(name).stem().string()),
            .exactIdentifier = exactIdentifier};
}

void LeftoverFinder::listFolders() {
    std::set<Path> listed;
    for (const LeftoverFolder& rule : layout_.leftoverFolders) {
        context_.throwIfCancelled();
        if (!listed.insert(lexicallyStandardized(rule.folder)).second) {
            continue;
        }
        const auto entries = platform_.entries(rule.folder);
        if (!entries) {
            continue; // a folder that cannot be listed has no leftovers to offer
        }
        for (const FolderEntry& entry : *entries) {
            Child found = child(rule.folder, entry.name, rule.exactIdentifier);
            if (!mustStay(found)) {
                children_.push_back(std::move(found));
            }
        }
    }
}

/// Names that many programs share, the folders that are searched themselves, applications, and protected paths.
bool LeftoverFinder::mustStay(const Child& found) const {
    const std::string_view name = found.lower;
    const bool isShared = std::ranges::any_of(layout_.neverLeftovers, [&](const std::string& pattern) {
        return globMatches(pattern, name) || (name.starts_with('.') && globMatches(pattern, name.substr(1)));
    });
    return isShared ||
           std::ranges::any_of(layout_.leftoverFolders,
                               [&](const LeftoverFolder& rule) { return isOrIsBelow(rule.folder, found.path); }) ||
           std::ranges::any_of(context_.layout().protectedPaths,
                               [&](const Path& path) { return isOrIsBelow(path, found.path); }) ||
           std::ranges::any_of(applications_, [&](const ApplicationMetadata& application) {
               return isOrIsBelow(application.appURL, found.path) || isStrictlyBelow(found.path, application.appURL);
           });
}

std::optional<LeftoverFinder::Match> LeftoverFinder::match(const Child& found, const LeftoverTokens& tokens) {
    if (found.exactIdentifier) {
        return found.name == tokens.exactIdentifier ? std::optional(Match{true, found.name.size()}) : std::nullopt;
    }
    if (!tokens.identifier.empty() && found.lower.find(tokens.identifier) != std::string::npos) {
        return Match{true, tokens.identifier.size()};
    }
    std::size_t longest = 0;
    for (const std::string& name : tokens.names) {
        if (found.plain.find(name) != std::string::npos) {
            longest = std::max(longest, name.size());
        }
    }
    return longest > 0 ? std::optional(Match{false, longest}) : std::nullopt;
}

/// Whether the name fits this application and no other one as well or better: what two share is nobody's leftover.
bool LeftoverFinder::belongsTo(std::size_t index, const Child& found) const {
    const std::optional<Match> own = match(found, tokens_[index]);
    if (!own) {
        return false;
    }
    const auto claims = [&](const LeftoverTokens& other) { return match(found, other) >= own; };
    for (std::size_t other = 0; other < tokens_.size(); ++other) {
        if (other != index && claims(tokens_[other])) {
            return false;
        }
    }
    return std::ranges::none_of(foreign_, claims);
}

std::vector<Path> LeftoverFinder::residualPaths(std::size_t index) const {
    std::vector<Path> found;
    for (const Child& candidate : children_) {
        if (belongsTo(index, candidate)) {
            found.push_back(candidate.path);
        }
    }
    addLinks(applications_[index].appURL, found);
    addDottedNames(index, found);
    return found;
}

void LeftoverFinder::addLinks(const Path& application, std::vector<Path>& out) const {
    const std::optional<Path> body = platform_.realPath(application);
    for (const Path& folder : layout_.leftoverLinkFolders) {
        const auto entries = platform_.entries(folder);
        if (!entries || !body) {
            continue;
        }
        for (const FolderEntry& entry : *entries) {
            const std::optional<Path> real =
                entry.isSymlink ? platform_.realPath(folder / entry.name) : std::optional<Path>();
            if (real && isOrIsBelow(*real, *body)) {
                out.push_back(folder / entry.name);
            }
        }
    }
}

void LeftoverFinder::addDottedNames(std::size_t index, std::vector<Path>& out) const {
    if (!layout_.dottedHomeNames) {
        return;
    }
    std::set<std::string> names(tokens_[index].names.begin(), tokens_[index].names.end());
    if (!tokens_[index].identifier.empty()) {
        names.insert(tokens_[index].identifier);
    }
    for (const std::string& name : names) {
        const Child found = child(context_.layout().home, "." + name, false);
        if (platform_.exists(found.path) && !mustStay(found) && belongsTo(index, found)) {
            out.push_back(found.path);
        }
    }
}

} // namespace vellmoor
