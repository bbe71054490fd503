#include "PropertyLists.h"

#include "Files.h"

#include <plist/plist.h>

#include <cstdlib>
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
    plist_from_memory(bytes->data(), static_cast<std::uint32_t>(bytes->size()), &node);
    PlistPointer list(node);
    return list && plist_get_node_type(list.get()) == PLIST_DICT ? std::move(list) : nullptr;
}

std::optional<std::string> text(plist_t node) {
    if (node == nullptr || plist_get_node_type(node) != PLIST_STRING) {
        return std::nullopt;
    }
    // Not plist_get_string_val: it aborts on a text with a zero byte.
    std::uint64_t length = 0;
    const char* value = plist_get_string_ptr(node, &length);
    return value == nullptr ? std::nullopt : std::optional<std::string>(std::in_place, value, length);
}

std::optional<std::string> text(plist_t dictionary, const char* key) {
    return text(plist_dict_get_item(dictionary, key));
}

bool isTrue(plist_t node) {
    if (node == nullptr || plist_get_node_type(node) != PLIST_BOOLEAN) {
        return false;
    }
    std::uint8_t value = 0;
    plist_get_bool_val(node, &value);
    return value != 0;
}

// One element that is no text makes the whole list count as absent.
std::vector<std::string> texts(plist_t node) {
    std::vector<std::string> found;
    if (node == nullptr || plist_get_node_type(node) != PLIST_ARRAY) {
        return found;
    }
    for (std::uint32_t index = 0; index < plist_array_get_size(node); ++index) {
        std::optional<std::string> element = text(plist_array_get_item(node, index));
        if (!element) {
            return {};
        }
        found.push_back(*std::move(element));
    }
    return found;
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
    return BundleInfo{text(list.get(), "CFBundleIdentifier"), text(list.get(), "CFBundleDisplayName"),
                      text(list.get(), "CFBundleName")};
}

std::optional<LaunchAgent> readLaunchAgent(const Path& propertyList) {
    const PlistPointer list = readDictionary(propertyList);
    if (!list) {
        return std::nullopt;
    }
    LaunchAgent agent;
    agent.label = text(list.get(), "Label");
    agent.program = text(list.get(), "Program");
    agent.arguments = texts(plist_dict_get_item(list.get(), "ProgramArguments"));
    agent.hasKeepAlive = plist_dict_get_item(list.get(), "KeepAlive") != nullptr;
    agent.runAtLoad = isTrue(plist_dict_get_item(list.get(), "RunAtLoad"));
    return agent;
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
