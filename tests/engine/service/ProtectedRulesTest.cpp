// No rule of the privacy and junk tables can name a protected path, whatever lies on the disk: the rules themselves
// are tried against every protected path and every folder above one.
#include "Host.h"
#include "ProtectedPaths.h"
#include "layouts/SystemLayout.h"
#include "layouts/linux/LinuxEnvironment.h"

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

bool mayBe(const RootPattern& rule, const RootComponent& component, const std::string& name) {
    if (component.names == "@current") {
        return true;
    }
    return component.isWildcard() ? admits(rule, component, name) : component.names == name;
}

/// Whether the rule names `path` when everything that it asks for exists.
bool couldName(const RootPattern& rule, const Path& path) {
    const std::vector<RootComponent> levels = components(rule);
    std::vector<std::string> names;
    Path above = path;
    for (std::size_t level = 0; level < levels.size(); ++level) {
        names.insert(names.begin(), above.filename().string());
        above = above.parent_path();
    }
    return above == rule.base && std::ranges::equal(levels, names, [&](const auto& component, const auto& name) {
               return mayBe(rule, component, name);
           });
}

/// The protected paths, the home folder, and all folders above them.
std::set<Path> guardedPaths(const SystemLayout& layout) {
    std::set<Path> guarded;
    for (Path path : protectedFolders(hostPlatform(), layout)) {
        for (; guarded.insert(path).second && path.has_relative_path(); path = path.parent_path()) {
        }
    }
    return guarded;
}

RootPattern rule(const Path& base, const std::string& below) {
    return {.base = base, .below = below, .except = {}};
}

std::vector<RootPattern> privacyRules(const PrivacyLayout& layout) {
    std::vector<RootPattern> rules;
    for (const BrowserTraces& browser : layout.browsers) {
        for (const BrowserFolder& folder : browser.folders) {
            for (const TraceCategory& category : browser.categories) {
                for (const TracePath& trace : category.paths) {
                    const Path& base = trace.folder == TracePath::Folder::Profile ? folder.userData : folder.cache;
                    rules.push_back(rule(base, trace.path));
                    if (browser.search != ProfileSearch::FolderItself) {
                        rules.push_back(rule(base, "*/" + trace.path));
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
    for (const std::string& extension : layout.installerExtensions) {
        rules.push_back(rule(layout.largeFileRoots.front(), "*." + extension));
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
    const RootPattern everythingInHome = rule(home, "*");
    const RootPattern homeItself = rule(home, "");
    const RootPattern above = rule(home.parent_path().parent_path(), "home|Users");
    EXPECT_GE(hits(GetParam().layout, {everythingInHome}).size(), 5U);
    EXPECT_THAT(hits(GetParam().layout, {homeItself}), SizeIs(1));
    EXPECT_THAT(hits(GetParam().layout, {above}), SizeIs(2)); // the homes' folders of both systems
}

TEST_P(ProtectedRules, NearMissesAreNotTakenForAHit) {
    const Path& home = GetParam().layout.home;
    RootPattern nothing = rule(home, "*");
    nothing.except = {"*"};
    EXPECT_THAT(hits(GetParam().layout, {rule(home, "Documents2"), rule(home / "Documents", "*"), nothing}), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Layouts, ProtectedRules,
                         testing::Values(NamedLayout{"Mac", macosLayout("/Users/tester", 501)},
                                         NamedLayout{"Linux", linuxLayout(linuxEnvironmentOf("/home/tester"), 1000)},
                                         NamedLayout{"LinuxOwnFolders", linuxWithOwnFolders()}),
                         [](const auto& test) { return test.param.name; });

} // namespace
} // namespace vellmoor::test
