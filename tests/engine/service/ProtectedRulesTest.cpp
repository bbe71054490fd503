// No rule of the privacy and junk tables can name a protected path, whatever lies on the disk: the rules themselves
// are tried against every protected path and every folder above one.
#include "Glob.h"
#include "layouts/LinuxEnvironment.h"
#include "layouts/SystemLayout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace vellmoor::test {
namespace {

using testing::IsEmpty;
using testing::SizeIs;
using Path = std::filesystem::path;

bool isWildcard(const std::string& component) {
    return component.find_first_of("*#|") != std::string::npos;
}

bool mayBe(const RootPattern& rule, const std::string& component, const std::string& name) {
    if (component == "@current") {
        return true;
    }
    if (!isWildcard(component)) {
        return component == name;
    }
    const bool hidden = name.starts_with('.') && !rule.hiddenToo;
    const bool excepted =
        std::ranges::any_of(rule.except, [&](const std::string& pattern) { return globMatchesAny(pattern, name); });
    return !hidden && !excepted && globMatchesAny(component, name);
}

/// Whether the rule names `path` when everything that it asks for exists.
bool couldName(const RootPattern& rule, const Path& path) {
    std::vector<std::string> names;
    Path above = path;
    for (std::size_t level = 0; level < rule.components.size(); ++level) {
        names.insert(names.begin(), above.filename().string());
        above = above.parent_path();
    }
    return above == rule.base &&
           std::ranges::equal(rule.components, names,
                              [&](const auto& component, const auto& name) { return mayBe(rule, component, name); });
}

/// The protected paths, the home folder, and all folders above them.
std::set<Path> guardedPaths(const SystemLayout& layout) {
    std::set<Path> guarded;
    std::vector<Path> paths = layout.protectedPaths;
    paths.push_back(layout.home);
    for (Path path : paths) {
        for (; guarded.insert(path).second && path.has_relative_path(); path = path.parent_path()) {
        }
    }
    return guarded;
}

/// `trace` below `base`, or below each of its children.
RootPattern traceRule(const Path& base, const std::string& trace, bool inChildren) {
    RootPattern rule{.base = base, .components = {}};
    if (inChildren) {
        rule.components.emplace_back("*");
    }
    for (const Path& component : Path(trace)) {
        rule.components.push_back(component.string());
    }
    rule.hiddenToo = true;
    return rule;
}

std::vector<RootPattern> privacyRules(const PrivacyLayout& layout) {
    std::vector<RootPattern> rules;
    for (const BrowserTraces& browser : layout.browsers) {
        for (const BrowserFolder& folder : browser.folders) {
            for (const TraceCategory& category : browser.categories) {
                for (const TracePath& trace : category.paths) {
                    const Path& base = trace.folder == TracePath::Folder::Profile ? folder.userData : folder.cache;
                    rules.push_back(traceRule(base, trace.path, false));
                    if (browser.search != ProfileSearch::FolderItself) {
                        rules.push_back(traceRule(base, trace.path, true));
                    }
                }
            }
        }
    }
    return rules;
}

std::vector<RootPattern> junkRules(const SystemLayout& layout) {
    std::vector<RootPattern> rules;
    for (const JunkCategory& category : layout.junk) {
        rules.insert(rules.end(), category.roots.begin(), category.roots.end());
    }
    for (const std::string& extension : layout.downloads.extensions) {
        rules.push_back({.base = layout.downloads.folder, .components = {"*." + extension}});
    }
    return rules;
}

std::vector<std::string> hits(const SystemLayout& layout, const std::vector<RootPattern>& rules) {
    std::vector<std::string> found;
    for (const Path& path : guardedPaths(layout)) {
        for (const RootPattern& rule : rules) {
            if (couldName(rule, path)) {
                found.push_back(path.string() + " by a rule in " + rule.base.string());
            }
        }
    }
    return found;
}

SystemLayout linuxWithOwnFolders() {
    LinuxEnvironment environment = linuxEnvironmentOf("/home/tester");
    environment.config = "/home/tester/etc";
    environment.cache = "/home/tester/var/cache";
    environment.data = "/data/tester/share";
    environment.state = "/home/tester/var/state";
    return linuxLayout(environment, 1000);
}

struct NamedLayout {
    std::string name;
    SystemLayout layout;
};

void PrintTo(const NamedLayout& named, std::ostream* out) {
    *out << named.name;
}

class ProtectedRules : public testing::TestWithParam<NamedLayout> {};

TEST_P(ProtectedRules, NoPrivacyRuleNamesAProtectedPath) {
    const std::vector<RootPattern> rules = privacyRules(GetParam().layout.privacy);
    ASSERT_GE(rules.size(), 15U);
    EXPECT_THAT(hits(GetParam().layout, rules), IsEmpty());
}

TEST_P(ProtectedRules, NoJunkRuleNamesAProtectedPath) {
    const std::vector<RootPattern> rules = junkRules(GetParam().layout);
    ASSERT_GE(rules.size(), 6U);
    EXPECT_THAT(hits(GetParam().layout, rules), IsEmpty());
}

TEST_P(ProtectedRules, ARuleThatDidWouldBeFound) {
    const Path& home = GetParam().layout.home;
    const RootPattern everythingInHome{.base = home, .components = {"*"}};
    const RootPattern homeItself{.base = home, .components = {}};
    const RootPattern above{.base = home.parent_path().parent_path(), .components = {"home|Users"}};
    EXPECT_GE(hits(GetParam().layout, {everythingInHome}).size(), 5U);
    EXPECT_THAT(hits(GetParam().layout, {homeItself}), SizeIs(1));
    EXPECT_THAT(hits(GetParam().layout, {above}), SizeIs(1));
}

TEST_P(ProtectedRules, NearMissesAreNotTakenForAHit) {
    const Path& home = GetParam().layout.home;
    const RootPattern longer{.base = home, .components = {"Documents2"}};
    const RootPattern deeper{.base = home / "Documents", .components = {"*"}};
    const RootPattern hidden{.base = home, .components = {"*"}, .except = {"*"}};
    EXPECT_THAT(hits(GetParam().layout, {longer, deeper, hidden}), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Layouts, ProtectedRules,
                         testing::Values(NamedLayout{"Mac", macosLayout("/Users/tester", 501)},
                                         NamedLayout{"Linux", linuxLayout(linuxEnvironmentOf("/home/tester"), 1000)},
                                         NamedLayout{"LinuxOwnFolders", linuxWithOwnFolders()}),
                         [](const auto& test) { return test.param.name; });

} // namespace
} // namespace vellmoor::test
