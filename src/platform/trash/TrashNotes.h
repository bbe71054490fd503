// What a Trash writes down about its items (Trash specification 1.0), as texts.
#pragma once

#include "Platform.h"

#include <cstddef>
#include <ctime>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace vellmoor {

/// The restore note of what lay at `place`; relative to the volume for a volume's Trash. Local time.
std::string trashNote(const std::filesystem::path& place, std::time_t deleted);

/// Where an item was by the note that its Trash has of it; `isHome` for the Trash of the user's home, whose notes are
/// absolute, while others may name nothing outside their volume. Nothing for what is no valid note.
std::optional<Path> notedOrigin(std::string_view note, const TrashFolder& trash, bool isHome);

/// "NAME.trashinfo".
std::string noteName(std::string_view name);
/// NAME again; nothing for another file.
std::optional<std::string> notedItem(std::string_view noteName);

/// The name that an item gets in a Trash: `number` 1 leaves it, others stand before the last extension. Cut at a
/// character so that its note's name has at most `limit` bytes.
std::string trashName(std::string_view name, unsigned number, std::size_t limit);

/// Whether `given` is a name that trashName() makes of `name`.
bool isTrashNameOf(std::string_view given, std::string_view name);

/// The text of directorysizes without the lines of these items.
std::string withoutDirectorySizes(std::string_view text, const std::set<std::string>& names);

} // namespace vellmoor
