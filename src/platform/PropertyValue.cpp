#include "PropertyValue.h"

namespace vellmoor {
namespace {

/// The value of a key when it has that kind; null otherwise.
template <typename Kind>
const Kind* valueIn(const PropertyDictionary& values, const std::string& key) {
    const auto found = values.find(key);
    return found == values.end() ? nullptr : std::get_if<Kind>(&found->second);
}

std::optional<std::string> textIn(const PropertyDictionary& values, const std::string& key) {
    const std::string* const text = valueIn<std::string>(values, key);
    return text == nullptr ? std::nullopt : std::optional(*text);
}

std::vector<std::string> textsIn(const PropertyDictionary& values, const std::string& key) {
    std::vector<std::string> texts;
    const auto* const elements = valueIn<std::vector<PropertyValue>>(values, key);
    if (elements == nullptr) {
        return texts;
    }
    for (const PropertyValue& element : *elements) {
        const std::string* const text = std::get_if<std::string>(&element);
        if (text == nullptr) {
            return {};
        }
        texts.push_back(*text);
    }
    return texts;
}

} // namespace

BundleInfo bundleInfoIn(const PropertyDictionary& values) {
    return {.identifier = textIn(values, "CFBundleIdentifier"),
            .displayName = textIn(values, "CFBundleDisplayName"),
            .name = textIn(values, "CFBundleName")};
}

LaunchAgent launchAgentIn(const PropertyDictionary& values) {
    const bool* const runs = valueIn<bool>(values, "RunAtLoad");
    return {.label = textIn(values, "Label"),
            .program = textIn(values, "Program"),
            .arguments = textsIn(values, "ProgramArguments"),
            .hasKeepAlive = values.contains("KeepAlive"),
            .runAtLoad = runs != nullptr && *runs};
}

} // namespace vellmoor
