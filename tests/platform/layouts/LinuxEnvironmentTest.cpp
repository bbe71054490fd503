#include "layouts/linux/LinuxEnvironment.h"

#include <gmock/gmock.h>

#include <map>

namespace vellmoor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Variables = std::map<std::string, std::string, std::less<>>;

LinuxEnvironment read(const Variables& variables, const std::filesystem::path& ownProgram = "/usr/bin/vellmoor") {
    const auto lookup = [&](std::string_view name) -> std::optional<std::string> {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional(found->second);
    };
    return linuxEnvironment(lookup, "/home/account", ownProgram);
}

TEST(LinuxEnvironment, WithoutVariablesHasTheDefaults) {
    const LinuxEnvironment environment = read({});
    EXPECT_EQ(environment.home, "/home/account");
    EXPECT_EQ(environment.config, "/home/account/.config");
    EXPECT_EQ(environment.cache, "/home/account/.cache");
    EXPECT_EQ(environment.data, "/home/account/.local/share");
    EXPECT_EQ(environment.state, "/home/account/.local/state");
    EXPECT_THAT(environment.configDirs, ElementsAre("/etc/xdg"));
    EXPECT_THAT(environment.dataDirs, ElementsAre("/usr/local/share", "/usr/share"));
    EXPECT_EQ(environment.runtime, "");
}

TEST(LinuxEnvironment, AHomeThatIsEmptyOrRelativeIsTheAccounts) {
    EXPECT_EQ(read({{"HOME", ""}}).home, "/home/account");
    EXPECT_EQ(read({{"HOME", "home/user"}}).home, "/home/account");
    EXPECT_EQ(read({{"HOME", "~"}}).home, "/home/account");
    EXPECT_EQ(read({{"HOME", "./x"}}).cache, "/home/account/.cache");
}

TEST(LinuxEnvironment, AHomeIsTakenLexically) {
    EXPECT_EQ(read({{"HOME", "/home//user/./x/.."}}).home, "/home/user");
    EXPECT_EQ(read({{"HOME", "/home/user/"}}).config, "/home/user/.config");
}

TEST(LinuxEnvironment, ABaseFolderIsUsedAsSetEvenWhereItHoldsTheHome) {
    for (const char* folder : {"/home/user", "/home"}) {
        const LinuxEnvironment environment = read({{"HOME", "/home/user"},
                                                   {"XDG_CONFIG_HOME", folder},
                                                   {"XDG_CACHE_HOME", folder},
                                                   {"XDG_DATA_HOME", folder},
                                                   {"XDG_STATE_HOME", folder}});
        EXPECT_EQ(environment.config, folder);
        EXPECT_EQ(environment.cache, folder);
        EXPECT_EQ(environment.data, folder);
        EXPECT_EQ(environment.state, folder);
    }
}

TEST(LinuxEnvironment, EmptyAndRelativeBaseFoldersCountAsUnset) {
    const LinuxEnvironment environment = read({{"HOME", "/home/user"},
                                               {"XDG_CONFIG_HOME", ""},
                                               {"XDG_CACHE_HOME", "cache"},
                                               {"XDG_DATA_HOME", "."},
                                               {"XDG_STATE_HOME", "../state"},
                                               {"XDG_RUNTIME_DIR", "run"}});
    EXPECT_EQ(environment.config, "/home/user/.config");
    EXPECT_EQ(environment.cache, "/home/user/.cache");
    EXPECT_EQ(environment.data, "/home/user/.local/share");
    EXPECT_EQ(environment.state, "/home/user/.local/state");
    EXPECT_EQ(environment.runtime, "");
}

TEST(LinuxEnvironment, AnAppImageIsOursWhenOurProgramLiesInItsMount) {
    const Variables variables{{"APPIMAGE", "/home/user/Vellmoor.AppImage"}, {"APPDIR", "/tmp/.mount_x"}};
    EXPECT_EQ(read(variables, "/tmp/.mount_x/usr/bin/vellmoor").ownAppImage, "/home/user/Vellmoor.AppImage");
    EXPECT_EQ(read(variables, "/usr/bin/vellmoor").ownAppImage, "");
    EXPECT_EQ(read(variables, "/tmp/.mount_xy/vellmoor").ownAppImage, "");
    EXPECT_EQ(read({{"APPIMAGE", "/home/user/Other.AppImage"}}).ownAppImage, "");
}

TEST(LinuxEnvironment, ThePathHasItsAbsolutePartsOnly) {
    EXPECT_THAT(read({{"PATH", "/usr/bin:bin::./x:/opt/tool/bin/"}}).programPath,
                ElementsAre("/usr/bin", "/opt/tool/bin"));
    EXPECT_THAT(read({}).programPath, IsEmpty());
}

TEST(LinuxEnvironment, AbsoluteBaseFoldersAreUsed) {
    const LinuxEnvironment environment = read({{"XDG_CACHE_HOME", "/big/cache/"}, {"XDG_RUNTIME_DIR", "/run/user/7"}});
    EXPECT_EQ(environment.cache, "/big/cache");
    EXPECT_EQ(environment.runtime, "/run/user/7");
}

TEST(LinuxEnvironment, ListsLoseTheirEmptyAndRelativeParts) {
    EXPECT_THAT(read({{"XDG_DATA_DIRS", ":/a::relative:/b/:"}}).dataDirs, ElementsAre("/a", "/b"));
    EXPECT_THAT(read({{"XDG_CONFIG_DIRS", "::x"}}).configDirs, ElementsAre("/etc/xdg"));
}

TEST(LinuxEnvironment, ToolFoldersNeedAnAbsoluteValueAndKeepTheDefault) {
    const LinuxEnvironment environment = read({{"CARGO_HOME", "/opt/cargo"}, {"GOPATH", "go"}, {"GOCACHE", ""}});
    EXPECT_THAT(environment.toolFolder("CARGO_HOME", "/home/account/.cargo"),
                ElementsAre("/opt/cargo", "/home/account/.cargo"));
    EXPECT_THAT(environment.toolFolder("CARGO_HOME", "/opt/cargo"), ElementsAre("/opt/cargo"));
    EXPECT_THAT(environment.toolFolder("GOPATH", "/home/account/go"), ElementsAre("/home/account/go"));
    EXPECT_THAT(environment.toolFolder("GOCACHE", "/x"), ElementsAre("/x"));
}

TEST(LinuxEnvironment, OfSeveralGoFoldersTheFirstUsableOneCounts) {
    EXPECT_THAT(read({{"GOPATH", "go:/fast/go:/slow/go"}}).toolFolder("GOPATH", "/home/account/go"),
                ElementsAre("/fast/go", "/home/account/go"));
    EXPECT_FALSE(read({{"GOPATH", ":go:"}}).toolFolders.contains("GOPATH"));
}

TEST(LinuxEnvironment, DesktopNamesAreSeparatedByColons) {
    EXPECT_THAT(read({{"XDG_CURRENT_DESKTOP", "ubuntu:GNOME"}}).desktops, ElementsAre("ubuntu", "GNOME"));
    EXPECT_THAT(read({{"XDG_CURRENT_DESKTOP", ""}}).desktops, IsEmpty());
}

} // namespace
} // namespace vellmoor
