#include "PropertyLists.h"

#include "PropertyValue.h"
#include "disk/Files.h"

#include <plist/plist.h>

#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

namespace vellmoor::test {
namespace {

constexpr std::size_t sizeLimit = 1 << 20;

struct FreePlist {
    void operator()(void* node) const { plist_free(node); }
};
using PlistPointer = std::unique_ptr<void, FreePlist>;

PlistPointer readDictionary(const Path& path) {
    const std::optional<std::string> bytes = files::contents(path, sizeLimit);
    if (!bytes) {
        return nullptr;
    }
    plist_t node = nullptr;
    // Not plist_from_memory: later versions want one argument more.
    const auto size = static_cast<std::uint32_t>(bytes->size());
    if (plist_is_binary(bytes->data(), size) != 0) {
        plist_from_bin(bytes->data(), size, &node);
    } else {
        plist_from_xml(bytes->data(), size, &node);
    }
    PlistPointer list(node);
    return list && plist_get_node_type(list.get()) == PLIST_DICT ? std::move(list) : nullptr;
}

PropertyValue valueOf(plist_t node) {
    switch (plist_get_node_type(node)) {
    case PLIST_STRING: {
        // Not plist_get_string_val: it aborts on a text with a zero byte.
        std::uint64_t length = 0;
        const char* text = plist_get_string_ptr(node, &length);
        return text == nullptr ? PropertyValue() : PropertyValue(std::string(text, length));
    }
    case PLIST_BOOLEAN: {
        std::uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0 ? PropertyValue(true) : PropertyValue();
    }
    case PLIST_ARRAY: {
        std::vector<PropertyValue> elements;
        for (std::uint32_t index = 0; index < plist_array_get_size(node); ++index) {
            elements.push_back(valueOf(plist_array_get_item(node, index)));
        }
        return elements;
    }
    default:
        return {};
    }
}

// The values of these keys that are there.
PropertyDictionary valuesOf(plist_t dictionary, std::initializer_list<const char*> keys) {
    PropertyDictionary values;
    for (const char* key : keys) {
        if (plist_t node = plist_dict_get_item(dictionary, key); node != nullptr) {
            values.emplace(key, valueOf(node));
        }
    }
    return values;
}

} // namespace

std::optional<BundleInfo> readBundleInfo(const Path& bundle) {
    std::error_code ignored; // an unreadable place is no folder
    if (!std::filesystem::is_directory(bundle, ignored)) {
        return std::nullopt;
    }
    const PlistPointer list = readDictionary(bundle / "Contents" / "Info.plist");
    if (!list) {
        return BundleInfo{};
    }
    return bundleInfoIn(valuesOf(list.get(), {"CFBundleIdentifier", "CFBundleDisplayName", "CFBundleName"}));
}

std::optional<LaunchAgent> readLaunchAgent(const Path& propertyList) {
    const PlistPointer list = readDictionary(propertyList);
    if (!list) {
        return std::nullopt;
    }
    return launchAgentIn(valuesOf(list.get(), {"Label", "Program", "ProgramArguments", "KeepAlive", "RunAtLoad"}));
}

std::string binaryPropertyList(const std::string& xml) {
    plist_t node = nullptr;
    plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &node);
    const PlistPointer list(node);
    if (!list) {
        return {};
    }
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(node, &bytes, &length);
    const std::unique_ptr<char, decltype(&std::free)> owned(bytes, &std::free);
    return bytes == nullptr ? std::string() : std::string(bytes, length);
}

} // namespace vellmoor::test
