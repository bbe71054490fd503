#include "CliHome.h"

#include "FileContent.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <grp.h>
#include <iterator>
#include <sched.h>
#include <sstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace vellmoor::test {
namespace {

namespace fs = std::filesystem;

constexpr uid_t somebody = 20001; ///< whom a test of root's calls the program as

void orDie(bool went) {
    if (!went) {
        ::_exit(127);
    }
}

void writeFile(const char* path, const std::string& text) {
    const int file = ::open(path, O_WRONLY | O_CLOEXEC);
    orDie(file >= 0 && ::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size()));
    ::close(file);
}

/// In the child: who it is from now on.
void become(Who who) {
    if (who == Who::User && ::geteuid() == 0) {
        orDie(::setgroups(0, nullptr) == 0 && ::setgid(somebody) == 0 && ::setuid(somebody) == 0);
    } else if (who == Who::Root && ::geteuid() != 0) {
        // Root of a name space of its own: root to the program, and nobody more than before to the system.
        const std::string self = std::to_string(::geteuid());
        orDie(::unshare(CLONE_NEWUSER) == 0);
        writeFile("/proc/self/uid_map", "0 " + self + " 1");
    }
}

void redirect(const fs::path& file, int to) {
    const int opened = ::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    orDie(opened >= 0 && ::dup2(opened, to) == to);
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> all;
    for (std::string& text : texts) {
        all.push_back(text.data());
    }
    all.push_back(nullptr);
    return all;
}

std::string described(const fs::path& path) {
    struct stat status{};
    if (::lstat(path.c_str(), &status) != 0) {
        throw std::system_error(errno, std::generic_category(), path.string());
    }
    std::ostringstream text;
    text << std::oct << status.st_mode << std::dec;
    if (S_ISLNK(status.st_mode)) {
        text << " -> " << fs::read_symlink(path).native();
    } else if (S_ISREG(status.st_mode)) {
        text << ' ' << std::hash<std::string>()(test::contentOf(path)) << ' ' << status.st_size;
    }
    if (!S_ISDIR(status.st_mode)) {
        text << ' ' << status.st_mtim.tv_sec << '.' << status.st_mtim.tv_nsec;
    }
    return text.str();
}

} // namespace

CliProcess::~CliProcess() {
    if (!result_) {
        signal(SIGKILL);
        ended();
    }
}

bool CliProcess::hasEnded() {
    int result = 0;
    if (!result_ && ::waitpid(pid_, &result, WNOHANG) == pid_) {
        result_ = result;
    }
    return result_.has_value();
}

void CliProcess::signal(int number) const {
    ::kill(pid_, number);
}

Ended CliProcess::ended() {
    int result = 0;
    while (!result_) {
        if (::waitpid(pid_, &result, 0) == pid_) {
            result_ = result;
        }
    }
    return {.status = WIFEXITED(*result_) ? WEXITSTATUS(*result_) : -1,
            .out = test::contentOf(out_),
            .err = test::contentOf(err_)};
}

CliHome::CliHome() : home_(folder_.folder("home/tester")) {
    folder_.folder("root");
}

bool CliHome::has(const fs::path& relative) const {
    return fs::symlink_status(place(relative)).type() != fs::file_type::not_found;
}

fs::path CliHome::file(const fs::path& relative, std::int64_t bytes) const {
    return folder_.file("home/tester" / relative, bytes);
}

fs::path CliHome::text(const fs::path& relative, std::string_view words) const {
    return folder_.text("home/tester" / relative, words);
}

void CliHome::handOver() const {
    if (::geteuid() != 0) {
        return;
    }
    const auto give = [](const fs::path& path) {
        if (::lchown(path.c_str(), somebody, somebody) != 0) {
            throw std::system_error(errno, std::generic_category(), path.string());
        }
    };
    give(folder_.path());
    for (const auto& entry : fs::recursive_directory_iterator(folder_.path())) {
        give(entry.path());
    }
}

CliProcess CliHome::start(std::vector<std::string> words, Who who, int terminal) const {
    handOver();
    const std::string number = std::to_string(++calls_);
    const fs::path out = folder_ / ("out" + number);
    const fs::path err = folder_ / ("err" + number);
    words.insert(words.begin(), {VELLMOOR_ROOTED_CLI, (folder_ / "root").string()});
    std::vector<std::string> environment{"HOME=" + home_.string(), "PATH=/usr/bin:/bin", "LC_ALL=" + language,
                                         "TERM=xterm", "ASAN_OPTIONS=detect_leaks=0"};
    for (const auto& [name, value] : variables) {
        environment.push_back(name + "=" + value);
    }
    const std::vector<char*> arguments = pointers(words);
    const std::vector<char*> values = pointers(environment);
    const pid_t pid = ::fork();
    if (pid == 0) {
        redirect(out, STDOUT_FILENO);
        if (terminal >= 0) {
            orDie(::dup2(terminal, STDERR_FILENO) == STDERR_FILENO);
        } else {
            redirect(err, STDERR_FILENO);
        }
        // Opened before: whom root calls it as may not be able to enter the folder of the build.
        const int program = ::open(VELLMOOR_ROOTED_CLI, O_RDONLY | O_CLOEXEC);
        become(who);
        orDie(::chdir(home_.c_str()) == 0);
        ::fexecve(program, arguments.data(), values.data());
        ::_exit(127);
    }
    return {pid, out, err};
}

Ended CliHome::call(const std::vector<std::string>& words, Who who) const {
    return start(words, who).ended();
}

std::map<std::string, std::string> CliHome::inventory() const {
    std::map<std::string, std::string> all;
    for (auto entry = fs::recursive_directory_iterator(home_); entry != fs::recursive_directory_iterator(); ++entry) {
        const std::string name = entry->path().lexically_relative(home_).native();
        if (name == ".local/state/vellmoor" || name == ".local/share/Trash") {
            entry.disable_recursion_pending();
            continue;
        }
        all.emplace(name, described(entry->path()));
    }
    return all;
}

std::size_t CliHome::trashedCount() const {
    const fs::path files = place(".local/share/Trash/files");
    std::error_code none; // without a Trash there is nothing in it
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(files, none), fs::directory_iterator()));
}

} // namespace vellmoor::test
