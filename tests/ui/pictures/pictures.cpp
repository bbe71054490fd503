// Takes a picture of every page and sheet, in both languages, without a display.
//
//   vellmoor-pictures --out DIR              over scripted scan results
//   vellmoor-pictures --out DIR --home HOME  over the real engine on HOME, which it only reads
// With --size WIDTHxHEIGHT in a window of that size, with --theme, --text-scale and --high-contrast as the desktop
// would ask for it. QT_SCALE_FACTOR=2 draws at 200 %. VELLMOOR_QML_SOURCES=src/ui draws the views of that folder.
#include "PicturesOfHome.h"
#include "PicturesOfPages.h"
#include "PicturesOfSheets.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QQuickStyle>

#include <cstdio>
#include <map>
#include <optional>

namespace {

std::optional<QSize> sizeOf(const QString& text) {
    const QStringList parts = text.split(QLatin1Char('x'));
    const QSize size(parts.value(0).toInt(), parts.value(1).toInt());
    return parts.size() == 2 && !size.isEmpty() ? std::optional(size) : std::nullopt;
}

/// `only`: "results", "pages", "sheets" or "extremes"; `language`: "zh" or "en". Empty: all.
bool takePicturesOfSamples(const vellmoor::PictureFrame& wanted, const QString& only, const QString& language) {
    vellmoor::L::setTextSet(vellmoor::TextSet::Linux);
    const std::map<QString, bool (*)(const vellmoor::PictureFrame&)> sets{
        {QStringLiteral("extremes"), vellmoor::takePicturesOfExtremes},
        {QStringLiteral("pages"), vellmoor::takePicturesOfPages},
        {QStringLiteral("results"), vellmoor::takePicturesOfResults},
        {QStringLiteral("sheets"), vellmoor::takePicturesOfSheets}};
    bool done = true;
    for (const vellmoor::AppLanguage spoken : vellmoor::allAppLanguages) {
        if (!language.isEmpty() && vellmoor::appLanguage(language.toStdString()) != spoken) {
            continue;
        }
        vellmoor::PictureFrame frame = wanted;
        frame.language = spoken;
        for (const auto& [name, take] : sets) {
            // The results are among the pages.
            if (only == name || (only.isEmpty() && name != QStringLiteral("results"))) {
                done &= take(frame);
            }
        }
    }
    return done;
}

} // namespace

int main(int argc, char* argv[]) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    QCommandLineParser parser;
    parser.addOption({QStringLiteral("out"), QStringLiteral("Folder for the pictures."), QStringLiteral("DIR")});
    parser.addOption({QStringLiteral("home"), QStringLiteral("Home folder to scan."), QStringLiteral("DIR")});
    parser.addOption({QStringLiteral("size"), QStringLiteral("Size of the window."), QStringLiteral("WIDTHxHEIGHT"),
                      QStringLiteral("1080x720")});
    parser.addOption(
        {QStringLiteral("theme"), QStringLiteral("light or dark."), QStringLiteral("NAME"), QStringLiteral("light")});
    parser.addOption({QStringLiteral("text-scale"), QStringLiteral("What text is multiplied by, 0.8 to 2."),
                      QStringLiteral("FACTOR"), QStringLiteral("1")});
    parser.addOption({QStringLiteral("high-contrast"), QStringLiteral("The theme of high contrast.")});
    parser.addOption({QStringLiteral("language"), QStringLiteral("Only in one language."), QStringLiteral("zh|en")});
    parser.addOption({QStringLiteral("only"), QStringLiteral("Only the results of every module, and so on."),
                      QStringLiteral("results|pages|sheets|extremes")});
    parser.addHelpOption();
    parser.process(application);
    const std::optional<QSize> size = sizeOf(parser.value(QStringLiteral("size")));
    if (!parser.isSet(QStringLiteral("out")) || !size) {
        std::fputs("vellmoor-pictures: --out DIR is missing, or --size is not WIDTHxHEIGHT\n", stderr);
        return 2;
    }
    const std::filesystem::path out = parser.value(QStringLiteral("out")).toStdString();
    std::filesystem::create_directories(out);
    const vellmoor::PictureFrame frame{.folder = out,
                                       .size = *size,
                                       .theme = parser.value(QStringLiteral("theme")),
                                       .textScale = parser.value(QStringLiteral("text-scale")).toDouble(),
                                       .highContrast = parser.isSet(QStringLiteral("high-contrast"))};
    const bool done = parser.isSet(QStringLiteral("home"))
                          ? vellmoor::takePicturesOfHome(parser.value(QStringLiteral("home")).toStdString(), out)
                          : takePicturesOfSamples(frame, parser.value(QStringLiteral("only")),
                                                  parser.value(QStringLiteral("language")));
    return done ? 0 : 1;
}
