// What the stand-ins for Apple's classes show to the program, and what it did to them. Foundation itself is GNUstep's;
// only what that lacks is played here (FoundationStandIns.mm), and AppKit as a whole (AppKitStandIns.mm).
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vellmoor::test {

struct StagedVolume {
    std::filesystem::path path;
    std::optional<std::string> name;
    bool isHidden = false;
};

struct StagedApplication {
    int pid = 0;
    std::string name;
    std::optional<std::string> identifier;
    std::filesystem::path bundle; ///< empty: none
    bool isTerminated = false;
    bool isActive = false;
    bool takesRequests = true; ///< what -terminate answers
    int requests = 0;          ///< how often it was asked to quit
};

/// One for the whole program; a test sets it up anew by reset().
struct Stage {
    std::filesystem::path home = "/Users/anna";
    std::filesystem::path trash;           ///< where trashed items go; empty: the volume has none
    std::string trashFailure;              ///< the system's sentence then
    std::vector<StagedVolume> volumes;     ///< in the system's order
    std::optional<std::int64_t> totalBytes; ///< of every volume
    std::optional<std::int64_t> importantBytes;
    std::optional<std::int64_t> plainBytes; ///< what is free without anything given up: not what is asked for
    std::set<std::string> packages;        ///< extensions with the dot
    std::vector<StagedApplication> applications;

    std::vector<std::string> addresses;    ///< made of paths, "folder" or "file" before each
    std::vector<std::string> relativeDates; ///< each "style locale seconds"
};

Stage& stage();
/// Everything as at the start.
void resetStage();

} // namespace vellmoor::test
