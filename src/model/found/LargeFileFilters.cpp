#include "found/LargeFileFilters.h"

#include "texts/L.h"

#include <algorithm>

namespace vellmoor {
namespace {

struct FilterTexts {
    std::string_view rawValue;
    std::string_view title;
};

constexpr std::array<FilterTexts, allLargeFileKinds.size()> kindTexts{{
    {"all", "全部"},
    {"installers", "安装包"},
    {"archives", "压缩包"},
    {"videos", "视频"},
    {"images", "图片"},
    {"documents", "文档"},
    {"other", "其他"},
}};

struct AgeTexts {
    std::string_view rawValue;
    std::string_view title;
    int days;
};

constexpr std::array<AgeTexts, allLargeFileAges.size()> ageTexts{{
    {"all", "全部时间", 0},
    {"sevenDays", "7 天以前", 7},
    {"thirtyDays", "30 天以前", 30},
    {"ninetyDays", "90 天以前", 90},
}};

const FilterTexts& texts(LargeFileKindFilter filter) {
    return kindTexts.at(static_cast<std::size_t>(filter));
}
const AgeTexts& texts(LargeFileAgeFilter filter) {
    return ageTexts.at(static_cast<std::size_t>(filter));
}

bool holds(const std::vector<std::string_view>& extensions, std::string_view extension) {
    return std::ranges::find(extensions, extension) != extensions.end();
}

} // namespace

const FileKinds& FileKinds::common() {
    static const FileKinds kinds{
        .installers = {"dmg", "pkg", "xip", "iso", "ipsw"},
        .archives = {"zip", "rar", "7z", "tar", "gz", "bz2"},
        .videos = {"mov", "mp4", "m4v", "avi", "mkv"},
        .images = {"jpg", "jpeg", "png", "heic", "tiff", "psd", "raw"},
        .documents = {"pdf", "doc", "docx", "ppt", "pptx", "xls", "xlsx", "pages", "numbers", "key"},
    };
    return kinds;
}

const FileKinds& FileKinds::linuxDesktop() {
    static const FileKinds kinds = [] {
        FileKinds all = common();
        const auto add = [](std::vector<std::string_view>& list, std::initializer_list<std::string_view> more) {
            list.insert(list.end(), more);
        };
        add(all.installers,
            {"deb", "rpm", "appimage", "flatpak", "flatpakref", "snap", "run", "bundle", "img", "msi", "exe"});
        add(all.archives, {"xz", "zst", "lz4", "tgz", "tbz2", "txz"});
        add(all.videos, {"webm", "wmv", "flv", "mpg", "mpeg", "ts"});
        add(all.images, {"webp", "avif", "svg", "xcf"});
        add(all.documents, {"odt", "ods", "odp", "epub", "djvu"});
        return all;
    }();
    return kinds;
}

std::string_view rawValue(LargeFileKindFilter filter) {
    return texts(filter).rawValue;
}
std::string_view rawValue(LargeFileAgeFilter filter) {
    return texts(filter).rawValue;
}
std::string title(LargeFileKindFilter filter) {
    return L::tr(texts(filter).title);
}
std::string title(LargeFileAgeFilter filter) {
    return L::tr(texts(filter).title);
}

LargeFileKindFilter fileKind(const std::filesystem::path& path, const FileKinds& kinds) {
    const std::string extension = lowerExtension(path);
    if (holds(kinds.installers, extension)) {
        return LargeFileKindFilter::installers;
    }
    if (holds(kinds.archives, extension)) {
        return LargeFileKindFilter::archives;
    }
    if (holds(kinds.videos, extension)) {
        return LargeFileKindFilter::videos;
    }
    if (holds(kinds.images, extension)) {
        return LargeFileKindFilter::images;
    }
    if (holds(kinds.documents, extension)) {
        return LargeFileKindFilter::documents;
    }
    return LargeFileKindFilter::other;
}

bool matches(LargeFileKindFilter filter, const CleanupTarget& target, const FileKinds& kinds) {
    return filter == LargeFileKindFilter::all || fileKind(target.url, kinds) == filter;
}

bool matches(LargeFileAgeFilter filter, const CleanupTarget& target, TimePoint now) {
    if (filter == LargeFileAgeFilter::all) {
        return true;
    }
    return target.modifiedAt && *target.modifiedAt < now - std::chrono::hours(24) * texts(filter).days;
}

std::string lowerExtension(const std::filesystem::path& path) {
    std::string extension = path.extension().string();
    if (extension.size() < 2) {
        return {};
    }
    extension.erase(0, 1);
    std::ranges::transform(extension, extension.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return extension;
}

} // namespace vellmoor
