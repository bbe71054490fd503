#include "DesktopEntries.h"

#include "Paths.h"
#include "ScanContext.h"

#include <algorithm>
#include <array>
#include <set>
#include <span>

namespace vellmoor {
namespace {

constexpr std::string_view entryGroup = "Desktop Entry";
constexpr std::string_view entryEnding = ".desktop";
/// Entries of menus with vendor folders lie two or three levels deep; more is no menu.
constexpr int deepestEntryFolder = 5;

using Group = std::map<std::string, std::string>;

std::string valueOf(const Group& group, std::string_view key) {
    const auto found = group.find(std::string(key));
    return found == group.end() ? std::string() : found->second;
}

bool isTrue(const Group& group, std::string_view key) {
    const std::string value = valueOf(group, key);
    return value == "true" || value == "1";
}

/// The value in the interface language; the system's own language plays no part.
std::string localizedValue(const Group& group, std::string_view key) {
    static constexpr std::array chinese{"[zh_CN]", "[zh_Hans]", "[zh_SG]", "[zh]", ""};
    static constexpr std::array english{"[en_US]", "[en]", ""};
    const bool isChinese = L::language() == AppLanguage::chinese;
    const std::span<const char* const> suffixes =
        isChinese ? std::span<const char* const>(chinese) : std::span<const char* const>(english);
    for (const char* suffix : suffixes) {
        if (std::string value = valueOf(group, std::string(key) + suffix); !value.empty()) {
            return value;
        }
    }
    return {};
}

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

std::string_view lastComponent(std::string_view path) {
    return path.substr(path.find_last_of('/') + 1);
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

void collectEntries(const ScanContext& context, const Path& folder, const std::string& idPrefix, int depth,
                    std::vector<InstalledEntry>& out) {
    const auto children = context.platform().entries(folder);
    if (!children) {
        return;
    }
    for (const FolderEntry& child : *children) {
        const Path path = folder / child.name;
        if (child.isDirectory && !child.isSymlink && depth < deepestEntryFolder) {
            collectEntries(context, path, idPrefix + child.name + "-", depth + 1, out);
            continue;
        }
        if (!child.name.ends_with(entryEnding) || !(child.isRegularFile || child.isSymlink)) {
            continue;
        }
        const std::optional<KeyFile> file = context.platform().keyFile(path);
        if (!file || !file->contains(std::string(entryGroup)) ||
            valueOf(file->at(std::string(entryGroup)), "Type") != "Application") {
            continue;
        }
        const std::string stem = child.name.substr(0, child.name.size() - entryEnding.size());
        if (auto entry = desktopEntry(*file, idPrefix + stem, path)) {
            out.push_back(std::move(*entry));
        }
    }
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
        if (lastComponent(word) != "env") {
            return word;
        }
        afterEnv = true;
    }
    return {};
}

std::string flatpakApplication(const std::vector<std::string>& words) {
    const std::string program = execProgram(words);
    if (lastComponent(program) != "flatpak") {
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

std::optional<InstalledEntry> desktopEntry(const KeyFile& file, std::string id, const Path& path) {
    const auto found = file.find(std::string(entryGroup));
    if (found == file.end()) {
        return std::nullopt;
    }
    const Group& group = found->second;
    InstalledEntry entry;
    entry.id = std::move(id);
    entry.path = path;
    entry.name = localizedValue(group, "Name");
    entry.exec = valueOf(group, "Exec");
    if (const auto words = execWords(entry.exec)) {
        entry.execProgram = execProgram(*words);
        entry.flatpakId = flatpakApplication(*words);
    }
    entry.tryExec = valueOf(group, "TryExec");
    entry.icon = localizedValue(group, "Icon");
    entry.noDisplay = isTrue(group, "NoDisplay");
    entry.hidden = isTrue(group, "Hidden");
    entry.onlyShowIn = listValue(valueOf(group, "OnlyShowIn"));
    entry.notShowIn = listValue(valueOf(group, "NotShowIn"));
    return entry;
}

std::vector<InstalledEntry> entriesOfFolder(const ScanContext& context, const Path& folder) {
    std::vector<InstalledEntry> entries;
    collectEntries(context, folder, "", 0, entries);
    return entries;
}

const std::vector<InstalledEntry>& installedEntries(ScanContext& context) {
    std::optional<std::vector<InstalledEntry>>& known = context.installedEntries();
    if (known) {
        return *known;
    }
    known.emplace();
    std::set<std::string> ids;
    for (const Path& folder : context.layout().apps.entryFolders) {
        for (InstalledEntry& entry : entriesOfFolder(context, folder)) {
            entry.shadowed = !ids.insert(entry.id).second;
            known->push_back(std::move(entry));
        }
    }
    return *known;
}

std::optional<Path> programPath(const ScanContext& context, std::string_view program) {
    const SystemLayout& layout = context.layout();
    const auto executable = [&](const Path& path) -> std::optional<Path> {
        const std::optional<Path> real = context.platform().realPath(path);
        const std::optional<FileFacts> facts = real ? context.platform().facts(*real) : std::nullopt;
        const bool found = facts && facts->isRegularFile && context.platform().isExecutable(path);
        return found ? std::optional(path) : std::nullopt;
    };
    if (program.starts_with('/')) {
        return executable(placedProgram(layout, program));
    }
    if (program.empty() || program.find('/') != std::string_view::npos) {
        return std::nullopt;
    }
    for (const Path& folder : layout.apps.programPath) {
        if (auto path = executable(folder / program)) {
            return path;
        }
    }
    return std::nullopt;
}

Path placedProgram(const SystemLayout& layout, std::string_view program) {
    return placed(lexicallyStandardized(program), layout.home, layout.root);
}

} // namespace vellmoor
