#include "applications/LeftoverTokens.h"

#include "applications/ReleaseName.h"

#include <algorithm>

namespace vellmoor {
namespace {

constexpr std::ptrdiff_t shortestName = 4;

bool isFirstByte(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
}

bool isLongEnough(std::string_view text) {
    return std::ranges::count_if(text, isFirstByte) >= shortestName;
}

/// Whether `text` begins, or ends, with a letter or digit.
bool isWordAt(const Platform& platform, std::string_view text, bool atEnd) {
    if (text.empty()) {
        return false;
    }
    std::size_t start = atEnd ? text.size() - 1 : 0;
    while (start > 0 && !isFirstByte(text[start])) {
        --start;
    }
    std::size_t end = start + 1;
    while (end < text.size() && !isFirstByte(text[end])) {
        ++end;
    }
    return !platform.lettersAndDigits(text.substr(start, end - start)).empty();
}

/// Whether `identifier` stands in `name` with neither a letter nor a digit touching it.
bool standsAlone(const Platform& platform, std::string_view name, std::string_view identifier) {
    for (std::size_t at = name.find(identifier); at != std::string_view::npos; at = name.find(identifier, at + 1)) {
        if (!isWordAt(platform, name.substr(0, at), true) &&
            !isWordAt(platform, name.substr(at + identifier.size()), false)) {
            return true;
        }
    }
    return false;
}

bool fitsIdentifier(const Platform& platform, LeftoverNames kind, const std::string& name,
                    const std::string& identifier) {
    return !identifier.empty() &&
           (kind == LeftoverNames::Within ? name.contains(identifier) : standsAlone(platform, name, identifier));
}

std::optional<LeftoverMatch> flatpakMatch(const LeftoverName& name, const std::string& identifier) {
    const bool fits = name.written == identifier || (!name.ofFlatpaks && name.written.starts_with(identifier + "."));
    return fits ? std::optional(LeftoverMatch{true, identifier.size()}) : std::nullopt;
}

/// Without what may follow an application's name in the name of a file of its own.
std::string withoutTail(const AppLayout& layout, const Platform& platform, const std::string& name) {
    const std::string lower = platform.lowerCase(name);
    for (const std::string& tail : layout.leftoverTails) {
        if (lower.ends_with(tail)) {
            return name.substr(0, name.size() - tail.size());
        }
    }
    return name;
}

/// A dot that remains shows that what was cut off is no extension, but a part of an identifier.
std::string withoutExtension(const std::string& name) {
    std::string stem = withoutVersion(std::filesystem::path(name).stem().string());
    return stem.find('.', 1) == std::string::npos ? stem : name;
}

} // namespace

LeftoverTokens leftoverTokens(const Platform& platform, LeftoverNames kind, std::string_view identifier,
                              const std::vector<std::string>& names) {
    LeftoverTokens tokens;
    const auto addName = [&](std::string_view name) {
        std::string plain =
            platform.lettersAndDigits(kind == LeftoverNames::Whole ? withoutVersion(name) : std::string(name));
        if (isLongEnough(plain)) {
            tokens.names.push_back(std::move(plain));
        }
    };
    // A plain word would be found in names that have nothing to do with it.
    if (identifier.contains('.')) {
        tokens.identifier = platform.lowerCase(identifier);
    } else {
        addName(identifier);
    }
    std::ranges::for_each(names, addName);
    return tokens;
}

LeftoverTokens flatpakTokens(std::string_view identifier) {
    return {.flatpak = std::string(identifier), .identifier = {}, .names = {}};
}

LeftoverName leftoverName(const Platform& platform, const AppLayout& layout, const std::string& name, bool ofFlatpaks) {
    LeftoverName out{.written = name, .lower = platform.lowerCase(name), .plain = {}, .ofFlatpaks = ofFlatpaks};
    if (layout.leftoverNames == LeftoverNames::Within) {
        out.plain = {platform.lettersAndDigits(std::filesystem::path(name).stem().string())};
        return out;
    }
    const std::string body = withoutTail(layout, platform, name);
    for (const std::string& form : {withoutVersion(body), withoutExtension(body)}) {
        std::string plain = platform.lettersAndDigits(form);
        if (std::ranges::find(out.plain, plain) == out.plain.end()) {
            out.plain.push_back(std::move(plain));
        }
    }
    return out;
}

std::optional<LeftoverMatch> leftoverMatch(const Platform& platform, LeftoverNames kind, const LeftoverName& name,
                                           const LeftoverTokens& tokens) {
    if (!tokens.flatpak.empty()) {
        return flatpakMatch(name, tokens.flatpak);
    }
    if (name.ofFlatpaks) {
        return std::nullopt;
    }
    if (fitsIdentifier(platform, kind, name.lower, tokens.identifier)) {
        return LeftoverMatch{true, tokens.identifier.size()};
    }
    std::size_t longest = 0;
    for (const std::string& token : tokens.names) {
        const bool fits = std::ranges::any_of(name.plain, [&](const std::string& plain) {
            return kind == LeftoverNames::Within ? plain.contains(token) : plain == token;
        });
        longest = fits ? std::max(longest, token.size()) : longest;
    }
    return longest > 0 ? std::optional(LeftoverMatch{false, longest}) : std::nullopt;
}

} // namespace vellmoor
