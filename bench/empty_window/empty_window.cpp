// The least that a QML window costs: an engine and a window of Vellmoor's size with nothing in it.
#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int argc, char* argv[]) {
    QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine;
    engine.load(QUrl(QStringLiteral("qrc:/qt/qml/EmptyWindow/EmptyWindow.qml")));
    return QGuiApplication::exec();
}
