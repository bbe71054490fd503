// Switching login items off and on: what is asked, what is said, what is read again.
#include "StoreActionsFixture.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace vellmoor {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(StoreActions, DisablingSaysSoAndAsksTheEngine) {
    const auto gate = startGatedDisable({true, "Disabled Updater from launching at login."});
    EXPECT_TRUE(store->isCleaning());
    EXPECT_EQ(store->statusMessage(), "Disabling startup item for Updater...");
    gate->open();
    awaitEnd();
    ASSERT_EQ(service->disables().size(), 1U);
    EXPECT_EQ(service->disables().front().name, "Updater");
    EXPECT_THAT(service->enables(), IsEmpty());
}

TEST_F(StoreActions, RestoringSaysSoAndAsksTheEngine) {
    const auto statuses = statusesFromNow();
    store->setStartupItem(agent("Updater"), true);
    awaitEnd();
    EXPECT_EQ(statuses->front(), "Restoring startup item for Updater...");
    ASSERT_EQ(service->enables().size(), 1U);
    EXPECT_EQ(service->enables().front().name, "Updater");
    EXPECT_THAT(service->disables(), IsEmpty());
}

TEST_F(StoreActions, ALoginItemsResultIsShownWhetherItSucceededOrNot) {
    for (const bool succeeded : {true, false}) {
        const auto statuses = statusesFromNow();
        const auto gate = startGatedDisable({succeeded, "What the engine says."});
        gate->open();
        awaitEnd();
        EXPECT_THAT(*statuses, Contains("What the engine says."));
    }
}

TEST_F(StoreActions, AFailedLoginItemChangeIsSaidAfterTheRescanToo) {
    startGatedDisable({false, "Failed to disable Updater: Permission denied"})->open();
    awaitEnd();
    EXPECT_FALSE(store->isScanning());
    EXPECT_EQ(store->actionFailure(), "Failed to disable Updater: Permission denied");
}

TEST_F(StoreActions, ALoginItemChangeThatRunsOutOfMemoryIsAFailure) {
    service->onEnable([](const StartupItem&) -> StartupActionResult { throw std::runtime_error("out of memory"); });
    store->setStartupItem(agent("Updater"), true);
    awaitEnd();
    EXPECT_EQ(store->actionFailure(), "out of memory");
}

TEST_F(StoreActions, AFailureIsGoneWhenTheUserGoesOn) {
    const auto fail = [&] {
        startGatedDisable({false, "No."})->open();
        awaitEnd();
        ASSERT_EQ(store->actionFailure(), "No.");
    };
    fail();
    startGatedDisable({true, "Done."})->open();
    awaitEnd();
    EXPECT_EQ(store->actionFailure(), "");
    fail();
    store->show(CleanerModule::trash);
    EXPECT_EQ(store->actionFailure(), "");
    fail();
    store->scan(CleanerModule::performance, true);
    EXPECT_EQ(store->actionFailure(), "");
    awaitEnd();
    fail();
    store->resetForLanguageChange();
    EXPECT_EQ(store->actionFailure(), "");
}

TEST_F(StoreActions, ALoginItemChangeScansAndShowsPerformanceWhateverWasActive) {
    showTrash();
    answer(snapshotOf({row(CleanerModule::performance, "Agents", {1})}));
    store->setStartupItem(agent("Updater"), true);
    awaitEnd();
    EXPECT_EQ(service->scans().back(), CleanerModule::performance);
    EXPECT_EQ(store->activeModule(), CleanerModule::performance);
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Agents"));
}

TEST_F(StoreActions, ALoginItemChangeKeepsTheRowsOfTheModuleThatWasShown) {
    showTrash();
    store->setItemSelected(0, false);
    store->setStartupItem(agent("Updater"), true);
    awaitEnd();
    store->show(CleanerModule::trash);
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Trash"));
    EXPECT_EQ(store->selectedBytes(CleanerModule::trash), 0);
}

TEST_F(StoreActions, ALoginItemChangeIsIgnoredWhileACleanRuns) {
    showTrash();
    const auto gate = startGatedClean();
    store->setStartupItem(agent("Updater"), false);
    EXPECT_EQ(store->statusMessage(), "Cleaning selected items...");
    gate->open();
    awaitEnd();
    EXPECT_THAT(service->disables(), IsEmpty());
}

TEST_F(StoreActions, ALoginItemChangeIsIgnoredWhileAScanRuns) {
    const auto gate = startGatedScan(CleanerModule::performance, {});
    store->setStartupItem(agent("Updater"), true);
    EXPECT_FALSE(store->isCleaning());
    gate->open();
    awaitEnd();
    EXPECT_THAT(service->enables(), IsEmpty());
}

TEST_F(StoreActions, ACleanIsIgnoredWhileALoginItemChanges) {
    showTrash();
    const auto gate = startGatedDisable({true, "Disabled."});
    store->cleanSelected(CleanerModule::trash);
    gate->open();
    awaitEnd();
    EXPECT_THAT(service->cleans(), IsEmpty());
}

} // namespace
} // namespace vellmoor
