// The icon as the build draws it: the container of macOS and the plain pictures.
#include "FileContent.h"
#include "IconFamily.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace vellmoor::icon {
namespace {

using vellmoor::test::contentOf;

std::uint32_t bigEndian(std::string_view bytes) {
    std::uint32_t value = 0;
    for (const char byte : bytes.substr(0, 4)) {
        value = value << 8U | static_cast<unsigned char>(byte);
    }
    return value;
}

/// Type and content of each member; nothing fits when a length is wrong.
std::map<std::string, std::string> membersOf(std::string_view file) {
    std::map<std::string, std::string> found;
    std::size_t at = 8;
    while (at + 8 <= file.size()) {
        const std::size_t length = bigEndian(file.substr(at + 4));
        if (length < 8 || length > file.size() - at) {
            return {};
        }
        found.emplace(file.substr(at, 4), file.substr(at + 8, length - 8));
        at += length;
    }
    return at == file.size() ? found : std::map<std::string, std::string>();
}

/// Width and height from a PNG's first chunk; 0 for anything else.
std::pair<std::uint32_t, std::uint32_t> sizeOfPng(std::string_view png) {
    if (!png.starts_with("\x89PNG\r\n\x1a\n") || png.size() < 24) {
        return {0, 0};
    }
    return {bigEndian(png.substr(16)), bigEndian(png.substr(20))};
}

TEST(IconFamily, BeginsWithItsNameAndItsWholeLength) {
    const std::string file = iconFamily([](int pixels) { return std::to_string(pixels); });
    EXPECT_EQ(file.substr(0, 4), "icns");
    EXPECT_EQ(bigEndian(file.substr(4)), file.size());
}

TEST(IconFamily, HoldsThePictureOfEachSize) {
    const auto found = membersOf(iconFamily([](int pixels) { return "png of " + std::to_string(pixels); }));
    EXPECT_EQ(found, (std::map<std::string, std::string>{{"ic07", "png of 128"},
                                                         {"ic08", "png of 256"},
                                                         {"ic09", "png of 512"},
                                                         {"ic10", "png of 1024"},
                                                         {"ic11", "png of 32"},
                                                         {"ic12", "png of 64"},
                                                         {"ic13", "png of 256"},
                                                         {"ic14", "png of 512"}}));
}

class IconTool : public ::testing::Test {
protected:
    [[nodiscard]] int draw(const std::string& arguments) const {
        const std::string command = std::string(VELLMOOR_ICON) + " " + arguments + " 2> " + errors().string();
        return std::system(command.c_str()); // NOLINT: a fixed program and paths without blanks
    }
    [[nodiscard]] std::filesystem::path place(const char* name) const { return folder_.path() / name; }
    [[nodiscard]] std::filesystem::path errors() const { return place("errors"); }

private:
    test::TemporaryFolder folder_;
};

TEST_F(IconTool, DrawsEveryMemberOfTheFamilyInItsSize) {
    const std::filesystem::path out = place("Vellmoor.icns");
    ASSERT_EQ(draw(std::string(VELLMOOR_PICTURE) + " " + out.string()), 0) << contentOf(errors());
    const auto found = membersOf(contentOf(out));
    ASSERT_EQ(found.size(), members().size());
    for (const Member& member : members()) {
        const auto pixels = static_cast<std::uint32_t>(member.pixels);
        EXPECT_EQ(sizeOfPng(found.at(member.type)), std::pair(pixels, pixels)) << member.type;
    }
}

TEST_F(IconTool, DrawsAPictureOfAnySize) {
    const std::filesystem::path out = place("48.png");
    ASSERT_EQ(draw(std::string(VELLMOOR_PICTURE) + " 48=" + out.string()), 0) << contentOf(errors());
    EXPECT_EQ(sizeOfPng(contentOf(out)), (std::pair<std::uint32_t, std::uint32_t>(48, 48)));
}

TEST_F(IconTool, FailsWithASentenceWhenItCannotWrite) {
    EXPECT_NE(draw(std::string(VELLMOOR_PICTURE) + " 48=" + place("missing/48.png").string()), 0);
    EXPECT_THAT(contentOf(errors()), ::testing::HasSubstr("missing/48.png"));
}

TEST_F(IconTool, FailsOnAPictureThatIsNone) {
    EXPECT_NE(draw(place("no.svg").string() + " " + place("a.icns").string()), 0);
    EXPECT_FALSE(std::filesystem::exists(place("a.icns")));
}

} // namespace
} // namespace vellmoor::icon
