#include "RunningApp.h"

#include "ThrowAwayHome.h"

#include <stdexcept>
#include <string>

namespace vellmoor::journey {
namespace {

fs::path program() {
    return home() / ".local/opt/sleeper/sleeper";
}

} // namespace

void RunningApp::install() {
    fs::create_directories(program().parent_path());
    fs::copy_file(VELLMOOR_QUIT_APP, program());
    makeText(".local/share/applications/org.example.Sleeper.desktop",
             "[Desktop Entry]\nType=Application\nName=Sleeper\nExec=" + program().string() + "\n");
}

RunningApp::RunningApp(const QStringList& manner) {
    process_.start(QString::fromStdString(program().string()),
                   QStringList{QString::fromStdString((home() / "note").string())} + manner);
    if (!process_.waitForStarted()) {
        throw std::runtime_error("the test application did not start");
    }
}

RunningApp::~RunningApp() {
    process_.kill();
    process_.waitForFinished();
}

std::string RunningApp::note() {
    return textOfFile("note");
}

void RunningApp::list() const {
    const fs::path folder = home() / "no-such-system/proc";
    fs::create_directories(folder);
    const std::string pid = std::to_string(process_.processId());
    fs::create_directory_symlink("/proc/" + pid, folder / pid);
}

bool RunningApp::endedByItself() const {
    return process_.state() == QProcess::NotRunning && process_.exitStatus() == QProcess::NormalExit &&
           process_.exitCode() == 0;
}

} // namespace vellmoor::journey
