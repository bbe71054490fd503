#include "look/LookFiles.h"

#include <QFileInfo>
#include <QSettings>
#include <QString>

#include <array>

namespace vellmoor {
namespace {

constexpr std::array lookFiles{"kdeglobals", "gtk-4.0/settings.ini", "gtk-3.0/settings.ini"};

QString place(const std::filesystem::path& config, const char* file) {
    return QString::fromStdString((config / file).string());
}

/// A window's ground of less than half the light is a dark one.
bool isDarkGround(const QStringList& redGreenBlue) {
    if (redGreenBlue.size() != 3) {
        return false;
    }
    constexpr double half = 127.5;
    return 0.2126 * redGreenBlue.at(0).toDouble() + 0.7152 * redGreenBlue.at(1).toDouble() +
               0.0722 * redGreenBlue.at(2).toDouble() <
           half;
}

void readKde(const QString& file, DesktopLook& look) {
    const QSettings settings(file, QSettings::IniFormat);
    const QString scheme = settings.value(QStringLiteral("General/ColorScheme")).toString();
    const QStringList ground = settings.value(QStringLiteral("Colors:Window/BackgroundNormal")).toStringList();
    look.dark =
        isDarkGround(ground) || (ground.isEmpty() && scheme.contains(QLatin1String("dark"), Qt::CaseInsensitive));
    look.highContrast = scheme.contains(QLatin1String("contrast"), Qt::CaseInsensitive);
}

void readGtk(const QString& file, DesktopLook& look) {
    const QSettings settings(file, QSettings::IniFormat);
    const QString theme = settings.value(QStringLiteral("Settings/gtk-theme-name")).toString();
    look.dark = settings.value(QStringLiteral("Settings/gtk-application-prefer-dark-theme")).toBool() ||
                theme.endsWith(QLatin1String("dark"), Qt::CaseInsensitive) ||
                theme.endsWith(QLatin1String("inverse"), Qt::CaseInsensitive);
    look.highContrast = theme.startsWith(QLatin1String("HighContrast"));
}

} // namespace

DesktopLook lookOfFiles(const std::filesystem::path& config) {
    DesktopLook look;
    // The first that exists: a desktop that writes one for others' programs keeps its own true.
    for (const char* file : lookFiles) {
        const QString path = place(config, file);
        if (QFileInfo::exists(path)) {
            file == lookFiles.front() ? readKde(path, look) : readGtk(path, look);
            break;
        }
    }
    return look;
}

QStringList watchedLookFiles(const std::filesystem::path& config) {
    QStringList found;
    for (const char* file : lookFiles) {
        // The folder too: the file may be replaced, or come later.
        for (const QString& path : {place(config, file), QFileInfo(place(config, file)).path()}) {
            if (QFileInfo::exists(path) && !found.contains(path)) {
                found << path;
            }
        }
    }
    return found;
}

} // namespace vellmoor
