// Rules that the window's sources keep: every text has its entry, every symbol its picture.
#include "FileContent.h"
#include "KnownSymbols.h"
#include "texts/TextTables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;

const fs::path top = VELLMOOR_SOURCE_DIR;

std::set<std::string> matchesBelow(const fs::path& folder, const std::set<std::string>& extensions,
                                   const std::regex& pattern) {
    std::set<std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!extensions.contains(entry.path().extension().string())) {
            continue;
        }
        const std::string text = test::contentOf(entry.path());
        for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end; ++match) {
            found.insert((*match)[1].str());
        }
    }
    return found;
}

std::set<std::string> knownKeys() {
    std::set<std::string> keys;
    for (const TextEntry& entry : englishTexts()) {
        keys.emplace(entry.chinese);
    }
    for (const FurtherTextEntry& entry : furtherTexts()) {
        keys.emplace(entry.chinese);
    }
    return keys;
}

TEST(Sources, EveryTextOfTheViewsHasAnEntryInTheTables) {
    const std::set<std::string> used = matchesBelow(top / "src/ui", {".qml"}, std::regex(R"re(L\.tr1?\("([^"]+)")re"));
    ASSERT_GT(used.size(), 60U);
    const std::set<std::string> known = knownKeys();
    std::set<std::string> missing;
    std::ranges::set_difference(used, known, std::inserter(missing, missing.end()));
    EXPECT_THAT(missing, IsEmpty());
}

TEST(Sources, EveryTextOfTheModelsHasAnEntryInTheTables) {
    const std::set<std::string> used =
        matchesBelow(top / "src", {".cpp", ".h"}, std::regex(R"re(localised\("([^"]+)"[,)])re"));
    ASSERT_GT(used.size(), 30U);
    const std::set<std::string> known = knownKeys();
    std::set<std::string> missing;
    std::ranges::set_difference(used, known, std::inserter(missing, missing.end()));
    EXPECT_THAT(missing, IsEmpty());
}

TEST(Sources, EverySymbolOfTheViewsHasAPicture) {
    // symbol: "a" or symbol: condition ? "a" : "b"
    const std::set<std::string> lines =
        matchesBelow(top / "src/ui", {".qml"},
                     std::regex(R"re((?:^|\n)\s*(?:property string )?(?:symbol|startSymbol|name): ([^\n]+))re"));
    const std::regex quoted(R"re((?:[?:]|^)\s*"([a-z0-9.]+)")re", std::regex::icase);
    std::set<std::string> missing;
    int used = 0;
    for (const std::string& line : lines) {
        for (std::sregex_iterator match(line.begin(), line.end(), quoted), end; match != end; ++match) {
            ++used;
            const std::string symbol = (*match)[1].str();
            if (symbol != "filter" && !isKnownSymbol(symbol)) { // "filter": a choice's name
                missing.insert(symbol);
            }
        }
    }
    EXPECT_GT(used, 30);
    EXPECT_THAT(missing, IsEmpty());
}

TEST(Sources, EverySymbolThatRecordsCarryHasAPicture) {
    const std::set<std::string> carried{"app.dashed",
                                        "arrow.down.doc",
                                        "circle.hexagongrid",
                                        "clock.arrow.circlepath",
                                        "doc",
                                        "doc.text.magnifyingglass",
                                        "doc.zipper",
                                        "envelope",
                                        "externaldrive.badge.timemachine",
                                        "film",
                                        "folder",
                                        "globe",
                                        "hammer",
                                        "house",
                                        "lock",
                                        "lock.trianglebadge.exclamationmark",
                                        "memorychip",
                                        "message",
                                        "opticaldiscdrive",
                                        "photo",
                                        "power",
                                        "safari",
                                        "shippingbox",
                                        "trash"};
    std::set<std::string> missing;
    for (const std::string& symbol : carried) {
        if (!isKnownSymbol(symbol)) {
            missing.insert(symbol);
        }
    }
    EXPECT_THAT(missing, IsEmpty());
}

TEST(Sources, ColoursStandInTheThemeOnly) {
    std::vector<std::string> wrong;
    const std::regex literal(R"re("#[0-9a-fA-F]{3,8}"|Qt\.rgba\([0-9])re");
    for (const auto& entry : fs::recursive_directory_iterator(top / "src/ui")) {
        const bool inTheme = entry.path().parent_path().filename() == "theme";
        if (entry.path().extension() == ".qml" && !inTheme &&
            std::regex_search(test::contentOf(entry.path()), literal)) {
            wrong.push_back(entry.path().filename().string());
        }
    }
    EXPECT_THAT(wrong, IsEmpty());
}

TEST(Sources, ViewsStayShort) {
    std::vector<std::string> tooLong;
    for (const auto& entry : fs::recursive_directory_iterator(top / "src/ui")) {
        if (entry.path().extension() == ".qml") {
            const std::string text = test::contentOf(entry.path());
            if (std::ranges::count(text, '\n') > 250) {
                tooLong.push_back(entry.path().filename().string());
            }
        }
    }
    EXPECT_THAT(tooLong, IsEmpty());
}

} // namespace
} // namespace vellmoor
