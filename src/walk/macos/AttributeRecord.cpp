#include "AttributeRecord.h"

#include "Nanoseconds.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <ctime>
#include <type_traits>

namespace vellmoor::walk {
namespace {

// The kernel's layout, as <sys/attr.h> and <sys/time.h> of macOS give it. What stands in for that header in tests on
// Linux is held against the same numbers.
static_assert(sizeof(attribute_set_t) == 20 && sizeof(attrreference_t) == 8 && sizeof(timespec) == 16);
static_assert(offsetof(attribute_set_t, commonattr) == 0 && offsetof(attribute_set_t, volattr) == 4 &&
              offsetof(attribute_set_t, dirattr) == 8 && offsetof(attribute_set_t, fileattr) == 12 &&
              offsetof(attribute_set_t, forkattr) == 16);
static_assert(sizeof(attrlist) == 24 && offsetof(attrlist, commonattr) == 4 && ATTR_BIT_MAP_COUNT == 5);
static_assert(ATTR_CMN_NAME == 0x1 && ATTR_CMN_OBJTYPE == 0x8 && ATTR_CMN_MODTIME == 0x400 &&
              ATTR_CMN_FNDRINFO == 0x4000 && ATTR_CMN_FLAGS == 0x40000 && ATTR_CMN_ERROR == 0x20000000 &&
              ATTR_CMN_RETURNED_ATTRS == 0x80000000);
static_assert(ATTR_DIR_MOUNTSTATUS == 0x4 && DIR_MNTSTATUS_MNTPOINT == 0x1 && DIR_MNTSTATUS_TRIGGER == 0x2);
static_assert(ATTR_FILE_ALLOCSIZE == 0x4 && ATTR_FILE_DATAALLOCSIZE == 0x400);

constexpr std::size_t headSize = sizeof(std::uint32_t) + sizeof(attribute_set_t);
constexpr attrgroup_t wantedCommon = ATTR_CMN_RETURNED_ATTRS | ATTR_CMN_ERROR | ATTR_CMN_NAME | ATTR_CMN_OBJTYPE |
                                     ATTR_CMN_MODTIME | ATTR_CMN_FNDRINFO | ATTR_CMN_FLAGS;
constexpr attrgroup_t wantedOfFolders = ATTR_DIR_MOUNTSTATUS;
constexpr attrgroup_t wantedOfFiles = ATTR_FILE_ALLOCSIZE | ATTR_FILE_DATAALLOCSIZE;

/// Reads values from a record, never beyond its end.
class Cursor {
public:
    explicit Cursor(std::span<const char> record) : record_(record) {}

