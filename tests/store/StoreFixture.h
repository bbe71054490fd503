#pragma once

#include "CleanerStore.h"
#include "ScriptedCleanerService.h"

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>

namespace vellmoor {

/// A row with one path per size; row and paths are ticked or not alike.
CleanupItem row(CleanerModule module, const std::string& title, std::initializer_list<std::int64_t> sizes,
                bool selected = true);
PermissionHint hint(const std::string& title, bool granted, std::vector<CleanerModule> affected);
ScanSnapshot snapshotOf(std::vector<CleanupItem> items);
std::vector<std::string> titles(const std::vector<CleanupItem>& items);

/// A store over a scripted engine and a clock that stands still. English, Mac wordings.
class StoreFixture : public ::testing::Test {
protected:
    StoreFixture();

    /// Handles events until `done`; fails after half a minute.
    static void processUntil(const std::function<bool()>& done);
    /// Handles what is queued now.
    static void processQueued();
    /// Waits until all workers but `remaining` have ended; what they posted waits to be handled.
    void awaitPosts(long remaining = 0) const;
    /// The same, and handles it.
    void awaitWorkers(long remaining = 0) const;

    /// The next scans answer `snapshot` at once.
    void answer(const ScanSnapshot& snapshot);
    /// Scans `module` with `snapshot` as the engine's answer and waits for the end.
    void scanned(CleanerModule module, const ScanSnapshot& snapshot);
    /// The next scan comes to `gate`, then answers `snapshot`, cancelled or not.
    void answerBehind(const std::shared_ptr<Gate>& gate, const ScanSnapshot& snapshot);
    /// Makes the store's next scan stand at a gate and waits until it does.
    std::shared_ptr<Gate> startGatedScan(CleanerModule module, const ScanSnapshot& snapshot, bool clearsReport = true);

    TimePoint now{std::chrono::seconds(1'700'000'000)};
    std::shared_ptr<ScriptedCleanerService> service = std::make_shared<ScriptedCleanerService>();
    std::unique_ptr<CleanerStore> store;
};

} // namespace vellmoor
