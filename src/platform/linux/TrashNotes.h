// What a Trash writes down about its items (Trash specification 1.0), as texts.
#pragma once

#include <cstddef>
#include <ctime>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>

namespace vellmoor {

/// The restore note of what lay at `place`; relative to the volume for a volume's Trash. Local time.
std::string trashNote(const std::filesystem::path& place, std::time_t deleted);

/// "NAME.trashinfo".
std::string noteName(std::string_view name);

/// The name that an item gets in a Trash: `number` 1 leaves it, others stand before the last extension. Cut at a
/// character so that its note's name has at most `limit` bytes.
std::string trashName(std::string_view name, unsigned number, std::size_t limit);

/// The text of directorysizes without the lines of these items.
std::string withoutDirectorySizes(std::string_view text, const std::set<std::string>& names);

} // namespace vellmoor
