#include "applications/Leftovers.h"

#include "ProtectedPaths.h"
#include "disk/Glob.h"
#include "disk/Paths.h"

#include <algorithm>
#include <set>

namespace vellmoor {
namespace {

LeftoverTokens tokensOf(const Platform& platform, LeftoverNames kind, const ApplicationMetadata& application) {
    if (application.kind == ApplicationKind::Flatpak) {
        return flatpakTokens(application.bundleIdentifier.value_or(""));
    }
    return leftoverTokens(platform, kind, application.bundleIdentifier.value_or(""),
                          {application.displayName, application.unlocalizedName});
}

LeftoverTokens tokensOf(const Platform& platform, LeftoverNames kind, const InstalledEntry& entry) {
    return entry.flatpakId.empty() ? leftoverTokens(platform, kind, entry.id, {entry.name, entry.unlocalizedName})
                                   : flatpakTokens(entry.flatpakId);
}

} // namespace

LeftoverFinder::LeftoverFinder(EngineContext& context, const std::vector<ApplicationMetadata>& applications)
    : context_(context),
      platform_(context.platform()),
      layout_(context.layout().apps),
      applications_(applications),
      protected_(protectedFolders(context.platform(), context.layout())),
      places_(UserPlaces::of(context)) {
    for (const ApplicationMetadata& application : applications) {
        realPaths_.push_back(platform_.realPath(application.appURL).value_or(application.appURL));
        tokens_.push_back(tokensOf(platform_, layout_.leftoverNames, application));
    }
    collectForeignTokens();
    listFolders();
}

void LeftoverFinder::collectForeignTokens() {
    for (const InstalledEntry& entry : installedEntries(context_)) {
        context_.throwIfCancelled();
        if (isInstalledElsewhere(entry)) {
            foreign_.push_back(tokensOf(platform_, layout_.leftoverNames, entry));
        }
    }
}

/// A program may have no entry, and keep files under its name all the same.
const LeftoverFinder::Programs& LeftoverFinder::programs() const {
    if (programs_) {
        return *programs_;
    }
    Programs found;
    for (const Path& folder : layout_.programPath) {
        context_.throwIfCancelled();
        const auto entries = platform_.entries(folder);
        if (!entries) {
            continue; // a missing folder holds no programs
        }
        for (const FolderEntry& entry : *entries) {
            if (entry.isDirectory) {
                continue;
            }
            for (const std::string& form : leftoverName(platform_, layout_, entry.name).plain) {
                found[form].push_back(folder / entry.name);
            }
        }
    }
    return programs_.emplace(std::move(found));
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

LeftoverFinder::Child LeftoverFinder::child(const Path& folder, const std::string& name, bool ofFlatpaks) const {
    return {.path = folder / name, .name = leftoverName(platform_, layout_, name, ofFlatpaks)};
}

/// Only a folder below the home: one outside is not the user's alone, or holds what the user put there.
bool LeftoverFinder::mayBeSearched(const Path& folder) const {
    const Path& home = context_.layout().home;
    const Path written = lexicallyStandardized(folder);
    const std::optional<Path> real = platform_.realPath(folder);
    return real && isStrictlyBelow(written, home) && isStrictlyBelow(*real, platform_.realPath(home).value_or(home)) &&
           !places_.holdsUserFolder(folder) && !places_.holdsUserFolder(*real);
}

void LeftoverFinder::listFolders() {
    std::set<Path> listed;
    for (const LeftoverFolder& rule : layout_.leftoverFolders) {
        context_.throwIfCancelled();
        if (!listed.insert(lexicallyStandardized(rule.folder)).second || !mayBeSearched(rule.folder)) {
            continue;
        }
        const auto entries = platform_.entries(rule.folder);
        if (!entries) {
            continue; // a folder that cannot be listed has no leftovers to offer
        }
        for (const FolderEntry& entry : *entries) {
            Child found = child(rule.folder, entry.name, rule.ofFlatpaks);
            if (!mustStay(found)) {
                children_.push_back(std::move(found));
            }
        }
    }
}

/// Names that many programs share, the folders that are searched themselves, applications, and protected paths.
bool LeftoverFinder::mustStay(const Child& found) const {
    const std::string_view name = found.name.lower;
    const bool isShared = std::ranges::any_of(layout_.neverLeftovers, [&](const std::string& pattern) {
        return globMatches(pattern, name) || (name.starts_with('.') && globMatches(pattern, name.substr(1)));
    });
    return isShared ||
           std::ranges::any_of(layout_.leftoverFolders,
                               [&](const LeftoverFolder& rule) { return isAtOrBelow(rule.folder, found.path); }) ||
           std::ranges::any_of(protected_, [&](const Path& path) { return isAtOrBelow(path, found.path); }) ||
           std::ranges::any_of(applications_, [&](const ApplicationMetadata& application) {
               return isAtOrBelow(application.appURL, found.path) || isStrictlyBelow(found.path, application.appURL);
           });
}

/// Whether the name fits this application and no other one as well or better: what two share is nobody's leftover.
bool LeftoverFinder::belongsTo(std::size_t index, const Child& found) const {
    const auto fit = [&](const LeftoverTokens& tokens) {
        return leftoverMatch(platform_, layout_.leftoverNames, found.name, tokens);
    };
    const std::optional<LeftoverMatch> own = fit(tokens_[index]);
    if (!own) {
        return false;
    }
    const auto claims = [&](const LeftoverTokens& other) { return fit(other) >= own; };
    for (std::size_t other = 0; other < tokens_.size(); ++other) {
        if (other != index && claims(tokens_[other])) {
            return false;
        }
    }
    return std::ranges::none_of(foreign_, claims) &&
           (own->byIdentifier || !isNameOfProgram(index, found.name, own->length)) &&
           !places_.holdsUserFolder(found.path);
}

/// Whether a program that is no part of this application is called so. `length`: of the name by which it fits.
bool LeftoverFinder::isNameOfProgram(std::size_t index, const LeftoverName& name, std::size_t length) const {
    const auto isForeign = [&](const Path& program) {
        const std::optional<Path> real = platform_.realPath(program);
        return platform_.isExecutable(program) && real && !isAtOrBelow(*real, realPaths_[index]);
    };
    return std::ranges::any_of(name.plain, [&](const std::string& form) {
        const auto found = programs().find(form);
        return form.size() >= length && found != programs().end() && std::ranges::any_of(found->second, isForeign);
    });
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
        if (!entries || !body || !mayBeSearched(folder)) {
            continue;
        }
        for (const FolderEntry& entry : *entries) {
            const std::optional<Path> real =
                entry.isSymlink ? platform_.realPath(folder / entry.name) : std::optional<Path>();
            if (real && isAtOrBelow(*real, *body)) {
                out.push_back(folder / entry.name);
            }
        }
    }
}

void LeftoverFinder::addDottedNames(std::size_t index, std::vector<Path>& out) const {
    if (!layout_.dottedHomeNames) {
        return;
    }
    const LeftoverTokens& tokens = tokens_[index];
    std::set<std::string> names(tokens.names.begin(), tokens.names.end());
    names.insert({tokens.identifier, tokens.flatpak});
    names.erase("");
    for (const std::string& name : names) {
        const Child found = child(context_.layout().home, "." + name, false);
        if (platform_.exists(found.path) && !mustStay(found) && belongsTo(index, found)) {
            out.push_back(found.path);
        }
    }
}

} // namespace vellmoor
