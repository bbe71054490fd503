#include "FileIdentity.h"

#include <gtest/gtest.h>

namespace vellmoor {
namespace {

using namespace std::chrono_literals;

constexpr FileIdentity shown{.device = 1, .inode = 2, .kind = FileKind::File, .length = 10, .modified = {}};

FileIdentity with(void (*change)(FileIdentity&)) {
    FileIdentity other = shown;
    change(other);
    return other;
}

TEST(Sameness, AnyDifferenceMakesAnotherFile) {
    EXPECT_TRUE(isSame(shown, shown, Sameness::Content));
    EXPECT_FALSE(isSame(shown, with([](FileIdentity& i) { i.device = 9; }), Sameness::Content));
    EXPECT_FALSE(isSame(shown, with([](FileIdentity& i) { i.inode = 9; }), Sameness::Content));
    EXPECT_FALSE(isSame(shown, with([](FileIdentity& i) { i.kind = FileKind::Link; }), Sameness::Content));
    EXPECT_FALSE(isSame(shown, with([](FileIdentity& i) { i.length = 9; }), Sameness::Content));
    EXPECT_FALSE(isSame(shown, with([](FileIdentity& i) { i.modified += 1us; }), Sameness::Content));
}

TEST(Sameness, AFolderStaysTheSameWhenSomethingInItChanges) {
    FileIdentity folder = shown;
    folder.kind = FileKind::Folder;
    FileIdentity later = folder;
    later.length = 4096;
    later.modified += 1s;
    EXPECT_TRUE(isSame(folder, later, Sameness::Content));
}

TEST(Sameness, OfLogsAndCachesOnlyDiskAndKindCount) {
    FileIdentity grown = shown;
    grown.inode = 9;
    grown.length = 9;
    grown.modified += 1s;
    EXPECT_TRUE(isSame(shown, grown, Sameness::Kind));
    grown.kind = FileKind::Folder;
    EXPECT_FALSE(isSame(shown, grown, Sameness::Kind));
    EXPECT_FALSE(isSame(shown, with([](FileIdentity& i) { i.device = 9; }), Sameness::Kind));
}

} // namespace
} // namespace vellmoor
