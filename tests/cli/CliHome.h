// A throw-away home and the program in it.
#pragma once

#include "TemporaryFolder.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace vellmoor::test {

struct Ended {
    int status = -1; ///< -1: by a signal
    std::string out;
    std::string err;
};

/// One running call of the program.
class CliProcess {
public:
    CliProcess(pid_t pid, std::filesystem::path out, std::filesystem::path err)
        : pid_(pid),
          out_(std::move(out)),
          err_(std::move(err)) {}
    CliProcess(const CliProcess&) = delete;
    CliProcess& operator=(const CliProcess&) = delete;
    ~CliProcess();

    [[nodiscard]] pid_t pid() const { return pid_; }
    [[nodiscard]] bool hasEnded();
    void signal(int number) const;
    /// Waits for its end.
    Ended ended();

private:
    pid_t pid_;
    std::filesystem::path out_;
    std::filesystem::path err_;
    std::optional<int> result_; ///< as waitpid() answers it
};

enum class Who : std::uint8_t { User, Root };

class CliHome {
public:
    CliHome();

    [[nodiscard]] const std::filesystem::path& home() const { return home_; }
    [[nodiscard]] std::filesystem::path place(const std::filesystem::path& relative) const { return home_ / relative; }
    [[nodiscard]] bool has(const std::filesystem::path& relative) const;

    /// A file of `bytes` below the home.
    std::filesystem::path file(const std::filesystem::path& relative, std::int64_t bytes = 4096) const;
    std::filesystem::path text(const std::filesystem::path& relative, std::string_view contents) const;
    /// Everything in the home belongs to the user whom the calls are of; done before each call.
    void handOver() const;

    /// The program with these words; of a home without a desktop, in English unless `language` says otherwise. A test
    /// that runs as root calls it as somebody else: root cleans nothing. `terminal`: the other end of its standard
    /// error.
    [[nodiscard]] CliProcess start(std::vector<std::string> words, Who who = Who::User, int terminal = -1) const;
    [[nodiscard]] Ended call(const std::vector<std::string>& words, Who who = Who::User) const;

    /// Every path of the home with all that is told of it, but for what Vellmoor keeps itself and the Trash. Times of
    /// folders are left out where something was taken from, or put back.
    [[nodiscard]] std::map<std::string, std::string> inventory() const;
    /// Those of the Trash's items.
    [[nodiscard]] std::size_t trashedCount() const;

    std::string language = "en_GB.UTF-8";
    std::map<std::string, std::string> variables; ///< further ones of the calls

private:
    TemporaryFolder folder_;
    std::filesystem::path home_;
    mutable int calls_ = 0;
};

} // namespace vellmoor::test
