// Which folders of the user's are applications.
#include "applications/AppsFixture.h"

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::UnorderedElementsAre;

class ProgramFolders : public ::testing::Test {
protected:
    EngineHome home{System::Linux};
};

TEST_F(ProgramFolders, AFolderWithAnExecutableIsAProgram) {
    elf(home, "Applications/one/run");
    elf(home, ".local/opt/two/bin/tool");
    elf(home, "opt/three/start");
    home.text("opt/data/readme.txt", "no program");
    elf(home, "opt/deep/lib/x/tool");
    elf(home, "opt/.hidden/tool");
    home.link("three", "opt/link");
    elf(home, "projects/other/run.sh");
    EXPECT_THAT(titles(home), UnorderedElementsAre("one", "two", "three"));
    EXPECT_EQ(application(home, "one").appInfo->bundleIdentifier, std::nullopt);
}

TEST_F(ProgramFolders, AFolderIntoWhichAnEntryPointsIsThatApplication) {
    elf(home, "opt/editor/lib/x/editor");
    desktopFile(home, ".local/share/applications/org.example.Editor.desktop",
                "Name=Editor\nExec=" + home.place("opt/editor/lib/x/editor").string() + " %F\n");
    EXPECT_EQ(application(home, "Editor").targets.front().url, home.place("opt/editor"));
    EXPECT_THAT(application(home, "Editor").appInfo->bundleIdentifier, Optional(std::string("org.example.Editor")));
}

TEST_F(ProgramFolders, TryExecAndLinksPointIntoAFolder) {
    elf(home, "opt/one/lib/x/one");
    elf(home, "opt/two/lib/x/two");
    home.link("../../opt/two/lib/x/two", ".local/bin/two");
    desktopFile(home, ".local/share/applications/one.desktop",
                "Name=One\nExec=sh -c start\nTryExec=" + home.place("opt/one/lib/x/one").string() + "\n");
    desktopFile(home, ".local/share/applications/two.desktop", "Name=Two\nExec=two\n");
    EXPECT_THAT(titles(home), UnorderedElementsAre("One", "Two"));
}

TEST_F(ProgramFolders, AToolboxFolderIsAnApplicationOnlyByAnEntry) {
    elf(home, ".local/share/JetBrains/Toolbox/apps/idea/bin/idea.sh");
    elf(home, ".local/share/JetBrains/Toolbox/apps/other/bin/other.sh");
    desktopFile(home, ".local/share/applications/jetbrains-idea.desktop",
                "Name=IDEA\nExec=" + home.place(".local/share/JetBrains/Toolbox/apps/idea/bin/idea.sh").string() +
                    "\n");
    EXPECT_THAT(titles(home), ElementsAre("IDEA"));
}

TEST_F(ProgramFolders, TheEntryThatMenusShowNamesAnApplication) {
    const std::string program = elf(home, "opt/editor/editor").string();
    desktopFile(home, ".local/share/applications/a-handler.desktop",
                "Name=Handler\nNoDisplay=true\nExec=" + program + " --url %u\n");
    desktopFile(home, ".local/share/applications/b.desktop", "Name=Editor\nExec=" + program + "\n");
    desktopFile(home, ".local/share/applications/c.desktop", "Name=Gone\nHidden=true\nExec=" + program + "\n");
    EXPECT_THAT(titles(home), ElementsAre("Editor"));
}

TEST_F(ProgramFolders, AFolderOfScriptsOrDataIsNone) {
    home.script("opt/scripts/run.sh", "#!/bin/sh\n");
    home.script("opt/empty/run", "");
    home.text("opt/library/tool", "\x7F"
                                  "ELF but not executable");
    home.folder("opt/folder/AppRun");
    EXPECT_THAT(titles(home), IsEmpty());
}

TEST_F(ProgramFolders, AnUnpackedAppImageIsKnownByItsStarter) {
    home.script("Applications/tool/AppRun", "#!/bin/sh\n");
    EXPECT_THAT(titles(home), ElementsAre("tool"));
}

TEST_F(ProgramFolders, TheUsersOwnWorkIsNoApplication) {
    elf(home, "opt/project/tool");
    home.folder("opt/project/.git");
    elf(home, "opt/worktree/bin/tool");
    home.text("opt/worktree/.git", "gitdir: /elsewhere\n");
    EXPECT_THAT(titles(home), IsEmpty());
}

TEST_F(ProgramFolders, AFolderThatManyProgramsShareIsNoApplication) {
    for (const char* name :
         {"bin", "sbin", "lib", "lib64", "libexec", "include", "share", "etc", "src", "man", "games", "Bin"}) {
        elf(home, Path(".local/opt") / name / "tool");
        elf(home, Path("opt") / name / "bin/tool");
    }
    desktopFile(home, ".local/share/applications/one.desktop",
                "Name=One\nExec=" + home.place("opt/bin/bin/tool").string() + "\n");
    EXPECT_THAT(titles(home), IsEmpty());
}

} // namespace
} // namespace vellmoor::test
