#include "Decision.h"

#include "QtText.h"
#include "texts/ByteCount.h"

#include <algorithm>
#include <utility>

namespace vellmoor {

const HistoryClean* Decision::clean() const {
    const auto& cleans = store_.history().cleans;
    const auto found = std::ranges::find(cleans, clean_, &HistoryClean::id);
    return found == cleans.end() ? nullptr : &*found;
}

QString Decision::title() const {
    if (kind_ == QLatin1String("finish")) {
        return localised("完成未完成的清理？");
    }
    return kind_ == QLatin1String("forGood") ? localised("永久删除这些项目？") : localised("清除历史记录？");
}

QString Decision::message() const {
    const HistoryClean* asked = clean();
    if (kind_ == QLatin1String("finish") && asked != nullptr) {
        return localised("将处理当时勾选且未更改的其余项目：%d 项，%@。", groupedText(asked->openCount).toStdString(),
                         byteCountText(asked->openBytes));
    }
    if (kind_ == QLatin1String("forGood") && asked != nullptr) {
        return localised("此次清理移到废纸篓的 %d 项（%@）将被永久删除，无法恢复。",
                         groupedText(asked->trashedCount).toStdString(), byteCountText(asked->trashedBytes));
    }
    return localised("之后无法再从 Vellmoor 放回这些清理的项目；废纸篓中的文件不受影响。");
}

QString Decision::action() const {
    if (kind_ == QLatin1String("finish")) {
        return localised("完成清理");
    }
    return kind_ == QLatin1String("forGood") ? localised("永久删除") : localised("清除历史记录");
}

void Decision::ask(const QString& kind, const QString& clean) {
    kind_ = kind;
    clean_ = clean.toStdString();
    Q_EMIT changed();
}

void Decision::askFinish(const QString& clean) {
    ask(QStringLiteral("finish"), clean);
}

void Decision::askForGood(const QString& clean) {
    ask(QStringLiteral("forGood"), clean);
}

void Decision::askForget() {
    ask(QStringLiteral("forget"), {});
}

void Decision::accept() {
    const QString kind = std::exchange(kind_, {});
    const std::string clean = std::exchange(clean_, {});
    if (kind == QLatin1String("finish")) {
        store_.finishClean(clean);
    } else if (kind == QLatin1String("forGood")) {
        store_.removeForGood(clean);
    } else if (kind == QLatin1String("forget")) {
        store_.forgetHistory();
    }
    Q_EMIT changed();
}

void Decision::drop() {
    if (!kind_.isEmpty()) {
        ask({}, {});
    }
}

} // namespace vellmoor
