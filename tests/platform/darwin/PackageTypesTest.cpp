#include "disk/PackageTypes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <vector>

namespace vellmoor::mac {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace std::chrono_literals;

class PackageTypesTest : public ::testing::Test {
protected:
    PackageTypes::Time now_ = PackageTypes::Time() + 24h;
    std::vector<Path> asked_;
    PackageTypes types_{[this](const Path& folder) {
                            asked_.push_back(folder);
                            return folder.extension() == ".app";
                        },
                        [this] { return now_; }};
};

TEST_F(PackageTypesTest, TheSystemIsAskedOncePerExtension) {
    EXPECT_TRUE(types_.contain("/a/One.app"));
    EXPECT_TRUE(types_.contain("/b/Two.app"));
    EXPECT_FALSE(types_.contain("/a/v1.2"));
    EXPECT_FALSE(types_.contain("/b/v1.2"));
    EXPECT_THAT(asked_, ElementsAre("/a/One.app", "/a/v1.2"));
}

TEST_F(PackageTypesTest, AFolderWithoutExtensionIsNeverAskedAbout) {
    EXPECT_FALSE(types_.contain("/a/plain"));
    EXPECT_FALSE(types_.contain("/a/.hidden"));
    EXPECT_THAT(asked_, IsEmpty());
}

TEST_F(PackageTypesTest, AnAnswerIsForgottenAfterAWhile) {
    EXPECT_TRUE(types_.contain("/a/One.app"));
    now_ += 9s;
    EXPECT_TRUE(types_.contain("/a/One.app"));
    EXPECT_EQ(asked_.size(), 1U);
    now_ += 2s;
    EXPECT_TRUE(types_.contain("/a/One.app"));
    EXPECT_EQ(asked_.size(), 2U);
}

} // namespace
} // namespace vellmoor::mac
