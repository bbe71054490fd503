#pragma once
// Commands that are measured in turn, as the benchmarks' command lines name them:
//   ROUNDS NAME COMMAND [ARGUMENT]... [-- NAME COMMAND [ARGUMENT]...]...
#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <unistd.h>
#include <vector>

struct Contestant {
    std::string name;
    std::vector<char*> command;       ///< with a null pointer at the end
    std::vector<double> milliseconds; ///< one a round, in their order
    long peakKiB = 0;
};

inline std::vector<Contestant> contestantsOf(int count, char** arguments) {
    std::vector<Contestant> contestants;
    bool startsNew = true;
    for (int i = 2; i < count; ++i) {
        if (std::strcmp(arguments[i], "--") == 0) {
            startsNew = true;
        } else if (startsNew) {
            contestants.push_back({arguments[i], {}, {}, 0});
            startsNew = false;
        } else {
            contestants.back().command.push_back(arguments[i]);
        }
    }
    std::erase_if(contestants, [](const Contestant& contestant) { return contestant.command.empty(); });
    for (Contestant& contestant : contestants) {
        contestant.command.push_back(nullptr);
    }
    return contestants;
}

/// Starts the command with every output to /dev/null; 0 when it does not start.
inline pid_t start(Contestant& contestant) {
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int error =
        ::posix_spawnp(&child, contestant.command[0], &actions, nullptr, contestant.command.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? child : 0;
}
