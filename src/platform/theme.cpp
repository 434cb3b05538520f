#include "platform/theme.h"

#include <QApplication>

#include <algorithm>
#include <cmath>

namespace {

ThemeColours light() {
    return {.window = 0xF4F1EA,
            .base = 0xFFFFFF,
            .alternate = 0xFAF8F3,
            .text = 0x2B2A27,
            .muted = 0x6B675E,
            .button = 0xFBF9F4,
            .line = 0xD8D2C3,
            .accent = 0x2F6B5E,
            .accentText = 0xFFFFFF,
            .head = 0xEEE8D8,
            .bar = 0xEBE7DC};
}

ThemeColours dark() {
    return {.window = 0x262522,
            .base = 0x1E1D1B,
            .alternate = 0x232220,
            .text = 0xECE8DF,
            .muted = 0xA9A398,
            .button = 0x33312D,
            .line = 0x4A473F,
            .accent = 0x6FB7A6,
            .accentText = 0x10201C,
            .head = 0x3A372F,
            .bar = 0x2F2D28};
}

double luminance(const QColor& colour) {
    const auto part = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) +
           0.0722 * part(colour.blueF());
}

}  // namespace

const ThemeColours& themeColours(bool dark_) {
    static const ThemeColours lightColours = light();
    static const ThemeColours darkColours = dark();
    return dark_ ? darkColours : lightColours;
}

const ThemeColours& themeColours(const QPalette& palette) {
    return themeColours(palette.color(QPalette::Window).lightness() < 128);
}

double contrast(const QColor& a, const QColor& b) {
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

void applyTheme(QApplication&) { QApplication::setStyle(QStringLiteral("Fusion")); }

QIcon themedIcon(const QString& name) { return QIcon(QStringLiteral(":/icons/%1.svg").arg(name)); }
