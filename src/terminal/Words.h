#pragma once

#include "found/CleanerModule.h"
#include "texts/L.h"

#include <deque>
#include <expected>
#include <string>
#include <vector>

namespace vellmoor::terminal {

/// The words of a call that were not yet looked at.
class Words {
public:
    explicit Words(const std::vector<std::string>& words) : left_(words.begin(), words.end()) {}

    [[nodiscard]] bool empty() const { return left_.empty(); }
    [[nodiscard]] bool startsWithOption() const { return !empty() && left_.front().starts_with("--"); }
    [[nodiscard]] const std::string& front() const { return left_.front(); }
    /// Takes the next word; there must be one.
    std::string next();
    /// The word behind `what`, or a line that says that it is missing.
    std::expected<std::string, std::string> valueOf(const std::string& what);

private:
    std::deque<std::string> left_;
};

// Each a value, or a line that says what is wrong with the word.
std::expected<CleanerModule, std::string> moduleOf(const std::string& word);
std::expected<AppLanguage, std::string> languageOf(const std::string& word);

/// The modules' names for a help text, in their order.
std::string moduleNames();

} // namespace vellmoor::terminal
