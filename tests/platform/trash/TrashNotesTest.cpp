#include "trash/TrashNotes.h"

#include <gtest/gtest.h>

namespace vellmoor {
namespace {

const TrashFolder homeTrash{.folder = "/home/u/Trash", .contents = "/home/u/Trash/files", .anchor = "/home/u"};
const TrashFolder stick{.folder = "/media/s/.Trash-1", .contents = "/media/s/.Trash-1/files", .anchor = "/media/s"};

std::optional<Path> origin(const std::string& path, const TrashFolder& trash) {
    return notedOrigin("[Trash Info]\nPath=" + path + "\nDeletionDate=2026-01-01T00:00:00\n", trash,
                       trash.folder == homeTrash.folder);
}

TEST(TrashNotes, OfTheHomeNameAnyPlaceButOneInTheTrashItself) {
    EXPECT_EQ(origin("/home/u/a%20b%FF", homeTrash), Path("/home/u/a b\xFF"));
    EXPECT_EQ(origin("/elsewhere", homeTrash), Path("/elsewhere"));
    EXPECT_EQ(origin("relative", homeTrash), std::nullopt);
    EXPECT_EQ(origin("/home/u/Trash/files/a", homeTrash), std::nullopt);
}

TEST(TrashNotes, OfADiskNameWhatLiesOnItOnly) {
    EXPECT_EQ(origin("folder/a", stick), Path("/media/s/folder/a"));
    EXPECT_EQ(origin("/media/s/a", stick), Path("/media/s/a"));
    EXPECT_EQ(origin("/home/u/.bashrc", stick), std::nullopt);
    EXPECT_EQ(origin("../u/.bashrc", stick), std::nullopt);
    EXPECT_EQ(origin(".Trash-1/files/a", stick), std::nullopt);
}

TEST(TrashNotes, ThatAreBrokenNameNothing) {
    for (const char* path : {"", "/", "/home/u/a/", "/home/u/../a", "/home/u/%00", "/home/u/."}) {
        EXPECT_EQ(origin(path, homeTrash), std::nullopt) << path;
    }
    for (const char* note :
         {"", "Path=/a\n", "[Other]\nPath=/a\n", "[Trash Info]\n[Other]\nPath=/a\n", "[Trash Info]\n"}) {
        EXPECT_EQ(notedOrigin(note, homeTrash, true), std::nullopt) << note;
    }
    EXPECT_EQ(notedOrigin("[Trash Info]\r\nPath=/a\r\n", homeTrash, true), Path("/a"));
}

TEST(TrashNotes, KnowTheNamesThatATrashGives) {
    const std::string longName(300, 'n');
    for (const std::string name : {"a", "a.tar.gz", ".hidden", "a.2", "x.7.y", longName.c_str()}) {
        for (const unsigned number : {1U, 2U, 17U}) {
            EXPECT_TRUE(isTrashNameOf(trashName(name, number, 255), name)) << name << number;
        }
    }
    EXPECT_FALSE(isTrashNameOf("b", "a"));
    EXPECT_FALSE(isTrashNameOf("a.b", "a"));
    EXPECT_FALSE(isTrashNameOf("a.tar", "a.tar.gz"));
    EXPECT_EQ(notedItem("a.trashinfo"), "a");
    EXPECT_EQ(notedItem(".trashinfo"), std::nullopt);
    EXPECT_EQ(notedItem("a"), std::nullopt);
}

} // namespace
} // namespace vellmoor
