// The kernel's records, whole and broken. Each buffer has a heap block of exactly its size, so that the address
// sanitizer sees any byte read beyond it.
#include "AttributeRecord.h"

#include <gmock/gmock.h>

#include <array>
#include <cstring>
#include <ctime>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace vellmoor::walk::test {
namespace {

using ::testing::ElementsAre;

/// A record as the kernel writes it: what is set is held.
struct Record {
    std::optional<std::uint32_t> error;
    std::optional<std::string> name = "name";
    std::optional<std::uint32_t> type = AttributeRecord::regularFile;
    std::optional<timespec> modified = timespec{5, 7};
    std::optional<std::array<unsigned char, 32>> finderInfo;
    std::optional<std::uint32_t> flags = 0;
    std::optional<std::uint32_t> mountStatus;
    std::optional<std::int64_t> allocated = 4096;
    std::optional<std::int64_t> dataAllocated = 512;
    attrgroup_t alsoHeld = 0;       ///< more common bits
    std::int32_t offsetError = 0;   ///< added to where the name is said to be
    std::uint32_t lengthOfName = 0; ///< in place of the true one, when not 0
    std::int64_t lengthError = 0;   ///< added to the record's length

    [[nodiscard]] std::string bytes() const;
};

void append(std::string& bytes, const void* value, std::size_t size) {
    bytes.append(static_cast<const char*>(value), size);
    bytes.append((4 - size % 4) % 4, '\0');
}

std::string Record::bytes() const {
    attribute_set_t held{.commonattr = ATTR_CMN_RETURNED_ATTRS | alsoHeld};
    std::string bytes(sizeof(std::uint32_t) + sizeof held, '\0');
    const auto add = [&](attrgroup_t& group, attrgroup_t bit, const auto& value) {
        if (value) {
            group |= bit;
            append(bytes, &*value, sizeof *value);
        }
    };
    add(held.commonattr, ATTR_CMN_ERROR, error);
    const std::size_t place = bytes.size();
    if (name) {
        add(held.commonattr, ATTR_CMN_NAME, std::optional(attrreference_t{}));
    }
    add(held.commonattr, ATTR_CMN_OBJTYPE, type);
    add(held.commonattr, ATTR_CMN_MODTIME, modified);
    add(held.commonattr, ATTR_CMN_FNDRINFO, finderInfo);
    add(held.commonattr, ATTR_CMN_FLAGS, flags);
    add(held.dirattr, ATTR_DIR_MOUNTSTATUS, mountStatus);
    if (type != AttributeRecord::directory) {
        add(held.fileattr, ATTR_FILE_ALLOCSIZE, allocated);
        add(held.fileattr, ATTR_FILE_DATAALLOCSIZE, dataAllocated);
    }
    if (name) {
        const attrreference_t reference{
            .attr_dataoffset = static_cast<std::int32_t>(bytes.size() - place) + offsetError,
            .attr_length = lengthOfName != 0 ? lengthOfName : static_cast<std::uint32_t>(name->size() + 1)};
        std::memcpy(bytes.data() + place, &reference, sizeof reference);
        append(bytes, name->c_str(), name->size() + 1);
    }
    const auto length = static_cast<std::uint32_t>(static_cast<std::int64_t>(bytes.size()) + lengthError);
    std::memcpy(bytes.data(), &length, sizeof length);
    std::memcpy(bytes.data() + sizeof length, &held, sizeof held);
    return bytes;
}

/// A copy that ends where its memory ends.
class Buffer {
public:
    explicit Buffer(const std::string& bytes) : size_(bytes.size()), memory_(std::make_unique<char[]>(bytes.size())) {
        bytes.copy(memory_.get(), size_);
    }
    [[nodiscard]] std::span<const char> span() const { return {memory_.get(), size_}; }

private:
    std::size_t size_;
    std::unique_ptr<char[]> memory_;
};

std::optional<AttributeRecord> read(const Buffer& buffer) {
    std::span<const char> records = buffer.span();
    if (!extentOf(records, 1).isWhole) {
        ADD_FAILURE() << "the length of the record makes no sense";
        return std::nullopt;
    }
    return takeRecord(records);
}

TEST(AttributeRecord, TellsWhatTheKernelWrote) {
    const Buffer buffer(Record{.flags = 0x8000}.bytes());
    const auto record = read(buffer);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->name, "name");
    EXPECT_EQ(record->name.data()[4], '\0');
    EXPECT_TRUE(record->hasFacts);
    EXPECT_EQ(record->type, AttributeRecord::regularFile);
    EXPECT_EQ(record->modifiedNs, 5'000'000'007);
    EXPECT_EQ(record->flags, 0x8000U);
    EXPECT_EQ(record->allocatedBytes, 4096);
    EXPECT_FALSE(record->bundleMark);
}

TEST(AttributeRecord, AFoldersMountStatusAndBundleMarkAreTold) {
    std::array<unsigned char, 32> info{};
    info[8] = 0x20;
    const Buffer buffer(Record{.type = AttributeRecord::directory, .finderInfo = info, .mountStatus = 2}.bytes());
    const auto record = read(buffer);
    ASSERT_TRUE(record);
    EXPECT_TRUE(record->hasFacts);
    EXPECT_TRUE(record->bundleMark);
    EXPECT_EQ(record->mountStatus, 2U);
    EXPECT_EQ(record->allocatedBytes, 0);
}

TEST(AttributeRecord, AllOtherFinderFlagsAreNoBundleMark) {
    std::array<unsigned char, 32> info;
    info.fill(0xff);
    info[8] = 0xdf;
    const Buffer buffer(Record{.type = AttributeRecord::directory, .finderInfo = info}.bytes());
    EXPECT_FALSE(read(buffer)->bundleMark);
}

TEST(AttributeRecord, WithoutTheSizeOfAllForksThatOfTheDataForkCounts) {
    const Buffer buffer(Record{.allocated = std::nullopt}.bytes());
    EXPECT_TRUE(read(buffer)->hasFacts);
    EXPECT_EQ(read(buffer)->allocatedBytes, 512);
}

TEST(AttributeRecord, ALinkNeedsNoSizeAndNoDate) {
    const Buffer buffer(Record{.type = AttributeRecord::symbolicLink,
                               .modified = std::nullopt,
                               .allocated = std::nullopt,
                               .dataAllocated = std::nullopt}
                            .bytes());
    EXPECT_TRUE(read(buffer)->hasFacts);
}

TEST(AttributeRecord, AnythingElseThatIsMissingLeavesTheNameAlone) {
    const Record records[] = {
        {.error = 13},           {.error = 13, .type = std::nullopt, .modified = std::nullopt, .flags = std::nullopt},
        {.type = std::nullopt},  {.modified = std::nullopt},
        {.flags = std::nullopt}, {.allocated = std::nullopt, .dataAllocated = std::nullopt},
        {.allocated = -1},       {.alsoHeld = 0x2}};
    for (const Record& record : records) {
        const Buffer buffer(record.bytes());
        const auto told = read(buffer);
        ASSERT_TRUE(told);
        EXPECT_EQ(told->name, "name");
        EXPECT_FALSE(told->hasFacts);
        EXPECT_EQ(told->allocatedBytes, 0);
    }
}

TEST(AttributeRecord, AnErrorOfNoneIsNoError) {
    const Buffer buffer(Record{.error = 0}.bytes());
    EXPECT_TRUE(read(buffer)->hasFacts);
}

TEST(AttributeRecord, ATimeBeyondAllCalendarsIsTheNearestThatFits) {
    constexpr auto seconds = std::numeric_limits<std::time_t>::max();
    const Buffer late(Record{.modified = timespec{seconds, 999'999'999}}.bytes());
    EXPECT_EQ(read(late)->modifiedNs, std::numeric_limits<std::int64_t>::max());
    const Buffer early(Record{.modified = timespec{-seconds, 0}}.bytes());
    EXPECT_EQ(read(early)->modifiedNs, std::numeric_limits<std::int64_t>::min());
}

TEST(AttributeRecord, ANameThatCannotBeUsedIsNone) {
    const Record records[] = {{.name = std::nullopt},
                              {.name = ""},
                              {.name = "."},
                              {.name = ".."},
                              {.name = "../outside"},
                              {.name = "/etc"},
                              {.offsetError = std::numeric_limits<std::int32_t>::min() / 2},
                              {.offsetError = 1'000'000},
                              {.offsetError = -80},
                              {.offsetError = 8},
                              {.lengthOfName = 4}, // without its end
                              {.lengthOfName = 9},
                              {.lengthOfName = std::numeric_limits<std::uint32_t>::max()}};
    for (const Record& record : records) {
        const Buffer buffer(record.bytes());
        EXPECT_EQ(read(buffer), std::nullopt)
            << record.name.value_or("none") << " " << record.offsetError << " " << record.lengthOfName;
    }
}

TEST(AttributeRecord, ANameMayHoldAnyOtherByte) {
    const std::string name = "\xff caf\xe9 \n\t\"\\:";
    const Buffer buffer(Record{.name = name}.bytes());
    EXPECT_EQ(read(buffer)->name, name);
}

TEST(AttributeRecord, ARecordThatEndsBeforeItsNameDoesIsNone) {
    const std::string whole = Record{}.bytes();
    const std::size_t endOfName = whole.size() - 3; // three bytes of padding behind it
    for (std::size_t size = sizeof(std::uint32_t) + sizeof(attribute_set_t); size <= endOfName; ++size) {
        std::string bytes = whole.substr(0, size);
        const auto length = static_cast<std::uint32_t>(size);
        std::memcpy(bytes.data(), &length, sizeof length);
        const Buffer buffer(bytes);
        EXPECT_EQ(read(buffer).has_value(), size == endOfName) << size;
    }
}

TEST(AttributeRecord, ARecordThatSaysToHoldMoreThanItDoesHasNoFacts) {
    // Says that it holds everything, but has nothing beside the reference and a name behind it.
    std::string bytes = Record{.type = std::nullopt,
                               .modified = std::nullopt,
                               .flags = std::nullopt,
                               .allocated = std::nullopt,
                               .dataAllocated = std::nullopt}
                            .bytes();
    attribute_set_t held{};
    std::memcpy(&held, bytes.data() + sizeof(std::uint32_t), sizeof held);
    held.commonattr |= ATTR_CMN_OBJTYPE | ATTR_CMN_MODTIME | ATTR_CMN_FNDRINFO | ATTR_CMN_FLAGS;
    std::memcpy(bytes.data() + sizeof(std::uint32_t), &held, sizeof held);
    const Buffer buffer(bytes);
    const auto record = read(buffer);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->name, "name");
    EXPECT_FALSE(record->hasFacts);
}

