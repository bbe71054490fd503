// Large files by kind and age, chosen all at once.
#include "Journey.h"

#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace vellmoor::journey {
namespace {

constexpr off_t largeBytes = off_t{260} * 1024 * 1024;

class LargeFilesJourney : public JourneyInEachLanguage {
protected:
    LargeFilesJourney() {
        // Space is taken twice only: names of one age are links to one file.
        makeLarge("Videos/holiday.mkv", 40);
        fs::create_directories(home() / "Downloads");
        fs::create_hard_link(home() / "Videos/holiday.mkv", home() / "Downloads/wedding.mp4");
        fs::create_hard_link(home() / "Videos/holiday.mkv", home() / "Downloads/backup.zip");
        makeLarge("Videos/yesterday.mkv", 1);
        makeFile("Videos/small.mkv", 1'000'000, 40);
    }

    static void makeLarge(const fs::path& relative, int daysOld) {
        const fs::path path = makeFile(relative, 0);
        const int file = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
        const int error = file < 0 ? errno : ::posix_fallocate(file, 0, largeBytes);
        ::close(file);
        if (error != 0) {
            throw std::system_error(error, std::generic_category(), path.string());
        }
        fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(24 * daysOld));
    }

    /// Opens a list and takes the choice at that position.
    void choose(const QString& picker, int position) {
        click(picker);
        click(QStringLiteral("%1.%2").arg(picker).arg(position));
    }
    [[nodiscard]] bool isTicked(const std::string& name) const {
        const CleanupItem* found = item(name);
        return found != nullptr && found->isSelected;
    }
};
IN_BOTH_LANGUAGES(LargeFilesJourney);

TEST_P(LargeFilesJourney, ABulkSelectionTakesWhatPassesBothFiltersAndNothingElse) {
    open();
    show(CleanerModule::largeFiles);
    scan();
    ASSERT_NE(item("holiday.mkv"), nullptr);
    EXPECT_EQ(item("small.mkv"), nullptr);
    EXPECT_EQ(textOf(QStringLiteral("list.counter")), tr("%d 个结果", 4));

    choose(QStringLiteral("kindFilter"), static_cast<int>(LargeFileKindFilter::videos));
    choose(QStringLiteral("ageFilter"), static_cast<int>(LargeFileAgeFilter::thirtyDays));
    EXPECT_EQ(textOf(QStringLiteral("list.counter")), tr("%d 个结果", 2));
    click(QStringLiteral("selectFiltered"));
    waitFor("the ticks", [&] { return isTicked("holiday.mkv") && isTicked("wedding.mp4"); });
    EXPECT_FALSE(isTicked("yesterday.mkv"));
    EXPECT_FALSE(isTicked("backup.zip"));

    clean();
    EXPECT_EQ(store->latestReport()->removedCount, 2);
    EXPECT_EQ(store->latestReport()->failedCount, 0);
    EXPECT_TRUE(isTrashed("holiday.mkv"));
    EXPECT_TRUE(isTrashed("wedding.mp4"));
    EXPECT_FALSE(has("Videos/holiday.mkv"));
    EXPECT_FALSE(has("Downloads/wedding.mp4"));
    EXPECT_TRUE(has("Videos/yesterday.mkv"));
    EXPECT_TRUE(has("Videos/small.mkv"));
    EXPECT_TRUE(has("Downloads/backup.zip"));
}

TEST_P(LargeFilesJourney, AFilterHidesWhatWasTickedButDoesNotUntickIt) {
    open();
    show(CleanerModule::largeFiles);
    scan();
    choose(QStringLiteral("kindFilter"), static_cast<int>(LargeFileKindFilter::archives));
    click(QStringLiteral("item.0.toggle"));
    waitFor("the tick", [&] { return isTicked("backup.zip"); });
    choose(QStringLiteral("kindFilter"), static_cast<int>(LargeFileKindFilter::videos));
    click(QStringLiteral("selectFiltered"));
    waitFor("the ticks", [&] { return isTicked("yesterday.mkv"); });
    click(QStringLiteral("deselectFiltered"));
    waitFor("the ticks to go", [&] { return !isTicked("yesterday.mkv") && !isTicked("holiday.mkv"); });
    EXPECT_TRUE(isTicked("backup.zip"));

    clean();
    EXPECT_TRUE(isTrashed("backup.zip"));
    EXPECT_TRUE(has("Videos/holiday.mkv"));
    EXPECT_TRUE(has("Videos/yesterday.mkv"));
    EXPECT_TRUE(has("Downloads/wedding.mp4"));
}

} // namespace
} // namespace vellmoor::journey
