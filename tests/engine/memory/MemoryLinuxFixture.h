#pragma once

#include "EngineHome.h"
#include "memory/Memory.h"
#include "memory/MemoryFixtures.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace vellmoor::test {

/// Desktop entries and processes of a Linux home, and the applications that they are.
class LinuxApps : public ::testing::Test {
protected:
    LinuxApps() { home.layout.memory.processes.pageBytes = 4096; }

    /// An entry of the system with a program that exists.
    Path addEntry(const std::string& id, const std::string& name, const std::string& exec,
                  const std::string& more = {}) {
        return home.text("/usr/share/applications/" + id + ".desktop",
                         "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=" + exec + "\n" + more);
    }
    /// A program that is a script.
    void addProgram(const Path& path) { home.script(path, "#!/bin/sh\n"); }
    void add(const FakeProcess& process) { addProcess(home, process); }
    std::string unit(std::string_view name) { return userUnit(home, name); }
    std::vector<MemoryApp> apps() {
        EngineContext context = home.context();
        return memoryApps(context);
    }
    std::vector<std::string> names() {
        std::vector<std::string> out;
        for (const MemoryApp& app : apps()) {
            out.push_back(app.name);
        }
        return out;
    }

    EngineHome home{System::Linux};
};

} // namespace vellmoor::test
