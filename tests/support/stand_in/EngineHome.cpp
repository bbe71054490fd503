#include "EngineHome.h"

#include "disk/Paths.h"
#include "texts/L.h"

#include <sys/stat.h>

namespace vellmoor::test {
namespace {

TimePoint thisSecond() {
    return std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
}

SystemLayout layoutOf(const StandInPlatform& platform, const LinuxEnvironment& environment) {
    return platform.system == System::Mac ? macosLayout(platform.home, platform.user, platform.root)
                                          : linuxLayout(environment, platform.user, platform.root);
}

} // namespace

EngineHome::EngineHome(System system)
    : home(folder_.folder(system == System::Mac ? "Users/tester" : "home/tester")),
      root(folder_.folder("root")),
      environment(linuxEnvironmentOf(home)),
      platform(system, home, root),
      layout(layoutOf(platform, environment)),
      now(thisSecond()) {
    L::setTextSet(system == System::Mac ? TextSet::Mac : TextSet::Linux);
    L::setLanguage(AppLanguage::english);
}

void EngineHome::useEnvironment() {
    layout = layoutOf(platform, environment);
}

Path EngineHome::place(const Path& path) const {
    if (path.is_relative()) {
        return home / path;
    }
    const bool inside = path == home || path == root || isStrictlyBelow(path, home) || isStrictlyBelow(path, root);
    return inside ? path : underRoot(root, path.string());
}

Path EngineHome::relative(const Path& path) const {
    return place(path).lexically_relative(folder_.path());
}

Path EngineHome::file(const Path& path, std::int64_t bytes, Age age) const {
    const Path made = folder_.file(relative(path), bytes);
    setAge(made, age);
    return made;
}

Path EngineHome::text(const Path& path, std::string_view contents, Age age) const {
    const Path made = folder_.text(relative(path), contents);
    setAge(made, age);
    return made;
}

Path EngineHome::script(const Path& path, std::string_view contents) const {
    const Path made = text(path, contents);
    setMode(made, 0755);
    return made;
}

Path EngineHome::folder(const Path& path) const {
    return folder_.folder(relative(path));
}

Path EngineHome::link(const Path& target, const Path& path) const {
    return folder_.link(target, relative(path));
}

Path EngineHome::fifo(const Path& path) const {
    return folder_.fifo(relative(path));
}

void EngineHome::setAge(const Path& path, Age age) const {
    folder_.setModified(relative(path), now - age);
}

void EngineHome::setMode(const Path& path, unsigned mode) const {
    folder_.setMode(relative(path), mode);
}

bool EngineHome::has(const Path& path) const {
    struct stat status{};
    return ::lstat(place(path).c_str(), &status) == 0;
}

} // namespace vellmoor::test
