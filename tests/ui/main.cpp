#include "OwnQt.h"

#include <QApplication>
#include <QQuickStyle>
#include <gtest/gtest.h>

int main(int argc, char* argv[]) {
    vellmoor::test::useOwnQt();
    qputenv("QT_QUICK_CONTROLS_HOVER_ENABLED", "1"); // the platform without a display would not have it
    ::testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    return RUN_ALL_TESTS();
}
