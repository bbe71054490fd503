#include "found/ScanSnapshot.h"
#include "login/StartupFixture.h"

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::UnorderedElementsAre;

class UserServices : public ::testing::Test {
protected:
    EngineHome home{System::Linux};
    const Path folder = home.place(".config/systemd/user");

    Path service(const std::string& name, const std::string& text) const { return home.text(folder / name, text); }
    [[nodiscard]] std::optional<std::string> program(const std::string& command) const {
        service("a.service", "[Service]\nExecStart=" + command + "\n");
        return onlyItem(home).program;
    }
};

TEST_F(UserServices, AServiceIsReadFromItsUnitFile) {
    const Path file = service("sync-files.service", "# synchronises\n[Unit]\nDescription=File sync\n\n[Service]\n"
                                                    "ExecStart=/usr/bin/sync --daemon \\\n  --quiet\n"
                                                    "; a comment\nRestart=on-failure\n\n[Install]\n"
                                                    "WantedBy=default.target\n");
    const StartupItem item = onlyItem(home);
    EXPECT_EQ(item.id, file.string());
    EXPECT_EQ(item.name, "File sync");
    EXPECT_EQ(item.label, "sync-files");
    EXPECT_EQ(item.description, "/usr/bin/sync");
    EXPECT_EQ(item.plistURL, file);
    EXPECT_THAT(item.program, Optional(std::string("/usr/bin/sync")));
    EXPECT_TRUE(item.isEnabled);
    EXPECT_TRUE(item.startsAtLogin);
}

TEST_F(UserServices, TheProgramLosesItsPrefixes) {
    for (const char* command : {"@/bin/tool tool", "-/bin/tool", ":/bin/tool", "+/bin/tool", "!/bin/tool",
                                "!!/bin/tool", "-@+/bin/tool x", "\"/bin/tool\" x"}) {
        EXPECT_THAT(program(command), Optional(std::string("/bin/tool"))) << command;
    }
}

TEST_F(UserServices, TheHomeSpecifierIsResolved) {
    EXPECT_THAT(program("%h/bin/tool"), Optional(home.place("bin/tool").string()));
    EXPECT_EQ(onlyItem(home).description, "~/bin/tool");
}

TEST_F(UserServices, WithoutCommandTheFileIsTheDescription) {
    service("a.service", "[Service]\nType=oneshot\n");
    EXPECT_EQ(onlyItem(home).program, std::nullopt);
    EXPECT_EQ(onlyItem(home).description, "a.service");
}

TEST_F(UserServices, TheNameIsTheDescriptionElseFriendly) {
    service("com.example.update-agent.service", "[Service]\nExecStart=/bin/a\n");
    EXPECT_EQ(onlyItem(home).name, "update agent");
    service("com.example.update-agent.service", "[Unit]\nDescription=Agent\n[Service]\nExecStart=/bin/a\n");
    EXPECT_EQ(onlyItem(home).name, "Agent");
}

TEST_F(UserServices, TheApplicationOfTheProgramNamesTheService) {
    home.script("/usr/bin/chat", "#!/bin/sh\n");
    const Path entry = home.text("/usr/share/applications/org.x.Chat.desktop",
                                 "[Desktop Entry]\nType=Application\nName=Chat\nExec=chat %U\n");
    service("chat-daemon.service", "[Unit]\nDescription=Daemon\n[Service]\nExecStart=-/usr/bin/chat --daemon\n");
    EXPECT_THAT(onlyItem(home).appURL, Optional(entry));
    EXPECT_EQ(onlyItem(home).name, "Daemon");
    service("chat-daemon.service", "[Service]\nExecStart=-/usr/bin/chat --daemon\n");
    EXPECT_EQ(onlyItem(home).name, "Chat");
}

