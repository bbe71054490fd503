#include "start/StartOptions.h"

#include <string_view>

namespace vellmoor {
namespace {

std::string moduleNames() {
    std::string names;
    for (const CleanerModule module : allCleanerModules) {
        names += names.empty() ? "" : ", ";
        names += rawValue(module);
    }
    return names;
}

std::unexpected<std::string> fault(std::string text) {
    return std::unexpected(std::move(text) + " (see vellmoor --help)");
}

/// The words, one after the other; what is read of them goes into `options_`.
class Reader {
public:
    explicit Reader(std::span<const char* const> words) : words_(words) {}

    std::expected<StartOptions, std::string> read() {
        while (next_ < words_.size()) {
            const std::string_view word = words_[next_++];
            if (word == "--help" || word == "-h") {
                return StartOptions{.kind = StartOptions::Kind::help, .wish = {}};
            }
            if (word == "--version") {
                return StartOptions{.kind = StartOptions::Kind::version, .wish = {}};
            }
            if (const auto read = readOption(word); !read) {
                return std::unexpected(read.error());
            }
        }
        return options_;
    }

private:
    static constexpr std::string_view moduleOption = "--module";

    std::expected<void, std::string> readOption(std::string_view word) {
        if (word == "--scan") {
            return setDeed(Wish::Deed::scan);
        }
        if (word == "--empty-trash") {
            return setDeed(Wish::Deed::offerEmptyTrash);
        }
        if (word == "--gapplication-service") {
            options_.kind = StartOptions::Kind::service;
            return {};
        }
        if (word == "-session") { // the session manager's, with a name: Qt reads it
            ++next_;
            return {};
        }
        if (word == moduleOption) {
            if (next_ == words_.size()) {
                return fault("--module wants a name");
            }
            return setModule(words_[next_++]);
        }
        if (word.starts_with(moduleOption) && word.substr(moduleOption.size()).starts_with('=')) {
            return setModule(word.substr(moduleOption.size() + 1));
        }
        return fault((word.starts_with('-') ? "unknown option '" : "it takes no '") + std::string(word) + "'");
    }

    std::expected<void, std::string> setModule(std::string_view name) {
        options_.wish.module = cleanerModule(name);
        if (!options_.wish.module) {
            return fault("no module '" + std::string(name) + "'");
        }
        return {};
    }

    std::expected<void, std::string> setDeed(Wish::Deed deed) {
        if (options_.wish.deed != Wish::Deed::none && options_.wish.deed != deed) {
            return fault("--scan and --empty-trash are two wishes");
        }
        options_.wish.deed = deed;
        return {};
    }

    std::span<const char* const> words_;
    std::size_t next_ = 0;
    StartOptions options_;
};

} // namespace

std::expected<StartOptions, std::string> readStartOptions(std::span<const char* const> words) {
    return Reader(words).read();
}

std::string helpText() {
    return "Usage: vellmoor [OPTION]...\n"
           "Find the disk space and memory that can be got back, show every path, and move what you tick to the "
           "Trash.\n"
           "\n"
           "Options:\n"
           "  --module NAME   open this module\n"
           "  --scan          start a scan of it; without --module, of everything\n"
           "  --empty-trash   look into the Trash and show what emptying would take; only your answer does it\n"
           "  --gapplication-service\n"
           "                  wait until the session bus asks for the window; for desktops\n"
           "  -h, --help      print this\n"
           "  --version       print the version\n"
           "\n"
           "The modules are " +
           moduleNames() +
           ".\n"
           "A Vellmoor that runs already comes to the front and does it.\n"
           "\n"
           "Exit status is 0 when all went well, 1 when the window could not be opened, 2 for a wrong option.\n";
}

} // namespace vellmoor
