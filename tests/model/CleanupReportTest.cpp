#include "done/CleanupReport.h"

#include "LanguageScope.h"

#include <gtest/gtest.h>

namespace vellmoor {
namespace {

CleanupReport reportOf(std::int64_t attempted, std::int64_t removed, std::int64_t failed) {
    CleanupReport report;
    report.attemptedCount = attempted;
    report.removedCount = removed;
    report.failedCount = failed;
    report.processedBytes = 1'500'000;
    return report;
}

TEST(CleanupReportMessage, NamesTheRemovedNotTheAttemptedPaths) {
    EXPECT_EQ(reportOf(7, 5, 0).message(), "Processed 5 items, estimated 1.5 MB freed.");
}

TEST(CleanupReportMessage, NamesTheFailuresWhenThereAreAny) {
    EXPECT_EQ(reportOf(7, 5, 2).message(), "Processed 5 items, 2 failed, estimated 1.5 MB freed.");
}

TEST(CleanupReportMessage, SpeaksChineseToo) {
    const LanguageScope chinese(AppLanguage::chinese);
    EXPECT_EQ(reportOf(7, 5, 0).message(), "已处理 5 项，预计释放 1.5 MB。");
    EXPECT_EQ(reportOf(7, 5, 2).message(), "已处理 5 项，2 项失败，预计释放 1.5 MB。");
}

TEST(CleanupReportMessage, IsWordedWhenItIsAskedFor) {
    const CleanupReport report = reportOf(1, 1, 0);
    const std::string english = report.message();
    const LanguageScope chinese(AppLanguage::chinese);
    EXPECT_NE(report.message(), english);
}

TEST(CleanupReport, OfNothingSaysZero) {
    EXPECT_EQ(CleanupReport().message(), "Processed 0 items, estimated 0 KB freed.");
}

} // namespace
} // namespace vellmoor