TEST(AttributeRecord, RecordsOfAnyLengthFollowEachOther) {
    std::string bytes;
    for (const std::size_t padding : {0U, 1U, 2U, 3U, 17U}) {
        Record record{.name = "padded by " + std::to_string(padding)};
        record.lengthError = static_cast<std::int64_t>(padding);
        bytes += record.bytes() + std::string(padding, 'x');
    }
    const Buffer buffer(bytes + "rest");
    const RecordsExtent extent = extentOf(buffer.span(), 5);
    EXPECT_TRUE(extent.isWhole);
    EXPECT_EQ(extent.bytes, bytes.size());
    std::vector<std::string> names;
    for (std::span<const char> records = buffer.span().first(extent.bytes); !records.empty();) {
        const auto record = takeRecord(records);
        ASSERT_TRUE(record && record->hasFacts);
        names.emplace_back(record->name);
    }
    EXPECT_THAT(names, ElementsAre("padded by 0", "padded by 1", "padded by 2", "padded by 3", "padded by 17"));
}

TEST(AttributeRecord, AnExtentEndsBeforeALengthThatMakesNoSense) {
    const std::string good = Record{}.bytes();
    const auto size = static_cast<std::int64_t>(good.size());
    for (const std::int64_t error : {-size, -size + 1, -size + 23, std::int64_t{1}, std::int64_t{1} << 31}) {
        const Buffer buffer(good + Record{.lengthError = error}.bytes());
        const RecordsExtent extent = extentOf(buffer.span(), 2);
        EXPECT_FALSE(extent.isWhole) << error;
        EXPECT_EQ(extent.bytes, good.size()) << error;
    }
}

