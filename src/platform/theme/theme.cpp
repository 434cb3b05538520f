// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/theme/theme.h"

#include "platform/theme/theme_style.h"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFontDatabase>
#include <QIconEngine>
#include <QPainter>
#include <QPointer>
#include <QSvgRenderer>
#include <QTimer>

#include <algorithm>
#include <cmath>

// The resources of a static library have to be initialised, outside any namespace.
static void initThemeResource() { Q_INIT_RESOURCE(theme); }

namespace {

constexpr double DisabledOpacity = 0.5;

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

QColor blend(const QColor& under, const QColor& over, double share) {
    const auto mix = [share](int a, int b) { return int(std::lround(a + (b - a) * share)); };
    return QColor(mix(under.red(), over.red()), mix(under.green(), over.green()),
                  mix(under.blue(), over.blue()));
}

QPalette themePalette(const ThemeColours& c) {
    QPalette palette;
    const struct {
        QPalette::ColorRole role;
        QColor colour;
    } roles[] = {
        {QPalette::Window, c.window},
        {QPalette::WindowText, c.text},
        {QPalette::Base, c.base},
        {QPalette::AlternateBase, c.alternate},
        {QPalette::Text, c.text},
        {QPalette::PlaceholderText, c.muted},
        {QPalette::Button, c.button},
        {QPalette::ButtonText, c.text},
        {QPalette::BrightText, c.accentText},
        {QPalette::Highlight, c.accent},
        {QPalette::HighlightedText, c.accentText},
        {QPalette::Link, c.accent},
        {QPalette::LinkVisited, c.muted},
        {QPalette::ToolTipBase, c.base},
        {QPalette::ToolTipText, c.text},
        {QPalette::Light, c.base},
        {QPalette::Midlight, c.button},
        {QPalette::Mid, c.line},
        {QPalette::Dark, c.line},
        {QPalette::Shadow, c.line},
    };
    for (const auto& [role, colour] : roles) palette.setColor(role, colour);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, c.muted);
    }
    palette.setColor(QPalette::Disabled, QPalette::Base, c.window);
    palette.setColor(QPalette::Disabled, QPalette::Button, c.window);
    return palette;
}

namespace {

bool desktopIsDark() {
    const QByteArray wanted = qgetenv("LORVANITE_THEME");
    if (wanted == "light" || wanted == "dark") return wanted == "dark";
    // Without its own palette the application has the desktop's.
    QApplication::setPalette(QPalette());
    return QApplication::palette().color(QPalette::Window).lightness() < 128;
}

void applyColours(bool dark) {
    QApplication::setPalette(themePalette(themeColours(dark)));
    // A new style is applied to all existing widgets.
    QApplication::setStyle(new ThemeStyle);
}

// The portable folder contains the fonts of charts and windows.
void addOwnFonts() {
    const QDir folder(QCoreApplication::applicationDirPath() + QStringLiteral("/fonts"));
    const QFileInfoList fonts = folder.entryInfoList(QDir::Files);
    for (const QFileInfo& font : fonts) QFontDatabase::addApplicationFont(font.filePath());
    if (!fonts.isEmpty())
        QFont::insertSubstitution(QStringLiteral("Arial"), QStringLiteral("Liberation Sans"));
}

void applyFont(QApplication& app) {
    addOwnFonts();
    QFont font = app.font();
    const QString wanted = QStringLiteral("Inter");
    // hasFamily() would first ask for what else the name stands for.
    if (QFontDatabase::families().contains(wanted)) font.setFamily(wanted);
    font.setPointSize(10);
    app.setFont(font);
}

// Changes the theme when the desktop changes between light and dark.
class DesktopWatch : public QObject {
public:
    explicit DesktopWatch(QApplication& app) : QObject(&app) {
        m_turn.setSingleShot(true);
        connect(&m_turn, &QTimer::timeout, this, [] {
            const bool shown =
                themeColours(QApplication::palette()).window == themeColours(true).window;
            const bool wanted = desktopIsDark();
            if (wanted == shown) {
                QApplication::setPalette(themePalette(themeColours(wanted)));
            } else {
                applyColours(wanted);
            }
        });
        app.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        // Every window gets this event; handling it once is enough.
        if (event->type() == QEvent::ThemeChange) m_turn.start(0);
        return QObject::eventFilter(object, event);
    }

private:
    QTimer m_turn;
};

// Draws an icon in the current size and colour.
class ThemedIcon : public QIconEngine {
public:
    explicit ThemedIcon(QByteArray svg) : m_svg(std::move(svg)) {}

    QIconEngine* clone() const override { return new ThemedIcon(m_svg); }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const ThemeColours& colours = themeColours(QApplication::palette());
        const QColor ink = mode == QIcon::Disabled   ? colours.muted
                           : mode == QIcon::Selected ? colours.accentText
                                                     : colours.accent;
        QByteArray svg = m_svg;
        svg.replace("currentColor", ink.name().toLatin1());
        const double opacity = painter->opacity();
        if (mode == QIcon::Disabled) painter->setOpacity(opacity * DisabledOpacity);
        QSvgRenderer(svg).render(painter, rect);
        painter->setOpacity(opacity);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        // A button in a small window may have no room.
        if (size.isEmpty()) return {};
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }

private:
    QByteArray m_svg;
};

void loadIcons() {
    static const bool loaded = [] {
        initThemeResource();
        return true;
    }();
    Q_UNUSED(loaded);
}

}  // namespace

void applyTheme(QApplication& app) {
    applyFont(app);
    applyColours(desktopIsDark());
    static QPointer<DesktopWatch> watch;
    if (!watch) watch = new DesktopWatch(app);
}

QIcon themedIcon(const QString& name) {
    loadIcons();
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QIcon(new ThemedIcon(file.readAll()));
}
