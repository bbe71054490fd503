#include "Appearance.h"

#include <QEvent>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QJSEngine>
#include <QQmlEngine>
#include <QVariant>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

namespace vellmoor {
namespace {

constexpr auto appearanceProperty = "vellmoorAppearance";

constexpr double smallestScale = 0.8;
constexpr double largestScale = 2.0;

constexpr std::array<std::pair<ThemeChoice, QLatin1String>, 3> choices{{{ThemeChoice::system, QLatin1String("system")},
                                                                        {ThemeChoice::light, QLatin1String("light")},
                                                                        {ThemeChoice::dark, QLatin1String("dark")}}};

/// Whether figures in it stand under each other, and nothing trembles while they change.
bool hasTabularDigits(const QString& family) {
    const QFontMetricsF metrics((QFont(family)));
    constexpr std::u16string_view digits = u"0123456789";
    return std::ranges::all_of(digits, [&](char16_t digit) {
        return std::abs(metrics.horizontalAdvance(QChar(digit)) - metrics.horizontalAdvance(QLatin1Char('0'))) < 0.01;
    });
}

/// The desktop's font; without a desktop (or with its last resort) the best interface font that is installed.
QString interfaceFamily() {
    const QString wanted = QFontInfo(QGuiApplication::font()).family();
    if (!wanted.startsWith(QStringLiteral("DejaVu")) && !wanted.isEmpty()) {
        return wanted;
    }
    for (const auto* name : {"Inter", "Noto Sans", "Cantarell", "Ubuntu", "Source Sans 3", "Noto Sans CJK SC"}) {
        const QLatin1String family(name);
        if (QFontDatabase::hasFamily(family) && hasTabularDigits(family)) {
            return family;
        }
    }
    return wanted;
}

double interfaceScale(const DesktopLook& look) {
    const double points = QGuiApplication::font().pointSizeF();
    const double usual = std::clamp(points, look.smallestUsualPoints, look.largestUsualPoints);
    const double byFont = points > 0 ? points / usual : 1.0;
    return std::clamp(byFont * look.textScale, smallestScale, largestScale);
}

} // namespace

QString rawValue(ThemeChoice choice) {
    return choices.at(static_cast<std::size_t>(choice)).second;
}

std::optional<ThemeChoice> themeChoice(const QString& rawValue) {
    const auto* const found = std::ranges::find(choices, rawValue, [](const auto& choice) { return choice.second; });
    return found == choices.end() ? std::nullopt : std::optional(found->first);
}

Appearance::Appearance(const DesktopLook& look, ThemeChoice choice, QObject* parent)
    : QObject(parent),
      look_(look),
      choice_(choice) {
    readFont();
    qGuiApp->installEventFilter(this);
}

Appearance* Appearance::create(QQmlEngine* engine, QJSEngine*) {
    auto* served = qobject_cast<Appearance*>(engine->property(appearanceProperty).value<QObject*>());
    QJSEngine::setObjectOwnership(served, QJSEngine::CppOwnership);
    return served;
}

void Appearance::serve(QQmlEngine& engine) {
    engine.setProperty(appearanceProperty, QVariant::fromValue<QObject*>(this));
}

void Appearance::follow(const DesktopLook& look) {
    if (look_ != look) {
        look_ = look;
        readFont();
        Q_EMIT changed();
    }
}

bool Appearance::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qGuiApp && event->type() == QEvent::ApplicationFontChange) {
        readFont();
        Q_EMIT changed();
    }
    return QObject::eventFilter(watched, event);
}

void Appearance::readFont() {
    fontFamily_.reset();
    fontScale_ = interfaceScale(look_);
}

QString Appearance::fontFamily() const {
    if (!fontFamily_) {
        fontFamily_ = interfaceFamily();
    }
    return *fontFamily_;
}

bool Appearance::dark() const {
    return choice_ == ThemeChoice::system ? look_.dark : choice_ == ThemeChoice::dark;
}

void Appearance::setChoice(const QString& choice) {
    const std::optional<ThemeChoice> wanted = themeChoice(choice);
    if (wanted && *wanted != choice_) {
        choice_ = *wanted;
        Q_EMIT choiceChanged();
        Q_EMIT changed();
    }
}

QColor Appearance::groundStart() const {
    if (highContrast()) {
        return dark() ? QColor(0, 0, 0) : QColor(255, 255, 255);
    }
    return dark() ? QColor(0x10, 0x1c, 0x28) : QColor(0xe3, 0xf2, 0xfb);
}

QColor Appearance::groundMiddle() const {
    if (highContrast()) {
        return groundStart();
    }
    return dark() ? QColor(0x13, 0x19, 0x22) : QColor(0xf8, 0xfa, 0xfc);
}

QColor Appearance::groundEnd() const {
    if (highContrast()) {
        return groundStart();
    }
    return dark() ? QColor(0x1b, 0x17, 0x22) : QColor(0xfb, 0xec, 0xf1);
}

} // namespace vellmoor
