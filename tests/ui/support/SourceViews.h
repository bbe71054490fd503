#pragma once

#include <QQmlAbstractUrlInterceptor>
#include <QString>

namespace vellmoor {

/// Reads the window's views from the folder src/ui instead of from the program, so that a changed view is seen without
/// a build.
class SourceViews final : public QQmlAbstractUrlInterceptor {
public:
    explicit SourceViews(QString folder) : folder_(std::move(folder)) {}
    QUrl intercept(const QUrl& url, DataType type) override;

private:
    QString folder_;
};

} // namespace vellmoor
