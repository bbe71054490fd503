#include "programs/Commands.h"

#include "TextServices.h"
#include "disk/Descriptor.h"
#include "disk/Files.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

extern char** environ; // NOLINT: POSIX gives it no header

namespace vellmoor::commands {
namespace {

enum class Errors : std::uint8_t { Dropped, Mixed };

struct Run {
    std::int32_t status = -1;
    std::string bytes;
    std::string errorMessage;
};

// The child gets the parent's environment and folder, and nothing else of it: signals that this program (or Qt)
// ignores or blocks would make tools behave oddly.
class Attributes {
public:
    Attributes() {
        ::posix_spawnattr_init(&value_);
        sigset_t none;
        sigset_t defaults;
        ::sigemptyset(&none);
        ::sigemptyset(&defaults);
        ::sigaddset(&defaults, SIGPIPE);
        ::posix_spawnattr_setsigmask(&value_, &none);
        ::posix_spawnattr_setsigdefault(&value_, &defaults);
        ::posix_spawnattr_setflags(&value_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~Attributes() { ::posix_spawnattr_destroy(&value_); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    [[nodiscard]] const posix_spawnattr_t* get() const { return &value_; }

private:
    posix_spawnattr_t value_{};
};

class FileActions {
public:
    FileActions(int pipe, Errors errors) {
        ::posix_spawn_file_actions_init(&value_);
        ::posix_spawn_file_actions_adddup2(&value_, pipe, STDOUT_FILENO);
        if (errors == Errors::Mixed) {
            ::posix_spawn_file_actions_adddup2(&value_, pipe, STDERR_FILENO);
        } else {
            ::posix_spawn_file_actions_addopen(&value_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        }
        ::posix_spawn_file_actions_addclosefrom_np(&value_, STDERR_FILENO + 1);
    }
    ~FileActions() { ::posix_spawn_file_actions_destroy(&value_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;
    [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &value_; }

private:
    posix_spawn_file_actions_t value_{};
};

// The parent's variables, LC_ALL replaced where the tool is to speak English. They outlive the spawning.
class Variables {
public:
    explicit Variables(Messages messages) {
        for (char** variable = environ; *variable != nullptr; ++variable) {
            if (messages == Messages::Inherited || !std::string_view(*variable).starts_with("LC_ALL=")) {
                pointers_.push_back(*variable);
            }
        }
        if (messages == Messages::English) {
            pointers_.push_back(english_.data());
        }
        pointers_.push_back(nullptr);
    }
    [[nodiscard]] char* const* get() const { return pointers_.data(); }

private:
    std::string english_ = "LC_ALL=C";
    std::vector<char*> pointers_;
};

// Both ends above the standard streams: a pipe end that is itself descriptor 1 or 2 would keep its close-on-exec
// flag when it is put there.
bool openPipe(Descriptor& readEnd, Descriptor& writeEnd) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return false;
    }
    readEnd = Descriptor(ends[0]);
    writeEnd = Descriptor(ends[1]);
    if (ends[1] > STDERR_FILENO) {
        return true;
    }
    writeEnd = Descriptor(::fcntl(ends[1], F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    return static_cast<bool>(writeEnd);
}

void readToEnd(int descriptor, std::string& bytes) {
    std::array<char, 65536> block;
    for (;;) {
        const ssize_t count = ::read(descriptor, block.data(), block.size());
        if (count > 0) {
            bytes.append(block.data(), static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            return;
        }
    }
}

std::int32_t waitFor(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            return -1;
        }
    }
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

Run run(const Path& tool, const std::vector<std::string>& arguments, Errors errors, Messages messages) {
    std::vector<std::string> words{tool.string()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);

    Descriptor readEnd;
    Descriptor writeEnd;
    if (!openPipe(readEnd, writeEnd)) {
        return {-1, {}, files::reason(errno)};
    }
    const FileActions actions(writeEnd.get(), errors);
    const Attributes attributes;
    const Variables variables(messages);
    pid_t child = 0;
    const int error =
        ::posix_spawn(&child, tool.c_str(), actions.get(), attributes.get(), pointers.data(), variables.get());
    writeEnd.close(); // else the reading never ends
    if (error != 0) {
        return {-1, {}, files::reason(error)};
    }
    Run done;
    readToEnd(readEnd.get(), done.bytes);
    done.status = waitFor(child);
    return done;
}

} // namespace

std::optional<std::string> output(const Path& tool, const std::vector<std::string>& arguments) {
    Run done = run(tool, arguments, Errors::Dropped, Messages::Inherited);
    if (done.status != 0 || !texts::isUtf8(done.bytes)) {
        return std::nullopt;
    }
    return std::move(done.bytes);
}

CommandResult result(const Path& tool, const std::vector<std::string>& arguments, Messages messages) {
    Run done = run(tool, arguments, Errors::Mixed, messages);
    if (!texts::isUtf8(done.bytes)) {
        done.bytes.clear();
    }
    return {done.status, std::move(done.bytes), std::move(done.errorMessage)};
}

} // namespace vellmoor::commands