    // Values are aligned to 4 bytes at best, so they are copied out.
    template <typename Value>
    Value take() {
        static_assert(std::is_trivially_copyable_v<Value> && sizeof(Value) % 4 == 0); // others would be padded
        Value value{};
        if (record_.size() - position_ < sizeof value) {
            isWithin_ = false;
            position_ = record_.size();
            return value;
        }
        std::memcpy(&value, record_.data() + position_, sizeof value);
        position_ += sizeof value;
        return value;
    }
    [[nodiscard]] std::size_t position() const { return position_; }
    /// False after anything was asked for that the record does not hold.
    [[nodiscard]] bool isWithin() const { return isWithin_; }

private:
    std::span<const char> record_;
    std::size_t position_ = 0;
    bool isWithin_ = true;
};

std::uint32_t lengthAt(std::span<const char> records) {
    std::uint32_t length = 0;
    std::memcpy(&length, records.data(), sizeof length);
    return length;
}

// The text that `reference`, which stands at `place`, points to.
std::optional<std::string_view> nameIn(std::span<const char> record, std::size_t place,
                                       const attrreference_t& reference) {
    const std::int64_t start = static_cast<std::int64_t>(place) + reference.attr_dataoffset;
    const auto size = static_cast<std::int64_t>(record.size());
    if (start < static_cast<std::int64_t>(headSize) || start > size || size - start < reference.attr_length) {
        return std::nullopt;
    }
    const std::string_view bytes(record.data() + start, reference.attr_length);
    const std::size_t end = bytes.find('\0');
    const std::string_view name = bytes.substr(0, end);
    // A slash would lead out of the folder.
    const bool isUsable = end != std::string_view::npos && !name.empty() && name != "." && name != ".." &&
                          name.find('/') == std::string_view::npos;
    return isUsable ? std::optional(name) : std::nullopt;
}

// True when everything is there that an entry of its type needs.
bool readFacts(Cursor& cursor, const attribute_set_t& held, AttributeRecord& record) {
    const auto has = [&](attrgroup_t bit) { return (held.commonattr & bit) != 0; };
    if (!has(ATTR_CMN_OBJTYPE)) {
        return false;
    }
    record.type = cursor.take<fsobj_type_t>();
    if (has(ATTR_CMN_MODTIME)) {
        record.modifiedNs = nanoseconds(cursor.take<timespec>());
    }
    if (has(ATTR_CMN_FNDRINFO)) {
        constexpr std::size_t flagsByte = 8; // of Finder's flags, the upper half
        constexpr unsigned char hasBundle = 0x20;
        record.bundleMark = (cursor.take<std::array<unsigned char, 32>>()[flagsByte] & hasBundle) != 0;
    }
    if (!has(ATTR_CMN_FLAGS)) {
        return false;
    }
    record.flags = cursor.take<std::uint32_t>();
    if (record.type == AttributeRecord::directory) {
        if ((held.dirattr & ATTR_DIR_MOUNTSTATUS) != 0) {
            record.mountStatus = cursor.take<std::uint32_t>();
        }
    } else if (record.type == AttributeRecord::regularFile) {
        const bool hasAllForks = (held.fileattr & ATTR_FILE_ALLOCSIZE) != 0;
        if (!has(ATTR_CMN_MODTIME) || (!hasAllForks && (held.fileattr & ATTR_FILE_DATAALLOCSIZE) == 0)) {
            return false;
        }
        record.allocatedBytes = cursor.take<std::int64_t>(); // the first of the two that is there is the better one
    }
    return cursor.isWithin() && record.allocatedBytes >= 0;
}

} // namespace

attrlist wantedAttributes(bool bundleMarks) {
    attrlist wanted{};
    wanted.bitmapcount = ATTR_BIT_MAP_COUNT;
    wanted.commonattr = bundleMarks ? wantedCommon : wantedCommon & ~attrgroup_t{ATTR_CMN_FNDRINFO};
    wanted.dirattr = wantedOfFolders;
    wanted.fileattr = wantedOfFiles;
    return wanted;
}

RecordsExtent extentOf(std::span<const char> buffer, int count) {
    RecordsExtent extent;
    for (; count > 0; --count) {
        const std::span<const char> rest = buffer.subspan(extent.bytes);
        const std::size_t length = rest.size() < headSize ? 0 : lengthAt(rest);
        if (length < headSize || length > rest.size()) {
            extent.isWhole = false;
            break;
        }
        extent.bytes += length;
    }
    return extent;
}

std::optional<AttributeRecord> takeRecord(std::span<const char>& records) {
    const std::span<const char> bytes = records.first(lengthAt(records));
    records = records.subspan(bytes.size());
    Cursor cursor(bytes);
    (void)cursor.take<std::uint32_t>();
    const auto held = cursor.take<attribute_set_t>();
    const std::uint32_t error = (held.commonattr & ATTR_CMN_ERROR) != 0 ? cursor.take<std::uint32_t>() : 0;
    if ((held.commonattr & ATTR_CMN_NAME) == 0) {
        return std::nullopt;
    }
    const std::size_t place = cursor.position();
    const auto reference = cursor.take<attrreference_t>();
    const auto name = cursor.isWithin() ? nameIn(bytes, place, reference) : std::nullopt;
    if (!name) {
        return std::nullopt;
    }
    // What was not asked for would stand at an unknown place between the rest.
    const bool isAsAsked = (held.commonattr & ~wantedCommon) == 0 && (held.dirattr & ~wantedOfFolders) == 0 &&
                           (held.fileattr & ~wantedOfFiles) == 0;
    AttributeRecord record;
    const bool hasFacts = error == 0 && isAsAsked && readFacts(cursor, held, record);
    if (!hasFacts) {
        record = AttributeRecord{};
    }
    record.name = *name;
    record.hasFacts = hasFacts;
    return record;
}

} // namespace vellmoor::walk
