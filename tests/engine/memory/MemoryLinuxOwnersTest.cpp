// Whose process it is, where several sources speak of it: the programs, scopes and entries of real desktops.
#include "memory/Memory.h"
#include "memory/MemoryFixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor {
namespace {

using test::addProcess;
using test::EngineHome;
using test::FakeProcess;
using test::pseudoTerminal;
using test::System;
using test::userUnit;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::UnorderedElementsAre;

class LinuxOwners : public ::testing::Test {
protected:
    LinuxOwners() { home.layout.memory.processes.pageBytes = 4096; }

    Path addEntry(const std::string& id, const std::string& name, const std::string& exec,
                  const std::string& more = {}) {
        return home.text("/usr/share/applications/" + id + ".desktop",
                         "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=" + exec + "\n" + more);
    }
    void addScript(const Path& path, const std::string& interpreter = "/bin/sh") {
        home.script(path, "#!" + interpreter + "\n");
    }
    void addBinary(const Path& path) { home.script(path, "\177ELF"); }
    void add(const FakeProcess& process) { addProcess(home, process); }
    std::string unit(std::string_view name) { return userUnit(home, name); }
    /// Name and process numbers of each row.
    std::vector<std::pair<std::string, std::vector<std::int32_t>>> rows() {
        EngineContext context = home.context();
        std::vector<std::pair<std::string, std::vector<std::int32_t>>> found;
        for (const MemoryApp& app : memoryApps(context)) {
            found.emplace_back(app.name, app.pids);
        }
        return found;
    }

