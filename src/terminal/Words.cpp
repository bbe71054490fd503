#include "Words.h"

namespace vellmoor::terminal {

using Wrong = std::unexpected<std::string>;

std::string Words::next() {
    std::string word = std::move(left_.front());
    left_.pop_front();
    return word;
}

std::expected<std::string, std::string> Words::valueOf(const std::string& what) {
    if (left_.empty()) {
        return Wrong(L::tr("%@ 需要一个值", what));
    }
    return next();
}

std::expected<CleanerModule, std::string> moduleOf(const std::string& word) {
    if (const auto module = cleanerModule(word)) {
        return *module;
    }
    return Wrong(L::tr("没有名为 %@ 的模块，可用：%@", word, moduleNames()));
}

std::expected<AppLanguage, std::string> languageOf(const std::string& word) {
    if (const auto language = appLanguage(word)) {
        return *language;
    }
    return Wrong(L::tr("--language 只能是 zh 或 en，而不是 %@", word));
}

std::string moduleNames() {
    std::string names;
    for (const CleanerModule module : allCleanerModules) {
        names += (names.empty() ? "" : ", ") + std::string(rawValue(module));
    }
    return names;
}

} // namespace vellmoor::terminal
