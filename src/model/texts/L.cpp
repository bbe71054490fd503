#include "texts/L.h"

#include "texts/TextTables.h"

#include <mutex>
#include <unordered_map>

namespace vellmoor {
namespace {

// None of the statics below is ever destroyed: a worker may still look up a text while the program ends.

struct Current {
    std::mutex lock;
    AppLanguage language = AppLanguage::english;
    TextSet set = TextSet::Mac;
};

Current& current() {
    static Current& state = *new Current;
    return state;
}

using Table = std::unordered_map<std::string_view, std::string_view>;

const Table& english() {
    static const Table& table = *new Table([] {
        Table all;
        for (const TextEntry& entry : englishTexts()) {
            all.emplace(entry.chinese, entry.english);
        }
        for (const FurtherTextEntry& entry : furtherTexts()) {
            all.emplace(entry.chinese, entry.english);
        }
        return all;
    }());
    return table;
}

const Table& linuxReplacements() {
    static const Table& table = *new Table([] {
        Table all;
        for (const FurtherTextEntry& entry : furtherTexts()) {
            if (!entry.replaces.empty()) {
                all.emplace(entry.replaces, entry.chinese);
            }
        }
        return all;
    }());
    return table;
}

} // namespace

std::string_view rawValue(AppLanguage language) {
    return language == AppLanguage::chinese ? "zh" : "en";
}

std::optional<AppLanguage> appLanguage(std::string_view raw) {
    for (const AppLanguage language : allAppLanguages) {
        if (rawValue(language) == raw) {
            return language;
        }
    }
    return std::nullopt;
}

std::string TextArgument::text() const {
    if (const auto* number = std::get_if<std::int64_t>(&value_)) {
        return std::to_string(*number);
    }
    return std::get<std::string>(value_);
}

std::string L::tr(std::string_view key) {
    AppLanguage language{};
    TextSet set{};
    {
        const std::scoped_lock guard(current().lock);
        language = current().language;
        set = current().set;
    }
    std::string_view text = key;
    if (set == TextSet::Linux) {
        if (const auto found = linuxReplacements().find(text); found != linuxReplacements().end()) {
            text = found->second;
        }
    }
    if (language == AppLanguage::english) {
        if (const auto found = english().find(text); found != english().end()) {
            text = found->second;
        }
    }
    return std::string(text);
}

AppLanguage L::language() {
    const std::scoped_lock guard(current().lock);
    return current().language;
}

void L::setLanguage(AppLanguage language) {
    const std::scoped_lock guard(current().lock);
    current().language = language;
}

void L::setTextSet(TextSet set) {
    const std::scoped_lock guard(current().lock);
    current().set = set;
}

std::string L::format(const std::string& pattern, std::initializer_list<TextArgument> arguments) {
    std::string out;
    const auto* next = arguments.begin();
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const bool placeholder =
            pattern[i] == '%' && i + 1 < pattern.size() && (pattern[i + 1] == '@' || pattern[i + 1] == 'd');
        if (placeholder && next != arguments.end()) {
            out += next->text();
            ++next;
            ++i;
        } else {
            out += pattern[i];
        }
    }
    return out;
}

} // namespace vellmoor