    EngineHome home{System::Linux};
    const std::string mailScope = "app-gnome-org.gnome.Evolution-50.scope";
    const std::string shell = "vte-spawn-8b7c2d8e-0a4f-4d53-9f2a-6c1b8f0e7d21.scope";
};

// 0: the program itself

TEST_F(LinuxOwners, ABrowserOpenedFromAMailProgramIsTheBrowser) {
    addBinary("/usr/bin/evolution");
    addBinary("/usr/lib/firefox/firefox");
    home.link("../lib/firefox/firefox", "/usr/bin/firefox");
    addEntry("org.gnome.Evolution", "Mail", "evolution %U");
    addEntry("firefox", "Firefox", "firefox %u");
    add({.pid = 50, .exe = "/usr/bin/evolution", .group = unit(mailScope)});
    add({.pid = 51, .exe = "/usr/lib/firefox/firefox", .group = unit(mailScope), .parent = 50});
    EXPECT_THAT(rows(), UnorderedElementsAre(Pair("Mail", ElementsAre(50)), Pair("Firefox", ElementsAre(51))));
}

TEST_F(LinuxOwners, ADeletedProgramKeepsItsEntry) {
    addBinary("/usr/lib/firefox/firefox"); // the update that took its place
    addEntry("firefox", "Firefox", "/usr/lib/firefox/firefox %u");
    add({.pid = 50, .exe = "/usr/lib/firefox/firefox (deleted)", .group = unit(mailScope)});
    EXPECT_THAT(rows(), ElementsAre(Pair("Firefox", ElementsAre(50))));
}

TEST_F(LinuxOwners, AScriptStandsForTheBinaryOfItsName) {
    addScript("/usr/bin/chromium");
    addBinary("/usr/lib/chromium/chromium");
    addEntry("chromium", "Chromium", "/usr/bin/chromium %U");
    for (const std::int32_t pid : {10, 11, 12}) {
        add({.pid = pid, .exe = "/usr/lib/chromium/chromium"});
    }
    EXPECT_THAT(rows(), ElementsAre(Pair("Chromium", ElementsAre(10, 11, 12))));
}

TEST_F(LinuxOwners, ABinaryOfItsNameSaysNothingWhenTheProgramIsOneItself) {
    addBinary("/usr/bin/viewer");
    addEntry("viewer", "Viewer", "/usr/bin/viewer");
    add({.pid = 10, .exe = "/srv/other/viewer"});
    EXPECT_THAT(rows(), IsEmpty());
}

TEST_F(LinuxOwners, AScriptStandsForTheInterpreterThatRunsIt) {
    addBinary("/usr/bin/python3.11");
    addScript("/usr/bin/terminator", "/usr/bin/python3");
    addScript("/usr/share/radio/radio.py", "/usr/bin/python3");
    home.link("../share/radio/radio.py", "/usr/bin/radio");
    addEntry("terminator", "Terminator", "terminator");
    addEntry("radio", "Radio", "radio");
    add({.pid = 10, .exe = "/usr/bin/python3.11", .arguments = "python3|/usr/bin/terminator|-x|"});
    add({.pid = 11, .exe = "/usr/bin/python3.11", .arguments = "/usr/bin/python3|-Es|/usr/bin/radio|"});
    add({.pid = 12, .exe = "/usr/bin/python3.11", .arguments = "python3|/home/me/own.py|"});
    add({.pid = 13, .exe = "/usr/bin/python3.11", .arguments = "python3|"});
    EXPECT_THAT(rows(), UnorderedElementsAre(Pair("Terminator", ElementsAre(10)), Pair("Radio", ElementsAre(11))));
}

TEST_F(LinuxOwners, AnInterpreterAloneStandsForNoEntry) {
    std::int32_t pid = 10;
    for (const std::string program : {"sh", "bash", "python3", "java", "env", "flatpak"}) {
        addBinary("/usr/bin/" + program);
        addEntry("by-" + program, program, program + " /usr/share/thing/main");
        add({.pid = ++pid, .exe = "/usr/bin/" + program});
    }
    EXPECT_THAT(rows(), IsEmpty());
}

TEST_F(LinuxOwners, TheEntryThatStartsAProgramAsItIsGoesBeforeThatOfItsSettings) {
    addBinary("/usr/bin/xfce4-terminal");
    addEntry("xfce4-terminal-settings", "Terminal Settings", "xfce4-terminal --preferences");
    addEntry("xfce4-terminal", "Terminal", "xfce4-terminal %U", "Categories=System;TerminalEmulator;\n");
    add({.pid = 10, .exe = "/usr/bin/xfce4-terminal"});
    EXPECT_THAT(rows(), ElementsAre(Pair("Terminal", ElementsAre(10))));
}

TEST_F(LinuxOwners, AnEntryThatIsNotShownStandsForTheOneThatIs) {
    addScript("/opt/google/chrome/google-chrome");
    home.link("../../opt/google/chrome/google-chrome", "/usr/bin/google-chrome-stable");
    addEntry("com.google.Chrome", "Hidden", "/usr/bin/google-chrome-stable %U", "NoDisplay=true\n");
    addEntry("google-chrome", "Chrome", "/usr/bin/google-chrome-stable %U");
    add({.pid = 10, .exe = "/opt/google/chrome/chrome", .group = unit("app-gnome-com.google.Chrome-10.scope")});
    add({.pid = 11, .exe = "/opt/google/chrome/chrome", .group = unit(R"(app-google\x2dchrome@1.service)")});
    add({.pid = 12, .exe = "/opt/google/chrome/chrome"});
    add({.pid = 13,
         .exe = "/usr/bin/cat",
         .environment = "GIO_LAUNCHED_DESKTOP_FILE=/usr/share/applications/com.google.Chrome.desktop|"
                        "GIO_LAUNCHED_DESKTOP_FILE_PID=13|"});
    EXPECT_THAT(rows(), ElementsAre(Pair("Chrome", ElementsAre(10, 11, 12, 13))));
}

TEST_F(LinuxOwners, TheProgramsOfASandboxAreNotTheHosts) {
    addBinary("/usr/bin/gedit");
    addScript("/usr/bin/tool");
    addEntry("gedit", "Host Editor", "gedit");
    addEntry("tool", "Host Tool", "tool");
    addEntry("org.example.Tool", "Tool", "flatpak run org.example.Tool");
    const std::string scope = unit("app-flatpak-org.example.Tool-77.scope");
    add({.pid = 10, .exe = "/usr/bin/gedit", .group = scope});
    add({.pid = 11, .exe = "/app/bin/tool", .group = scope});
    EXPECT_THAT(rows(), ElementsAre(Pair("Tool", ElementsAre(10, 11))));
}

TEST_F(LinuxOwners, AProcessThatLetsNobodyLookIsKnownByWhatItCallsItself) {
    addBinary("/usr/bin/keepassxc");
    addScript("/usr/bin/chromium");
    addBinary("/usr/lib/chromium/chromium");
    addEntry("org.keepassxc.KeePassXC", "KeePassXC", "keepassxc %f");
    addEntry("chromium", "Chromium", "/usr/bin/chromium %U");
    add({.pid = 10, .arguments = "keepassxc|"});
    add({.pid = 11, .arguments = "/usr/bin/keepassxc|secret.kdbx|"});
    add({.pid = 12, .arguments = "/usr/lib/chromium/chromium --type=renderer --lang=en|"});
    add({.pid = 13, .arguments = "sleep|"});
    EXPECT_THAT(rows(),
                UnorderedElementsAre(Pair("KeePassXC", ElementsAre(10, 11)), Pair("Chromium", ElementsAre(12))));
}

// 1: the control group

TEST_F(LinuxOwners, TheShellsOfEveryTerminalAreNotTheTerminals) {
    addEntry("org.gnome.Terminal", "Terminal", "gnome-terminal", "Categories=GNOME;System;TerminalEmulator;\n");
    for (const char* scope : {"vte-spawn-1.scope", "ptyxis-spawn-1.scope", "tmux-spawn-1.scope", "tab(17).scope"}) {
        add({.pid = static_cast<std::int32_t>(std::string_view(scope).size()) + 10,
             .exe = "/usr/bin/vim",
             .group = unit("app-org.gnome.Terminal.slice/" + std::string(scope))});
    }
    EXPECT_THAT(rows(), IsEmpty());
}

TEST_F(LinuxOwners, ATerminalsOwnServiceIsTheTerminal) {
    addEntry("org.gnome.Terminal", "Terminal", "gnome-terminal", "Categories=GNOME;System;TerminalEmulator;\n");
    add({.pid = 10,
         .exe = "/usr/libexec/gnome-terminal-server",
         .group = unit("app-org.gnome.Terminal.slice/gnome-terminal-server.service")});
    EXPECT_THAT(rows(), ElementsAre(Pair("Terminal", ElementsAre(10))));
}

TEST_F(LinuxOwners, WhatRunsInATerminalsOwnScopeIsNotTheTerminal) {
    addBinary("/usr/bin/xfce4-terminal");
    addEntry("xfce4-terminal", "Terminal", "xfce4-terminal", "Categories=System;TerminalEmulator;\n");
    const std::string scope = unit(R"(app-gnome-xfce4\x2dterminal-10.scope)");
    add({.pid = 10, .exe = "/usr/bin/xfce4-terminal", .group = scope});
    add({.pid = 11, .exe = "/usr/bin/bash", .group = scope, .parent = 10});
    add({.pid = 12, .exe = "/usr/bin/make", .group = scope, .parent = 11});
    EXPECT_THAT(rows(), ElementsAre(Pair("Terminal", ElementsAre(10))));
}

TEST_F(LinuxOwners, AShellBesideItsTerminalOnADesktopWithoutScopesIsNotTheTerminal) {
    addBinary("/usr/bin/xfce4-terminal");
    addEntry("xfce4-terminal", "Terminal", "xfce4-terminal", "Categories=System;TerminalEmulator;\n");
    const std::string session = "/user.slice/user-1000.slice/session-2.scope";
    add({.pid = 10, .exe = "/usr/bin/xfce4-terminal", .group = session});
    add({.pid = 11, .exe = "/usr/bin/bash", .group = session, .parent = 10});
    EXPECT_THAT(rows(), ElementsAre(Pair("Terminal", ElementsAre(10))));
}

TEST_F(LinuxOwners, WhatRunsInTheTerminalOfAnEditorIsNotTheEditor) {
    addBinary("/usr/share/code/code");
    addEntry("code", "Code", "/usr/share/code/code %F");
    const std::string scope = unit("app-gnome-code-10.scope");
    add({.pid = 10, .exe = "/usr/share/code/code", .group = scope});
    add({.pid = 11, .exe = "/usr/bin/git", .group = scope, .parent = 10});
    add({.pid = 12, .exe = "/usr/bin/bash", .group = scope, .parent = 10, .terminal = pseudoTerminal});
    add({.pid = 13, .exe = "/usr/bin/vim", .group = scope, .parent = 12, .terminal = pseudoTerminal + 7});
    add({.pid = 14, .exe = "/usr/bin/tmux", .group = scope});
    EXPECT_THAT(rows(), ElementsAre(Pair("Code", ElementsAre(10, 11))));
}

TEST_F(LinuxOwners, AConsoleThatAWholeSessionHasSaysNothing) {
    addEntry("org.gnome.Epiphany", "Web", "epiphany");
    constexpr std::int32_t firstConsole = 1025; // major 4, minor 1
    add({.pid = 10,
         .exe = "/usr/libexec/WebKitWebProcess",
         .group = unit("app-gnome-org.gnome.Epiphany-10.scope"),
         .terminal = firstConsole});
    EXPECT_THAT(rows(), ElementsAre(Pair("Web", ElementsAre(10))));
}

TEST_F(LinuxOwners, ProgramsThatShareTheIdentifierOfTheirToolkitAreSeveral) {
    add({.pid = 10, .exe = "/srv/notes/notes", .group = unit("app-org.chromium.Chromium-10.scope")});
    add({.pid = 11, .exe = "/srv/notes/notes", .group = unit("app-org.chromium.Chromium-11.scope")});
    add({.pid = 12, .exe = "/srv/chat/chat", .group = unit("app-org.chromium.Chromium-12.scope")});
    add({.pid = 13, .group = unit("app-org.chromium.Chromium-13.scope")}); // of an unknown program: of nobody
    EXPECT_THAT(rows(), UnorderedElementsAre(Pair("notes", ElementsAre(10, 11)), Pair("chat", ElementsAre(12))));
}

TEST_F(LinuxOwners, AnEntryIsBetterThanAnIdentifierWithoutOne) {
    addBinary("/opt/Signal/signal-desktop");
    addEntry("signal-desktop", "Signal", "/opt/Signal/signal-desktop %U");
    const std::string image = home.script("Applications/Obsidian.AppImage", "x").string();
    add({.pid = 10, .exe = "/opt/Signal/chrome_crashpad", .group = unit("app-org.chromium.Chromium-10.scope")});
    add({.pid = 11,
         .exe = "/tmp/.mount_Obs/obsidian",
         .group = unit("app-org.chromium.Chromium-11.scope"),
         .environment = "APPIMAGE=" + image + "|APPDIR=/tmp/.mount_Obs|"});
    EXPECT_THAT(rows(), UnorderedElementsAre(Pair("Signal", ElementsAre(10)), Pair("Obsidian", ElementsAre(11))));
}

TEST_F(LinuxOwners, ABusNameWithoutEntryIsNoApplication) {
    addEntry("org.gnome.Nautilus", "Files", "nautilus");
    add({.pid = 10, .exe = "/usr/bin/nautilus", .group = unit("dbus-:1.2-org.gnome.Nautilus@0.service")});
    add({.pid = 11, .exe = "/usr/libexec/goa-daemon", .group = unit("dbus-:1.2-org.gnome.OnlineAccounts@0.service")});
    EXPECT_THAT(rows(), ElementsAre(Pair("Files", ElementsAre(10))));
}

// 3 and 5

TEST_F(LinuxOwners, AProgramThatAnAppImageStartedIsNotTheAppImage) {
    const std::string image = home.script("Applications/Krita.AppImage", "x").string();
    const std::string inherited = "APPIMAGE=" + image + "|APPDIR=/tmp/.mount_Krita|";
    add({.pid = 10, .exe = "/tmp/.mount_Krita/usr/bin/krita", .environment = inherited});
    add({.pid = 11, .exe = "/usr/bin/xdg-open", .environment = inherited});
    add({.pid = 12, .exe = "/usr/bin/okular", .environment = inherited});
    add({.pid = 13, .exe = "/tmp/.mount_Krita/usr/bin/helper", .environment = "APPIMAGE=" + image + "|", .parent = 10});
    EXPECT_THAT(rows(), ElementsAre(Pair("Krita", ElementsAre(10, 13))));
}

TEST_F(LinuxOwners, AParentInAFolderOfManyProgramsIsNoFamily) {
    addEntry("org.example.Player", "Player", "player");
    add({.pid = 10, .exe = "/usr/bin/player", .group = unit("app-gnome-org.example.Player-10.scope")});
    add({.pid = 11, .exe = "/usr/bin/ffmpeg", .parent = 10});
    EXPECT_THAT(rows(), ElementsAre(Pair("Player", ElementsAre(10))));
}

} // namespace
} // namespace vellmoor
