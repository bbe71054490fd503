// User services that hide a service of the same name of the system.
#include "login/StartupMasks.h"

#include "found/ScanSnapshot.h"
#include "login/StartupFixture.h"

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::string_view ownText = "[Unit]\nDescription=Job\n[Service]\nExecStart=/bin/own\n";
constexpr std::string_view vendorText = "[Unit]\nDescription=Job\n[Service]\nExecStart=/bin/vendor\n";

class ServiceMasks : public ::testing::Test {
protected:
    EngineHome home{System::Linux};
    const Path service = home.place(".config/systemd/user/job.service");
    const Path disabled = home.place(".config/systemd/user.disabled/job.service");

    void vendor() const { home.text("/usr/lib/systemd/user/job.service", vendorText); }
    [[nodiscard]] StartupItem own() const {
        home.text(service, ownText);
        return onlyItem(home);
    }
    [[nodiscard]] bool isMasked() const {
        return std::filesystem::is_symlink(service) && std::filesystem::read_symlink(service) == "/dev/null";
    }
};

TEST_F(ServiceMasks, AServiceThatHidesOneOfTheSystemIsMasked) {
    vendor();
    EXPECT_TRUE(disable(home, own()).succeeded);
    EXPECT_TRUE(isMasked());
    EXPECT_EQ(contentOf(disabled), ownText);
    EXPECT_FALSE(onlyItem(home).isEnabled); // the mask is not listed
}

TEST_F(ServiceMasks, EveryFolderOfUnitsCounts) {
    home.environment.runtime = "/run/user/7";
    home.environment.configDirs = {"/etc/one"};
    home.environment.dataDirs = {"/opt/share"};
    home.useEnvironment();
    for (const char* folder :
         {"/etc/systemd/user", ".local/share/systemd/user", "/usr/local/lib/systemd/user", "/usr/lib/systemd/user",
          "/run/user/7/systemd/user", "/run/systemd/user", "/etc/one/systemd/user", "/opt/share/systemd/user"}) {
        const Path hidden = home.text(Path(folder) / "job.service", vendorText);
        EXPECT_TRUE(disable(home, own()).succeeded);
        EXPECT_TRUE(isMasked()) << folder;
        std::filesystem::remove(hidden);
        std::filesystem::remove(service);
        std::filesystem::remove(disabled);
    }
}

TEST_F(ServiceMasks, AServiceOfTheUsersAloneLeavesNothingBehind) {
    home.text("/usr/lib/systemd/user/other.service", vendorText);
    home.text("/usr/lib/systemd/system/job.service", vendorText);
    EXPECT_TRUE(disable(home, own()).succeeded);
    EXPECT_FALSE(home.has(service));
}

TEST_F(ServiceMasks, EnablingTakesTheMaskAway) {
    vendor();
    EXPECT_TRUE(disable(home, own()).succeeded);
    EXPECT_TRUE(enable(home, onlyItem(home)).succeeded);
    EXPECT_EQ(contentOf(service), ownText);
    EXPECT_FALSE(home.has(disabled));
}

TEST_F(ServiceMasks, NothingElseIsTakenForAMask) {
    home.text(disabled, ownText);
    const StartupItem item = onlyItem(home);
    const Path other = home.text("other.service", ownText);
    for (const Path& target : {other, Path("/dev/zero"), Path("nowhere"), Path("../../../dev/null")}) {
        home.link(target, service);
        EXPECT_FALSE(enable(home, item).succeeded) << target;
        EXPECT_EQ(std::filesystem::read_symlink(service), target);
        std::filesystem::remove(service);
    }
    home.text(service, "");
    EXPECT_FALSE(enable(home, item).succeeded);
    EXPECT_TRUE(home.has(service));
}

TEST_F(ServiceMasks, AMaskThatCannotBeMadeUndoesTheMove) {
    vendor();
    const StartupItem item = own();
    home.platform.fail(Operation::CreateLink, service, "No space left on device");
    const StartupActionResult result = disable(home, item);
    EXPECT_EQ(result.message, "Failed to disable Job: No space left on device");
    EXPECT_EQ(contentOf(service), ownText);
    EXPECT_FALSE(home.has(disabled));
}

TEST_F(ServiceMasks, AFailedMoveBringsTheMaskBack) {
    vendor();
    EXPECT_TRUE(disable(home, own()).succeeded);
    home.platform.fail(Operation::MoveItem, disabled, "Input/output error");
    EXPECT_FALSE(enable(home, onlyItem(home)).succeeded);
    EXPECT_TRUE(isMasked());
    EXPECT_EQ(contentOf(disabled), ownText);
}

} // namespace
} // namespace vellmoor::test
