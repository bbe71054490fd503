// The rules of the house, checked on the sources themselves.
#include "FileContent.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

using vellmoor::test::contentOf;

namespace fs = std::filesystem;
using ::testing::IsEmpty;

const fs::path top = VELLMOOR_SOURCE_DIR;

std::vector<fs::path> filesBelow(const fs::path& folder, const std::set<std::string>& extensions) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file() && extensions.contains(entry.path().extension().string())) {
            files.push_back(entry.path());
        }
    }
    std::ranges::sort(files);
    return files;
}

/// "engine" for src/engine/x.cpp.
std::string layerOf(const fs::path& source) {
    return source.lexically_relative(top / "src").begin()->string();
}

/// Which layers a layer may include, itself left out.
const std::map<std::string, std::set<std::string>>& arrows() {
    static const std::map<std::string, std::set<std::string>> table{
        {"model", {}},
        {"walk", {}},
        {"platform", {"model", "walk"}},
        {"engine", {"model", "walk", "platform"}},
        {"terminal", {"model", "platform"}},
        {"cli", {"model", "engine", "platform", "terminal"}},
        {"store", {"model", "engine", "platform"}},
        {"ui", {"model", "engine", "platform", "store"}},
        {"app", {"model", "engine", "platform", "store", "ui"}},
    };
    return table;
}

std::vector<std::string> matchesOf(const std::string& text, const std::regex& pattern) {
    std::vector<std::string> found;
    for (std::sregex_iterator it(text.begin(), text.end(), pattern), end; it != end; ++it) {
        found.push_back((*it)[1].str());
    }
    return found;
}

TEST(Project, EveryPathThatTheMapNamesExists) {
    const std::string map = contentOf(top / "ARCHITECTURE.md");
    ASSERT_FALSE(map.empty());
    const auto named = matchesOf(
        map, std::regex("`((?:src|tests|bench|tools|scripts|packaging|docs|cmake|\\.ci|\\.github)/[A-Za-z0-9_./-]*)`"));
    ASSERT_GT(named.size(), 40U);
    std::vector<std::string> missing;
    for (const std::string& path : named) {
        if (!fs::exists(top / path)) {
            missing.push_back(path);
        }
    }
    EXPECT_THAT(missing, IsEmpty());
}

TEST(Project, EverySourceFolderStandsOnTheMap) {
    const std::string map = contentOf(top / "ARCHITECTURE.md");
    std::vector<std::string> missing;
    for (const auto& entry : fs::recursive_directory_iterator(top / "src")) {
        const std::string path = entry.path().lexically_relative(top).string();
        if (entry.is_directory() && !map.contains("`" + path + "`") && !map.contains("`" + path + "/")) {
            missing.push_back(path);
        }
    }
    EXPECT_THAT(missing, IsEmpty());
}

TEST(Project, NoFolderIsCrowdedAndNoFileIsLong) {
    constexpr std::ptrdiff_t files = 20;
    constexpr std::ptrdiff_t lines = 400;
    std::vector<std::string> wrong;
    std::map<fs::path, std::ptrdiff_t> count;
    for (const char* place : {"src", "tests"}) {
        for (const fs::path& source : filesBelow(top / place, {".h", ".cpp", ".mm", ".qml"})) {
            if (++count[source.parent_path()] == files + 1) {
                wrong.push_back(source.parent_path().lexically_relative(top).string());
            }
            if (std::ranges::count(contentOf(source), '\n') > lines) {
                wrong.push_back(source.lexically_relative(top).string());
            }
        }
    }
    EXPECT_THAT(wrong, IsEmpty());
}

TEST(Project, IncludesFollowTheArrows) {
    std::map<std::string, std::string> layerOfHeader;
    for (const fs::path& header : filesBelow(top / "src", {".h"})) {
        layerOfHeader[header.filename().string()] = layerOf(header);
    }
    std::vector<std::string> wrong;
    for (const fs::path& source : filesBelow(top / "src", {".h", ".cpp", ".mm"})) {
        for (const std::string& include : matchesOf(contentOf(source), std::regex("#\\s*include\\s+\"([^\"]+)\""))) {
            const auto header = layerOfHeader.find(fs::path(include).filename().string());
            if (header == layerOfHeader.end() || header->second == layerOf(source)) {
                continue;
            }
            // The Mac reads folders for the walk and for single paths by the same calls.
            const bool isMac = source.string().contains("/platform/macos/");
            if (!arrows().at(layerOf(source)).contains(header->second) && !(isMac && header->second == "walk")) {
                wrong.push_back(source.lexically_relative(top).string() + " includes " + include);
            }
        }
    }
    EXPECT_THAT(wrong, IsEmpty());
}

TEST(Project, HeadersHaveOneNameEach) {
    std::map<std::string, int> count;
    std::vector<std::string> twice;
    for (const fs::path& header : filesBelow(top / "src", {".h"})) {
        if (++count[header.filename().string()] > 1) {
            twice.push_back(header.filename().string());
        }
    }
    EXPECT_THAT(twice, IsEmpty());
}

TEST(Project, NoIncludeClimbsOutOfItsFolder) {
    std::vector<std::string> wrong;
    for (const fs::path& source : filesBelow(top / "src", {".h", ".cpp", ".mm"})) {
        if (contentOf(source).contains("#include \"../")) {
            wrong.push_back(source.string());
        }
    }
    EXPECT_THAT(wrong, IsEmpty());
}

TEST(Project, OnlyThreeLayersKnowWhichSystemTheyRunOn) {
    std::vector<std::string> wrong;
    const std::set<std::string> allowed{"platform", "walk", "app"};
    for (const fs::path& source : filesBelow(top / "src", {".h", ".cpp"})) {
        const std::string text = contentOf(source);
        if (!allowed.contains(layerOf(source)) &&
            std::regex_search(text, std::regex("#\\s*(if|ifdef|ifndef|elif)\\b"))) {
            wrong.push_back(source.lexically_relative(top).string());
        }
    }
    EXPECT_THAT(wrong, IsEmpty());
}

TEST(Project, NoQmlFileIsLongerThanAScreenOrFive) {
    std::vector<std::string> tooLong;
    for (const fs::path& file : filesBelow(top / "src", {".qml"})) {
        const std::string text = contentOf(file);
        if (std::ranges::count(text, '\n') > 250) {
            tooLong.push_back(file.lexically_relative(top).string());
        }
    }
    EXPECT_THAT(tooLong, IsEmpty());
}

TEST(Project, ColoursStandInTheThemeOnly) {
    std::vector<std::string> wrong;
    const std::regex literal("\"#[0-9a-fA-F]{3,8}\"|Qt\\.rgba\\(\\s*[0-9.]+\\s*,\\s*[0-9.]+\\s*,");
    for (const fs::path& file : filesBelow(top / "src", {".qml"})) {
        const bool inTheme = file.string().contains("/theme/");
        if (!inTheme && std::regex_search(contentOf(file), literal)) {
            wrong.push_back(file.lexically_relative(top).string());
        }
    }
    EXPECT_THAT(wrong, IsEmpty());
}

} // namespace
