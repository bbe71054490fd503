#include "found/LargeFileFilters.h"

#include "LanguageScope.h"

#include <gmock/gmock.h>

namespace vellmoor {
namespace {

using ::testing::ElementsAre;
using Kind = LargeFileKindFilter;
using Age = LargeFileAgeFilter;

const TimePoint now{std::chrono::seconds(1'700'000'000)};

CleanupTarget fileNamed(const std::filesystem::path& name) {
    CleanupTarget target;
    target.url = std::filesystem::path("/home/user/Downloads") / name;
    return target;
}

CleanupTarget fileOfAge(std::chrono::system_clock::duration age) {
    CleanupTarget target;
    target.modifiedAt = now - age;
    return target;
}

/// The kinds, `all` aside, that match the file; exactly one must.
std::vector<Kind> kindsOf(const std::filesystem::path& name, const FileKinds& kinds) {
    std::vector<Kind> matching;
    for (const Kind kind : allLargeFileKinds) {
        if (kind != Kind::all && matches(kind, fileNamed(name), kinds)) {
            matching.push_back(kind);
        }
    }
    return matching;
}

void expectKind(Kind kind, std::initializer_list<const char*> extensions, const FileKinds& kinds) {
    for (const char* extension : extensions) {
        EXPECT_THAT(kindsOf(std::string("file.") + extension, kinds), ElementsAre(kind)) << extension;
    }
}

TEST(LargeFileKinds, HaveTheirCaseNamesAsRawValues) {
    std::vector<std::string_view> raw;
    for (const Kind kind : allLargeFileKinds) {
        raw.push_back(rawValue(kind));
    }
    EXPECT_THAT(raw, ElementsAre("all", "installers", "archives", "videos", "images", "documents", "other"));
}

TEST(LargeFileKinds, HaveTitlesInBothLanguages) {
    const auto titles = [] {
        std::vector<std::string> all;
        for (const Kind kind : allLargeFileKinds) {
            all.push_back(title(kind));
        }
        return all;
    };
    {
        const LanguageScope english(AppLanguage::english);
        EXPECT_THAT(titles(), ElementsAre("All", "Installers", "Archives", "Videos", "Images", "Documents", "Other"));
    }
    const LanguageScope chinese(AppLanguage::chinese);
    EXPECT_THAT(titles(), ElementsAre("全部", "安装包", "压缩包", "视频", "图片", "文档", "其他"));
}

TEST(LargeFileKinds, PutEachCommonExtensionInOneKind) {
    const FileKinds& kinds = FileKinds::common();
    expectKind(Kind::installers, {"dmg", "pkg", "xip", "iso", "ipsw"}, kinds);
    expectKind(Kind::archives, {"zip", "rar", "7z", "tar", "gz", "bz2"}, kinds);
    expectKind(Kind::videos, {"mov", "mp4", "m4v", "avi", "mkv"}, kinds);
    expectKind(Kind::images, {"jpg", "jpeg", "png", "heic", "tiff", "psd", "raw"}, kinds);
    expectKind(Kind::documents, {"pdf", "doc", "docx", "ppt", "pptx", "xls", "xlsx", "pages", "numbers", "key"}, kinds);
}

TEST(LargeFileKinds, HoldNothingElseInTheCommonLists) {
    const FileKinds& kinds = FileKinds::common();
    EXPECT_EQ(kinds.installers.size(), 5U);
    EXPECT_EQ(kinds.archives.size(), 6U);
    EXPECT_EQ(kinds.videos.size(), 5U);
    EXPECT_EQ(kinds.images.size(), 7U);
    EXPECT_EQ(kinds.documents.size(), 10U);
    expectKind(Kind::other, {"deb", "xz", "webm", "webp", "odt", "txt", "dm", "dmgx"}, kinds);
}

TEST(LargeFileKinds, KeepTheCommonExtensionsOnLinux) {
    const FileKinds& kinds = FileKinds::linuxDesktop();
    expectKind(Kind::installers, {"dmg", "pkg", "xip", "iso", "ipsw"}, kinds);
    expectKind(Kind::archives, {"zip", "rar", "7z", "tar", "gz", "bz2"}, kinds);
    expectKind(Kind::videos, {"mov", "mp4", "m4v", "avi", "mkv"}, kinds);
    expectKind(Kind::images, {"jpg", "jpeg", "png", "heic", "tiff", "psd", "raw"}, kinds);
    expectKind(Kind::documents, {"pdf", "doc", "docx", "ppt", "pptx", "xls", "xlsx", "pages", "numbers", "key"}, kinds);
}

TEST(LargeFileKinds, KnowTheFilesOfLinuxDesktopsToo) {
    const FileKinds& kinds = FileKinds::linuxDesktop();
    expectKind(Kind::installers,
               {"deb", "rpm", "appimage", "flatpak", "flatpakref", "snap", "run", "bundle", "img", "msi", "exe"},
               kinds);
    expectKind(Kind::archives, {"xz", "zst", "lz4", "tgz", "tbz2", "txz"}, kinds);
    expectKind(Kind::videos, {"webm", "wmv", "flv", "mpg", "mpeg", "ts"}, kinds);
    expectKind(Kind::images, {"webp", "avif", "svg", "xcf"}, kinds);
    expectKind(Kind::documents, {"odt", "ods", "odp", "epub", "djvu"}, kinds);
}

TEST(LargeFileKinds, AllMatchesEveryFile) {
    EXPECT_TRUE(matches(Kind::all, fileNamed("movie.mov"), FileKinds::common()));
    EXPECT_TRUE(matches(Kind::all, fileNamed("notes"), FileKinds::common()));
}

TEST(LargeFileKinds, CompareInLowerCase) {
    EXPECT_THAT(kindsOf("Movie.MOV", FileKinds::common()), ElementsAre(Kind::videos));
    EXPECT_THAT(kindsOf("Setup.AppImage", FileKinds::linuxDesktop()), ElementsAre(Kind::installers));
}

TEST(LargeFileKinds, PutAFileWithoutExtensionAmongTheOthers) {
    EXPECT_THAT(kindsOf("notes", FileKinds::common()), ElementsAre(Kind::other));
    EXPECT_THAT(kindsOf("mov", FileKinds::common()), ElementsAre(Kind::other));
    EXPECT_THAT(kindsOf("movie.", FileKinds::common()), ElementsAre(Kind::other));
    EXPECT_THAT(kindsOf(".mov", FileKinds::common()), ElementsAre(Kind::other));
}

TEST(LargeFileKinds, LookAtTheLastExtensionOnly) {
    EXPECT_THAT(kindsOf("archive.tar.gz", FileKinds::common()), ElementsAre(Kind::archives));
    EXPECT_THAT(kindsOf("archive.gz.txt", FileKinds::common()), ElementsAre(Kind::other));
    EXPECT_THAT(kindsOf("movie.mov.zip", FileKinds::common()), ElementsAre(Kind::archives));
}

TEST(LargeFileKinds, LookAtTheFileNotAtItsFolder) {
    EXPECT_THAT(kindsOf("films.mov/notes", FileKinds::common()), ElementsAre(Kind::other));
}

TEST(LargeFileKinds, EndureNamesThatAreNotText) {
    EXPECT_THAT(kindsOf("\xff\xfe.mov", FileKinds::common()), ElementsAre(Kind::videos));
    EXPECT_THAT(kindsOf("movie.\xff", FileKinds::common()), ElementsAre(Kind::other));
}

TEST(LowerExtension, IsWithoutTheDot) {
    EXPECT_EQ(lowerExtension("/tmp/a.PDF"), "pdf");
    EXPECT_EQ(lowerExtension("/tmp/a.b.C7z"), "c7z");
    EXPECT_EQ(lowerExtension("/tmp.d/a"), "");
    EXPECT_EQ(lowerExtension("/tmp/.."), "");
    EXPECT_EQ(lowerExtension(""), "");
}

TEST(LargeFileAges, HaveTheirCaseNamesAsRawValues) {
    std::vector<std::string_view> raw;
    for (const Age age : allLargeFileAges) {
        raw.push_back(rawValue(age));
    }
    EXPECT_THAT(raw, ElementsAre("all", "sevenDays", "thirtyDays", "ninetyDays"));
}

TEST(LargeFileAges, HaveTitlesInBothLanguages) {
    const auto titles = [] {
        std::vector<std::string> all;
        for (const Age age : allLargeFileAges) {
            all.push_back(title(age));
        }
        return all;
    };
    {
        const LanguageScope english(AppLanguage::english);
        EXPECT_THAT(titles(), ElementsAre("Any time", "7+ days", "30+ days", "90+ days"));
    }
    const LanguageScope chinese(AppLanguage::chinese);
    EXPECT_THAT(titles(), ElementsAre("全部时间", "7 天以前", "30 天以前", "90 天以前"));
}

TEST(LargeFileAges, DoNotMatchAFileOfExactlyThatAge) {
    EXPECT_FALSE(matches(Age::sevenDays, fileOfAge(std::chrono::seconds(604'800)), now));
    EXPECT_FALSE(matches(Age::thirtyDays, fileOfAge(std::chrono::seconds(2'592'000)), now));
    EXPECT_FALSE(matches(Age::ninetyDays, fileOfAge(std::chrono::seconds(7'776'000)), now));
}

TEST(LargeFileAges, MatchAFileThatIsTheLeastBitOlder) {
    constexpr std::chrono::system_clock::duration bit(1);
    EXPECT_TRUE(matches(Age::sevenDays, fileOfAge(std::chrono::seconds(604'800) + bit), now));
    EXPECT_TRUE(matches(Age::thirtyDays, fileOfAge(std::chrono::seconds(2'592'000) + bit), now));
    EXPECT_TRUE(matches(Age::ninetyDays, fileOfAge(std::chrono::seconds(7'776'000) + bit), now));
}

TEST(LargeFileAges, DoNotMatchRecentFiles) {
    EXPECT_FALSE(matches(Age::sevenDays, fileOfAge(std::chrono::hours(1)), now));
    EXPECT_FALSE(matches(Age::thirtyDays, fileOfAge(std::chrono::days(8)), now));
    EXPECT_FALSE(matches(Age::ninetyDays, fileOfAge(std::chrono::days(31)), now));
    EXPECT_FALSE(matches(Age::sevenDays, fileOfAge(-std::chrono::days(30)), now));
}

TEST(LargeFileAges, MatchAFileWithoutADateOnlyWithAll) {
    const CleanupTarget undated;
    EXPECT_TRUE(matches(Age::all, undated, now));
    EXPECT_FALSE(matches(Age::sevenDays, undated, now));
    EXPECT_FALSE(matches(Age::thirtyDays, undated, now));
    EXPECT_FALSE(matches(Age::ninetyDays, undated, now));
}

TEST(LargeFileAges, AllMatchesEveryAge) {
    EXPECT_TRUE(matches(Age::all, fileOfAge(std::chrono::hours(1)), now));
    EXPECT_TRUE(matches(Age::all, fileOfAge(std::chrono::days(4'000)), now));
}

} // namespace
} // namespace vellmoor