TEST(AttributeRecord, AnExtentEndsWhereTheBufferDoes) {
    const std::string good = Record{}.bytes();
    for (std::size_t size = 0; size < good.size(); ++size) {
        const Buffer buffer(good.substr(0, size));
        const RecordsExtent extent = extentOf(buffer.span(), 1);
        EXPECT_FALSE(extent.isWhole) << size;
        EXPECT_EQ(extent.bytes, 0U) << size;
    }
    const Buffer one(good);
    EXPECT_EQ(extentOf(one.span(), 2).bytes, good.size());
    EXPECT_FALSE(extentOf(one.span(), 2).isWhole);
    EXPECT_TRUE(extentOf(one.span(), 0).isWhole);
}

// Whatever a damaged disk may say: nothing is read beyond the buffer, and what is told lies within it.
TEST(AttributeRecord, ChangedBytesNeverLeadOutOfTheBuffer) {
    std::mt19937 random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same bytes in each run
    const std::string good = Record{}.bytes() + Record{.type = AttributeRecord::directory, .mountStatus = 0}.bytes();
    unsigned told = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string bytes = good;
        for (int change = 0; change < 3; ++change) {
            bytes[random() % bytes.size()] = static_cast<char>(random());
        }
        const Buffer buffer(bytes);
        const RecordsExtent extent = extentOf(buffer.span(), 2);
        ASSERT_LE(extent.bytes, bytes.size());
        for (std::span<const char> records = buffer.span().first(extent.bytes); !records.empty();) {
            const auto record = takeRecord(records);
            if (record) {
                ++told;
                ASSERT_FALSE(record->name.empty());
                ASSERT_EQ(std::strlen(record->name.data()), record->name.size());
            }
        }
    }
    EXPECT_GT(told, 10'000U);
}

TEST(AttributeRecord, BundleMarksAreAskedForOnlyWhenWanted) {
    EXPECT_NE(wantedAttributes(true).commonattr & ATTR_CMN_FNDRINFO, 0U);
    EXPECT_EQ(wantedAttributes(false).commonattr & ATTR_CMN_FNDRINFO, 0U);
    EXPECT_NE(wantedAttributes(false).commonattr & (ATTR_CMN_RETURNED_ATTRS | ATTR_CMN_NAME), 0U);
}

} // namespace
} // namespace vellmoor::walk::test
