// Cleaning, login items, quitting an application: the engine works aside, its outcome is shown, the page is read again.
#include "StoreState.h"
#include "texts/L.h"

namespace vellmoor {
namespace {

std::string_view quitText(QuitOutcome outcome) {
    switch (outcome) {
    case QuitOutcome::Requested:
        return "已请求退出 %@，稍后刷新内存状态。";
    case QuitOutcome::NoResponse:
        return "%@ 未响应退出请求，可在活动监视器中结束。";
    case QuitOutcome::NotRunning:
    case QuitOutcome::CannotAsk: // has a question of its own
        break;
    }
    return "%@ 当前未运行。";
}

} // namespace

void CleanerStore::cleanSelected(CleanerModule module) {
    if (state_->isCleaning || ticks(module).selectedRows == 0) {
        return;
    }
    // Shared: the action is copied on its way to the worker.
    const auto chosen = std::make_shared<const std::vector<CleanupItem>>(selectedItems(module));
    state_->startLongAction(
        L::tr("正在清理选中项目..."), module,
        [chosen](CleanerService& engine, const CleanProgressCallback& progress, const CancelToken& stop) {
            return State::ActionOutcome{{}, engine.clean(*chosen, progress, stop), false};
        });
}

void CleanerStore::stopCleaning() {
    if (state_->cleanToken) {
        state_->cleanToken->cancel();
    }
}

void CleanerStore::setStartupItem(const StartupItem& item, bool enabled) {
    state_->requireOwnThread();
    if (state_->isScanning || state_->isCleaning) {
        return;
    }
    const std::string status =
        enabled ? L::tr("正在恢复 %@ 的启动项...", item.name) : L::tr("正在禁用 %@ 的启动项...", item.name);
    state_->startAction(status, CleanerModule::performance, [item, enabled](CleanerService& engine) {
        const StartupActionResult result = enabled ? engine.enableStartupItem(item) : engine.disableStartupItem(item);
        return State::ActionOutcome{result.message, {}, !result.succeeded};
    });
}

void CleanerStore::quitMemoryApp(const MemoryApp& app) {
    state_->startFarewell(app, &CleanerService::requestQuit);
}

void CleanerStore::endMemoryApp(const MemoryApp& app) {
    state_->startFarewell(app, &CleanerService::endApplication);
}

void CleanerStore::say(const std::string& message) {
    state_->requireOwnThread();
    state_->set(state_->statusMessage, message, State::Status);
}

void CleanerStore::State::startLongAction(const std::string& status, std::optional<CleanerModule> rescanned,
                                          const LongAction& action) {
    const auto stop = std::make_shared<CancelToken>();
    cleanToken = stop;
    startAction(status, rescanned, [this, action, stop, out = workers](CleanerService& engine) {
        const auto tell = [&](const CleanProgress& progress) {
            out->post([this, progress] { set(cleanProgress, std::optional(progress), Advance); });
        };
        return action(engine, tell, *stop);
    });
}

void CleanerStore::State::startAction(const std::string& status, std::optional<CleanerModule> rescanned,
                                      const Action& action) {
    const Update update(*this);
    set(isCleaning, true, Cleaning);
    set(statusMessage, status, Status);
    set(actionFailure, {}, ActionFailure);
    set(latestRestore, {}, Restore);
    // `this` is used in posted jobs only: they run on the store's thread, and not after its death.
    const auto actAndPost = [this, rescanned, action, engine = service, out = workers] {
        ActionOutcome outcome;
        try {
            outcome = action(*engine);
        } catch (const std::exception& error) {
            outcome = {error.what(), {}, true}; // the engine does not throw; memory can still run out
        }
        out->post([this, rescanned, ended = std::make_shared<ActionOutcome>(std::move(outcome))] {
            endAction(std::move(*ended), rescanned);
        });
        out->post(
            [this, past = std::make_shared<History>(engine->history())] { set(history, std::move(*past), Past); });
    };
    try {
        workers->start(actAndPost);
    } catch (const std::exception& noThread) {
        endAction({noThread.what(), {}, true}, rescanned);
    }
}

void CleanerStore::State::endAction(ActionOutcome outcome, std::optional<CleanerModule> rescanned) {
    {
        const Update update(*this);
        const std::string message = outcome.report    ? outcome.report->message()
                                    : outcome.restore ? outcome.restore->message()
                                                      : outcome.message;
        if (outcome.report) {
            set(latestReport, std::move(outcome.report), Report);
        }
        if (outcome.restore) {
            set(latestRestore, std::move(outcome.restore), Restore);
        }
        set(actionFailure, outcome.failed ? message : std::string(), ActionFailure);
        set(isCleaning, false, Cleaning);
        set(cleanProgress, {}, Advance);
        set(statusMessage, message, Status);
    }
    if (rescanned) {
        store.scan(*rescanned, false);
    }
}

void CleanerStore::State::startFarewell(const MemoryApp& app, Farewell farewell) {
    requireOwnThread();
    const auto askAndPost = [this, app, farewell, engine = service, out = workers] {
        const QuitOutcome outcome = (*engine.*farewell)(app);
        out->post([this, app, outcome] { showQuitOutcome(app, outcome); });
    };
    try {
        workers->start(askAndPost);
    } catch (const std::exception& noThread) {
        set<std::string>(statusMessage, noThread.what(), Status);
    }
}

void CleanerStore::State::showQuitOutcome(const MemoryApp& app, QuitOutcome outcome) {
    if (outcome == QuitOutcome::CannotAsk) {
        Q_EMIT store.endOffered(app);
        return;
    }
    const std::string message = L::tr(quitText(outcome), app.name);
    answer(message, outcome != QuitOutcome::Requested);
    memoryRefresh.start();
}

void CleanerStore::State::answer(const std::string& message, bool failed) {
    set(statusMessage, message, Status);
    Q_EMIT store.answered(QString::fromStdString(message), failed);
}

void CleanerStore::State::refreshMemoryAfterAppChange() {
    if (activeModule == CleanerModule::memoryOptimization && !isCleaning) {
        store.scan(CleanerModule::memoryOptimization, true);
    }
}

} // namespace vellmoor
