// Takes a picture of every page and sheet, in both languages, without a display.
//
//   vellmoor-pictures --out DIR              over scripted scan results
//   vellmoor-pictures --out DIR --home HOME  over the real engine on HOME, which it only reads
#include "PicturesOfHome.h"
#include "PicturesOfSamples.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QQuickStyle>

#include <cstdio>

int main(int argc, char* argv[]) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    QCommandLineParser parser;
    parser.addOption({QStringLiteral("out"), QStringLiteral("Folder for the pictures."), QStringLiteral("DIR")});
    parser.addOption({QStringLiteral("home"), QStringLiteral("Home folder to scan."), QStringLiteral("DIR")});
    parser.addHelpOption();
    parser.process(application);
    if (!parser.isSet(QStringLiteral("out"))) {
        std::fputs("vellmoor-pictures: --out DIR is missing\n", stderr);
        return 2;
    }
    const std::filesystem::path out = parser.value(QStringLiteral("out")).toStdString();
    std::filesystem::create_directories(out);
    const bool done = parser.isSet(QStringLiteral("home"))
                          ? vellmoor::takePicturesOfHome(parser.value(QStringLiteral("home")).toStdString(), out)
                          : vellmoor::takePicturesOfSamples(out);
    return done ? 0 : 1;
}
