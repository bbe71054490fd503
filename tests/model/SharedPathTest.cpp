#include "found/SharedPath.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;

TEST(SharedPath, IsThePathThatItWasMadeOf) {
    const fs::path made = fs::path("/home/anna") / ".cache" / "pip";
    const SharedPath path = made;
    EXPECT_EQ(path.native(), "/home/anna/.cache/pip");
    EXPECT_EQ(path.path().filename(), "pip");
    EXPECT_EQ(path, made);
    EXPECT_NE(path, made / "http");
}

TEST(SharedPath, KeepsTheBytesOfANameThatIsNoText) {
    const SharedPath path = "/home/anna/\xff\xfe";
    EXPECT_EQ(path.native(), "/home/anna/\xff\xfe");
}

TEST(SharedPath, MadeOfNothingIsEmpty) {
    EXPECT_TRUE(SharedPath().native().empty());
    EXPECT_TRUE(SharedPath().path().empty());
    EXPECT_EQ(SharedPath(), fs::path());
    EXPECT_EQ(SharedPath(), SharedPath(""));
}

TEST(SharedPath, ACopyHoldsTheSameTextAndIsNotChangedByAnotherValue) {
    SharedPath path = "/home/anna/.cache/pip";
    const SharedPath copy = path;
    EXPECT_EQ(&copy.native(), &path.native());
    path = "/home/anna/.cache/npm";
    EXPECT_EQ(copy.native(), "/home/anna/.cache/pip");
    EXPECT_NE(copy, path);
}

TEST(SharedPath, IsComparedByParts) {
    EXPECT_EQ(SharedPath("/home//anna"), SharedPath("/home/anna"));
    EXPECT_EQ(SharedPath("/home//anna"), fs::path("/home/anna"));
}

} // namespace
} // namespace vellmoor
