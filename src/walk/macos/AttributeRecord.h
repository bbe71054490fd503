// The buffer that getattrlistbulk(2) fills: records one after the other, each with its length, the set of what it
// holds, and then exactly that, in the order of the attributes' bits. Nothing a record says about itself is believed
// before it was held against the record's length: the file system below may be a damaged disk or a stranger's server.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <sys/attr.h>

namespace vellmoor::walk {

/// What one record tells.
struct AttributeRecord {
    std::string_view name; ///< one component, never "." or ".."; NUL-terminated
    bool hasFacts = false; ///< the record holds all that follows; otherwise the facts must be asked for by name
    fsobj_type_t type = 0;
    std::uint32_t flags = 0;       ///< as in st_flags
    std::uint32_t mountStatus = 0; ///< of a directory
    bool bundleMark = false;       ///< Finder's bundle bit; false when it was not told
    std::int64_t allocatedBytes = 0;
    std::int64_t modifiedNs = 0;

    static constexpr fsobj_type_t regularFile = 1, directory = 2, symbolicLink = 5; ///< the kernel's VREG, VDIR, VLNK
};

/// What to ask getattrlistbulk for.
attrlist wantedAttributes(bool bundleMarks);

struct RecordsExtent {
    std::size_t bytes = 0;
    bool isWhole = true; ///< false: a length makes no sense; `bytes` ends before it, and what follows is lost
};

/// How much of `buffer` the first `count` records take, since the kernel tells their number only.
RecordsExtent extentOf(std::span<const char> buffer, int count);

/// The first record, which is removed from `records`; these must be as long as extentOf() said. Nothing when the
/// record has no name that could be used.
std::optional<AttributeRecord> takeRecord(std::span<const char>& records);

} // namespace vellmoor::walk
