#include "OwnQt.h"
#include "ThrowAwayHome.h"

#include <QGuiApplication>
#include <QQuickStyle>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    const vellmoor::journey::ThrowAwayHome home;
    vellmoor::test::useOwnQt();
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    const QGuiApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
