#include "ThrowAwayHome.h"

#include <QGuiApplication>
#include <QQuickStyle>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    const vellmoor::journey::ThrowAwayHome home;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    const QGuiApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
