#include "found/Uuid.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <thread>
#include <vector>

namespace vellmoor {
namespace {

TEST(UuidText, IsEightFourFourFourTwelveLowerCaseHexadecimalDigits) {
    const Uuid id{{0x00, 0x01, 0x02, 0x03, 0x04, 0x05, 0x46, 0x07, 0x88, 0x09, 0x0a, 0x0b, 0x0c, 0xad, 0xbe, 0xef}};
    EXPECT_EQ(id.text(), "00010203-0405-4607-8809-0a0b0cadbeef");
}

TEST(UuidText, HasThirtySixCharactersForARandomOne) {
    EXPECT_EQ(Uuid::random().text().size(), 36U);
}

TEST(UuidRandom, BearsVersionFourAndTheStandardVariant) {
    for (int i = 0; i < 100; ++i) {
        const std::string text = Uuid::random().text();
        EXPECT_EQ(text[14], '4') << text;
        EXPECT_NE(std::string("89ab").find(text[19]), std::string::npos) << text;
    }
}

TEST(UuidRandom, NeverRepeatsOnOneThread) {
    std::set<Uuid> seen;
    for (int i = 0; i < 10'000; ++i) {
        EXPECT_TRUE(seen.insert(Uuid::random()).second);
    }
}

TEST(UuidRandom, NeverRepeatsAcrossThreads) {
    constexpr std::size_t perThread = 1'000;
    std::vector<std::vector<Uuid>> made(4, std::vector<Uuid>(perThread));
    std::vector<std::thread> threads;
    for (std::vector<Uuid>& ids : made) {
        threads.emplace_back([&ids] {
            for (Uuid& id : ids) {
                id = Uuid::random();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::set<Uuid> all;
    for (const std::vector<Uuid>& ids : made) {
        all.insert(ids.begin(), ids.end());
    }
    EXPECT_EQ(all.size(), made.size() * perThread);
}

TEST(Uuid, EqualsItsCopyOnly) {
    const Uuid id = Uuid::random();
    const Uuid copy = id;
    EXPECT_EQ(id, copy);
    EXPECT_NE(id, Uuid::random());
}

} // namespace
} // namespace vellmoor
