#include "Question.h"

#include "QtText.h"

#include <algorithm>
#include <utility>

namespace vellmoor {
namespace {

template <class Record>
std::optional<Record> recordAt(const std::vector<Record>& records, int row) {
    const bool inside = row >= 0 && row < static_cast<int>(records.size());
    return inside ? std::optional(records[static_cast<std::size_t>(row)]) : std::nullopt;
}

} // namespace

Question::Question(CleanerStore& store, QObject* parent) : QObject(parent), store_(store) {
    connect(&store_, &CleanerStore::memoryAppsChanged, this, &Question::checkApp);
    connect(&store_, &CleanerStore::startupItemsChanged, this, &Question::checkItem);
    connect(&store_, &CleanerStore::endOffered, this, [this](const MemoryApp& app) {
        waiting_.push_back(app);
        askNext();
    });
}

QString Question::kind() const {
    if (app_) {
        return farewell_ == Farewell::Quit ? QStringLiteral("quit") : QStringLiteral("end");
    }
    if (item_) {
        return item_->isEnabled ? QStringLiteral("disable") : QStringLiteral("restore");
    }
    return {};
}

QString Question::name() const {
    return app_ ? toQt(app_->name) : item_ ? toQt(item_->name) : QString();
}

void Question::ask(std::optional<MemoryApp> app, Farewell farewell, std::optional<StartupItem> item) {
    app_ = std::move(app);
    item_ = std::move(item);
    farewell_ = farewell;
    ++number_;
    Q_EMIT changed();
}

void Question::askNext() {
    if (!app_ && !item_ && !waiting_.empty()) {
        MemoryApp app = std::move(waiting_.front());
        waiting_.pop_front();
        ask(std::move(app), Farewell::End, std::nullopt);
    }
}

void Question::askQuit(int row) {
    if (auto app = recordAt(store_.memoryApps(), row)) {
        ask(std::move(app), Farewell::Quit, std::nullopt);
    }
}

void Question::askStartup(int row) {
    if (auto item = recordAt(store_.startupItems(), row)) {
        ask(std::nullopt, Farewell::Quit, std::move(item));
    }
}

void Question::accept(int number) {
    if (number != number_) {
        return;
    }
    const Farewell farewell = farewell_;
    const std::optional<MemoryApp> app = std::exchange(app_, std::nullopt);
    const std::optional<StartupItem> item = std::exchange(item_, std::nullopt);
    Q_EMIT changed();
    if (item) {
        Q_EMIT switchAgreed(*item);
    } else if (app && farewell == Farewell::End) {
        store_.endMemoryApp(*app);
    } else if (app) {
        store_.quitMemoryApp(*app);
    }
    askNext();
}

void Question::drop(int number) {
    if (number == number_ && (app_ || item_)) {
        ask(std::nullopt, Farewell::Quit, std::nullopt);
        askNext();
    }
}

void Question::checkApp() {
    const auto& apps = store_.memoryApps();
    if (app_ && std::ranges::none_of(apps, [this](const MemoryApp& now) { return app_->isStill(now); })) {
        store_.say(L::tr("%@ 已不在列表中。", app_->name));
        drop(number_);
    }
}

void Question::checkItem() {
    const auto isIt = [this](const StartupItem& now) {
        return now.plistURL == item_->plistURL && now.isEnabled == item_->isEnabled;
    };
    if (item_ && std::ranges::none_of(store_.startupItems(), isIt)) {
        store_.say(L::tr("%@ 已不在列表中。", item_->name));
        drop(number_);
    }
}

} // namespace vellmoor
