// The theme's promise: what is written can be read, and what can be pressed can be seen, in every theme.
#include "Appearance.h"

#include <QColor>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QVariant>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace vellmoor {
namespace {

constexpr double forText = 4.5;
constexpr double forControls = 3.0;

const std::vector<std::string> tints{"cyan", "teal",   "mint",   "green", "orange", "red",
                                     "pink", "purple", "indigo", "blue",  "gray"};

struct Mode {
    bool dark;
    bool highContrast;
};

/// What is seen where `top` lies over `ground`.
QColor over(const QColor& top, const QColor& ground) {
    const double alpha = top.alphaF();
    const auto mixed = [&](double a, double b) { return static_cast<float>(a * alpha + b * (1 - alpha)); };
    return QColor::fromRgbF(mixed(top.redF(), ground.redF()), mixed(top.greenF(), ground.greenF()),
                            mixed(top.blueF(), ground.blueF()));
}

/// https://www.w3.org/TR/WCAG21/#dfn-relative-luminance
double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

class Contrast : public ::testing::TestWithParam<Mode> {
protected:
    Contrast() {
        engine_.addImportPath(QStringLiteral("qrc:/qt/qml"));
        appearance_.serve(engine_);
        QQmlComponent component(&engine_);
        component.setData(R"(import QtQml
            import Vellmoor.Theme
            QtObject {
                function role(name) { return Colors[name]; }
                function ink(name) { return Colors.ink(Colors[name]); }
                function tile(name) { return Colors.tile(Colors[name]); }
                function wash(name) { return Colors.wash(Colors[name]); }
            })",
                          QUrl());
        theme_.reset(component.create());
        EXPECT_NE(theme_, nullptr) << component.errorString().toStdString();
    }
    [[nodiscard]] QColor ask(const char* function, const std::string& name) const {
        QVariant answer;
        QMetaObject::invokeMethod(theme_.get(), function, Q_RETURN_ARG(QVariant, answer),
                                  Q_ARG(QVariant, QString::fromStdString(name)));
        return answer.value<QColor>();
    }
    [[nodiscard]] QColor role(const std::string& name) const { return ask("role", name); }
    /// Everything that text, symbols and controls stand on.
    [[nodiscard]] std::vector<QColor> surfaces() const {
        std::vector<QColor> found{role("sheet"), role("sheetRow"), role("popup"), role("panelGround")};
        for (const char* name : {"groundStart", "groundMiddle", "groundEnd"}) {
            const QColor ground = role(name);
            const QColor glass = over(role("glass"), ground);
            found.insert(found.end(), {ground, over(role("sidebar"), ground), glass});
            for (const char* lying : {"row", "rowHover", "field", "softButton"}) {
                found.push_back(over(role(lying), glass));
            }
            found.push_back(over(role("rowHover"), over(role("sidebar"), ground)));
        }
        return found;
    }

private:
    Appearance appearance_{{.dark = GetParam().dark, .highContrast = GetParam().highContrast}, ThemeChoice::system};
    QQmlEngine engine_;
    std::unique_ptr<QObject> theme_;
};

INSTANTIATE_TEST_SUITE_P(Themes, Contrast,
                         ::testing::Values(Mode{false, false}, Mode{true, false}, Mode{false, true}, Mode{true, true}),
                         [](const auto& theme) {
                             return std::string(theme.param.dark ? "Dark" : "Light") +
                                    (theme.param.highContrast ? "HighContrast" : "");
                         });

TEST_P(Contrast, TextReadsOnEverySurface) {
    for (const QColor& surface : surfaces()) {
        for (const char* text : {"vmText", "vmSecondaryText"}) {
            EXPECT_GE(contrast(role(text), surface), forText) << text << " on " << surface.name().toStdString();
        }
    }
}

TEST_P(Contrast, ColouredTextReadsOnItsOwnTile) {
    for (const std::string& tint : tints) {
        for (const QColor& surface : surfaces()) {
            EXPECT_GE(contrast(ask("ink", tint), surface), forText) << tint << " on " << surface.name().toStdString();
            EXPECT_GE(contrast(ask("ink", tint), over(ask("tile", tint), surface)), forText) << tint << " on its tile";
            EXPECT_GE(contrast(ask("ink", tint), over(ask("wash", tint), surface)), forText) << tint << " on its wash";
        }
    }
}

TEST_P(Contrast, SymbolsAreSeenOnTheirTiles) {
    for (const std::string& tint : tints) {
        for (const QColor& surface : surfaces()) {
            EXPECT_GE(contrast(role(tint), over(ask("tile", tint), surface)), forControls)
                << tint << " over " << surface.name().toStdString();
        }
    }
}

TEST_P(Contrast, LabelsReadOnTheMainButtons) {
    for (const char* fill : {"primary", "primaryHover", "danger", "dangerHover"}) {
        EXPECT_GE(contrast(role("onAccent"), role(fill)), forText) << fill;
    }
}

TEST_P(Contrast, ControlsAndTheFocusAreSeenOnEverySurface) {
    for (const QColor& surface : surfaces()) {
        for (const char* edge : {"edge", "focus"}) {
            EXPECT_GE(contrast(role(edge), surface), forControls) << edge << " on " << surface.name().toStdString();
        }
    }
    // The main buttons stand on panels and sheets.
    for (const QColor& surface : {role("sheet"), role("panelGround"), over(role("glass"), role("groundStart")),
                                  over(role("glass"), role("groundMiddle")), over(role("glass"), role("groundEnd"))}) {
        for (const char* fill : {"primary", "danger"}) {
            EXPECT_GE(contrast(role(fill), surface), forControls) << fill << " on " << surface.name().toStdString();
        }
    }
}

} // namespace
} // namespace vellmoor
