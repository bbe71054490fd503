#include "ThrowAwayHome.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <system_error>
#include <unistd.h>

namespace vellmoor::journey {
namespace {

constexpr auto trash = ".local/share/Trash";

/// Fontconfig writes into $HOME/.cache what the system's cache of fonts lacks: into this folder here, so that nothing
/// but the program changes the home.
void keepFontsIn(const fs::path& folder) {
    const fs::path configuration = folder / "fonts.conf";
    std::ofstream(configuration)
        << "<fontconfig><cachedir>" << (folder / "cache").string()
        << "</cachedir><include ignore_missing=\"yes\">/etc/fonts/fonts.conf</include></fontconfig>\n";
    ::setenv("FONTCONFIG_FILE", configuration.c_str(), 1);
}

} // namespace

ThrowAwayHome::ThrowAwayHome() {
    std::string folder = (fs::temp_directory_path() / "vellmoor-journey-XXXXXX").string();
    if (::mkdtemp(folder.data()) == nullptr) {
        throw std::system_error(errno, std::generic_category(), "mkdtemp");
    }
    folder_ = folder;
    const fs::path home = folder_ / "home";
    const fs::path fonts = folder_ / "fonts";
    fs::create_directory(home);
    fs::create_directory(fonts);
    ::setenv("HOME", home.c_str(), 1);
    keepFontsIn(fonts);
    for (const char* name :
         {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR",
          "XDG_CURRENT_DESKTOP", "CARGO_HOME", "PIP_CACHE_DIR", "GOPATH", "CCACHE_DIR", "DBUS_SESSION_BUS_ADDRESS"}) {
        ::unsetenv(name);
    }
}

ThrowAwayHome::~ThrowAwayHome() {
    std::error_code ignored; // a leftover in the temporary folder hurts nobody
    fs::remove_all(folder_, ignored);
}

const fs::path& home() {
    static const fs::path folder = std::getenv("HOME");
    return folder;
}

const fs::path& emptiedHome() {
    for (const auto& entry : fs::directory_iterator(home())) {
        fs::remove_all(entry.path());
    }
    return home();
}

fs::path makeFile(const fs::path& relative, std::size_t bytes, int daysOld) {
    const fs::path path = makeText(relative, std::string(bytes, 'x'));
    fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(24 * daysOld));
    return path;
}

fs::path makeText(const fs::path& relative, const std::string& contents) {
    const fs::path path = home() / relative;
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << contents;
    return path;
}

bool has(const fs::path& relative) {
    return fs::symlink_status(home() / relative).type() != fs::file_type::not_found;
}

bool isTrashed(const std::string& name) {
    return has(fs::path(trash) / "files" / name) && has(fs::path(trash) / "info" / (name + ".trashinfo"));
}

std::string textOfFile(const fs::path& relative) {
    std::ostringstream text;
    text << std::ifstream(home() / relative, std::ios::binary).rdbuf();
    return text.str();
}

std::set<std::string> tree(const fs::path& relative) {
    // What the program keeps of its own work, and the folders made for it.
    const std::set<std::string> own{".local/state/vellmoor", ".local/state/vellmoor/lock",
                                    ".local/state/vellmoor/history.jsonl", ".local/state", ".local"};
    std::set<std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(home() / relative)) {
        std::string line = entry.path().lexically_relative(home()).string();
        if (own.contains(line)) {
            continue;
        }
        if (entry.is_regular_file() && !entry.is_symlink()) {
            line += " " + std::to_string(entry.file_size());
        }
        found.insert(std::move(line));
    }
    return found;
}

int run(const std::string& command, std::string* output) {
    FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr) {
        return -1;
    }
    std::array<char, 4096> buffer{};
    std::string all;
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
        all.append(buffer.data(), count);
    }
    if (output != nullptr) {
        *output = all;
    }
    return ::pclose(pipe);
}

} // namespace vellmoor::journey
