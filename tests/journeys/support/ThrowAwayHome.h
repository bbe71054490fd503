#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace vellmoor::journey {

namespace fs = std::filesystem;

/// The home folder of one test process: made below the temporary folder and put into $HOME, gone with this object.
/// To be made before anything reads $HOME; GLib reads it once.
class ThrowAwayHome {
public:
    ThrowAwayHome();
    ~ThrowAwayHome();
    ThrowAwayHome(const ThrowAwayHome&) = delete;
    ThrowAwayHome& operator=(const ThrowAwayHome&) = delete;

private:
    fs::path folder_;
};

/// $HOME.
const fs::path& home();
/// Leaves nothing in it.
const fs::path& emptiedHome();

/// A file of that many bytes below the home, changed that many days ago.
fs::path makeFile(const fs::path& relative, std::size_t bytes, int daysOld = 0);
fs::path makeText(const fs::path& relative, const std::string& contents);
/// Whether something of that name is below the home; links are not followed.
bool has(const fs::path& relative);
/// Whether the Trash holds an item of that name and the note that restores it.
bool isTrashed(const std::string& name);
std::string textOfFile(const fs::path& relative);

/// Everything below a folder of the home, by relative path; files with their size. Equal before and after: nothing
/// was moved, removed, added or cut off. The program's own state is left out.
std::set<std::string> tree(const fs::path& relative = {});

/// Runs a command to its end and answers its exit status; its output goes to `output`.
int run(const std::string& command, std::string* output = nullptr);

} // namespace vellmoor::journey
