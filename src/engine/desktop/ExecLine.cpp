#include "desktop/ExecLine.h"

#include <algorithm>
#include <filesystem>

namespace vellmoor {
namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// NAME=value, as a shell takes it.
bool isAssignment(std::string_view word) {
    const std::size_t equals = word.find('=');
    if (equals == std::string_view::npos || equals == 0 || (word[0] >= '0' && word[0] <= '9')) {
        return false;
    }
    return std::ranges::all_of(word.substr(0, equals), [](char c) {
        return c == '_' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    });
}

/// Reads the words of a command line one after another.
class WordReader {
public:
    explicit WordReader(std::string_view text) : rest_(text) {}

    /// Nothing at the end, or once a quote is not closed.
    std::optional<std::string> next() {
        while (!rest_.empty() && isBlank(rest_.front())) {
            rest_.remove_prefix(1);
        }
        if (rest_.empty()) {
            return std::nullopt;
        }
        std::string word;
        while (!rest_.empty() && !isBlank(rest_.front()) && !broken_) {
            readPiece(word);
        }
        return broken_ ? std::nullopt : std::optional(word);
    }

    [[nodiscard]] bool isBroken() const { return broken_; }

private:
    void readPiece(std::string& word) {
        const char c = take();
        if (c == '"' || c == '\'') {
            readQuoted(word, c);
        } else if (c == '\\' && !rest_.empty()) {
            word += take();
        } else {
            word += c;
        }
    }

    void readQuoted(std::string& word, char quote) {
        while (!rest_.empty()) {
            const char c = take();
            if (c == quote) {
                return;
            }
            const bool escape = c == '\\' && quote == '"' && !rest_.empty() &&
                                std::string_view("\"`$\\").find(rest_.front()) != std::string_view::npos;
            word += escape ? take() : c;
        }
        broken_ = true;
    }

    char take() {
        const char c = rest_.front();
        rest_.remove_prefix(1);
        return c;
    }

    std::string_view rest_;
    bool broken_ = false;
};

/// An application ID has at least two dots; what follows a "/" names a branch.
std::string applicationId(std::string_view word) {
    const std::string_view id = word.substr(0, word.find('/'));
    const bool plain = std::ranges::all_of(id, [](char c) {
        return c == '.' || c == '-' || c == '_' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') ||
               (c >= 'A' && c <= 'Z');
    });
    const bool hasGap = id.starts_with('.') || id.ends_with('.') || id.find("..") != std::string_view::npos;
    return plain && !hasGap && std::ranges::count(id, '.') >= 2 ? std::string(id) : std::string();
}

} // namespace

std::vector<std::string> listValue(std::string_view text) {
    std::vector<std::string> parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(';'), text.size());
        if (end > 0) {
            parts.emplace_back(text.substr(0, end));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

std::optional<std::vector<std::string>> execWords(std::string_view exec) {
    WordReader reader(exec);
    std::vector<std::string> words;
    while (auto word = reader.next()) {
        words.push_back(std::move(*word));
    }
    if (reader.isBroken()) {
        return std::nullopt;
    }
    return words;
}

std::string execProgram(const std::vector<std::string>& words) {
    bool afterEnv = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (isAssignment(word)) {
            continue;
        }
        if (afterEnv && word.starts_with('-')) {
            i += word == "-u" || word == "-C" || word == "--unset" || word == "--chdir" ? 1U : 0U;
            continue;
        }
        if (std::filesystem::path(word).filename() != "env") {
            return word;
        }
        afterEnv = true;
    }
    return {};
}

std::string flatpakApplication(const std::vector<std::string>& words) {
    const std::string program = execProgram(words);
    if (std::filesystem::path(program).filename() != "flatpak") {
        return {};
    }
    auto word = std::ranges::find(words, program);
    word = std::find(word, words.end(), "run");
    for (; word != words.end(); ++word) {
        if (word->starts_with('-')) {
            continue;
        }
        if (std::string id = applicationId(*word); !id.empty()) {
            return id;
        }
    }
    return {};
}

} // namespace vellmoor