TEST_F(UserServices, ALinkInAWantsOrRequiresFolderStartsIt) {
    service("a.service", "[Service]\nExecStart=/bin/a\n");
    service("b.service", "[Service]\nExecStart=/bin/b\n");
    service("c.service", "[Service]\nExecStart=/bin/c\n");
    home.link(folder / "a.service", folder / "default.target.wants/a.service");
    home.link("../b.service", folder / "graphical-session.target.requires/b.service");
    home.link(folder / "c.service", folder / "default.target.upholds/c.service");
    home.file(folder / "other.wants/c.service"); // a file is no link
    std::vector<std::string> starting;
    for (const StartupItem& item : startup(home)) {
        if (item.startsAtLogin) {
            starting.push_back(item.label);
        }
    }
    EXPECT_THAT(starting, UnorderedElementsAre("a", "b"));
}

TEST_F(UserServices, RestartStartsAtLoginWhateverItsValue) {
    service("a.service", "[Service]\nExecStart=/bin/a\nRestart=no\n");
    EXPECT_TRUE(onlyItem(home).startsAtLogin);
    service("a.service", "[Service]\nExecStart=/bin/a\n");
    EXPECT_FALSE(onlyItem(home).startsAtLogin);
}

TEST_F(UserServices, ADisabledServiceKeepsItsLink) {
    home.text(".config/systemd/user.disabled/a.service", "[Service]\nExecStart=/bin/a\n");
    home.link(folder / "a.service", folder / "default.target.wants/a.service");
    EXPECT_FALSE(onlyItem(home).isEnabled);
    EXPECT_TRUE(onlyItem(home).startsAtLogin);
}

TEST_F(UserServices, TemplatesMasksAndAliasesAreNotListed) {
    service("real.service", "[Service]\nExecStart=/bin/a\n");
    service("template@.service", "[Service]\nExecStart=/bin/a\n");
    home.link("/dev/null", folder / "masked.service");
    home.link("real.service", folder / "alias.service");
    home.text(folder / "empty.service", "");
    service("timer.timer", "[Timer]\nOnCalendar=daily\n");
    service("noservice.service", "[Unit]\nDescription=x\n");
    EXPECT_THAT(labels(home), ElementsAre("real"));
}

TEST_F(UserServices, InstancesAndLinkedUnitsAreListed) {
    service("job@x.service", "[Service]\nExecStart=/bin/a\n");
    home.text("projects/tool.service", "[Service]\nExecStart=/bin/tool\n");
    home.link(home.place("projects/tool.service"), folder / "tool.service");
    EXPECT_THAT(labels(home), UnorderedElementsAre("job@x", "tool"));
}

TEST_F(UserServices, ALinkedUnitOfAnotherNameAtItsEndIsAnAlias) {
    home.text("projects/tool.service", "[Service]\nExecStart=/bin/tool\n");
    home.link("tool.service", "projects/other.service");
    home.link(home.place("projects/other.service"), folder / "other.service");
    EXPECT_THAT(startup(home), IsEmpty());
}

TEST_F(UserServices, AutostartEntriesComeBeforeServicesOfTheSameName) {
    home.text(".config/autostart/same.desktop", "[Desktop Entry]\nName=Same\nExec=a\n");
    service("same2.service", "[Unit]\nDescription=Same\n[Service]\nExecStart=/bin/a\n");
    EXPECT_THAT(labels(home), ElementsAre("same", "same2"));
}

TEST_F(UserServices, LinesThatSystemdPassesOverAreNoReasonToMissAService) {
    service("a.service", "before any group\nkey=value\n[Unit]\nno assignment here\nDescription=Agent\n= x\n"
                         "[Service]\nExecStart=/bin/a\nodd key!=1\n");
    EXPECT_EQ(onlyItem(home).name, "Agent");
    EXPECT_THAT(onlyItem(home).program, Optional(std::string("/bin/a")));
}

TEST_F(UserServices, BrokenUnitsArePassedOver) {
    home.text(folder / "cut.service", "[Serv");
    home.text(folder / "huge.service", "[Service]\nExecStart=" + std::string(std::size_t{10} << 20U, 'x') + "\n");
    home.folder(folder / "folder.service");
    home.fifo(folder / "fifo.service");
    home.link("nowhere", folder / "dangling.service");
    home.link("loop.service", folder / "loop.service");
    EXPECT_THAT(startup(home), IsEmpty());
}

} // namespace
} // namespace vellmoor::test
