// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// How controls look while they are used.
#include "platform/theme/theme.h"
#include "support/registry.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QHoverEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSlider>
#include <QSpinBox>
#include <QStyle>
#include <QStyleOptionTitleBar>
#include <QTabBar>
#include <QTest>
#include <QToolButton>
#include <QToolTip>

namespace {

QRect titleButton(const QMdiSubWindow& window, QStyle::SubControl button) {
    QStyleOptionTitleBar bar;
    bar.initFrom(&window);
    bar.rect = QRect(0, 0, window.width(), window.style()->pixelMetric(QStyle::PM_TitleBarHeight));
    bar.titleBarFlags = window.windowFlags();
    bar.titleBarState = int(window.windowState());
    bar.subControls = QStyle::SC_All;
    return window.style()->subControlRect(QStyle::CC_TitleBar, &bar, button, &window);
}

}  // namespace

class TestThemeControls : public QObject {
    Q_OBJECT

    const ThemeColours& m_colours = themeColours(true);

private Q_SLOTS:
    void initTestCase() {
        qputenv("LORVANITE_THEME", "dark");
        applyTheme(*qobject_cast<QApplication*>(QCoreApplication::instance()));
        QCoreApplication::processEvents();
    }
    void cleanupTestCase() { qunsetenv("LORVANITE_THEME"); }

    void coloursOfTheDesktopDoNotStay() {
        QPalette palette = QApplication::palette();
        palette.setColor(QPalette::Highlight, Qt::red);
        QApplication::setPalette(palette);
        QWidget window;
        window.show();
        QEvent change(QEvent::ThemeChange);
        QCoreApplication::sendEvent(&window, &change);
        QTRY_COMPARE(QApplication::palette().color(QPalette::Highlight), m_colours.accent);
    }

    void toolTipIsAFramedBox() {
        QWidget window;
        window.resize(300, 200);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QToolTip::showText(window.mapToGlobal(QPoint(20, 20)), QStringLiteral("Silent Night"),
                           &window);
        QWidget* tip = nullptr;
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->inherits("QTipLabel") && widget->isVisible()) tip = widget;
        QVERIFY(tip);
        const QImage image = tip->grab().toImage();
        QCOMPARE(image.pixelColor(0, image.height() / 2), m_colours.line);
        QCOMPARE(image.pixelColor(2, 2), m_colours.base);
        QToolTip::hideText();
    }

    void controlsThatCannotBeUsedAreMuted() {
        QWidget window;
        window.resize(300, 200);
        QCheckBox check(QStringLiteral("Show"), &window);
        check.setChecked(true);
        check.setGeometry(10, 10, 120, 28);
        QComboBox list(&window);
        list.addItem(QStringLiteral("Piano"));
        list.setGeometry(10, 50, 120, 28);
        QSpinBox number(&window);
        number.setRange(0, 10);
        number.setValue(5);
        number.setGeometry(10, 90, 120, 28);
        QSlider slider(Qt::Horizontal, &window);
        slider.setGeometry(10, 130, 120, 28);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const QList<QWidget*> controls = {&check, &list, &number, &slider};
        const auto pixels = [](QWidget* control, const QColor& colour) {
            const QImage image = control->grab().toImage();
            int count = 0;
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x) count += image.pixelColor(x, y) == colour;
            return count;
        };
        QVERIFY(pixels(&check, m_colours.accent) > 50);
        for (QWidget* control : controls) control->setEnabled(false);
        QVERIFY(pixels(&check, m_colours.muted) > 50);
        for (QWidget* control : controls) QCOMPARE(pixels(control, m_colours.accent), 0);
        // Fields lie flat on the window.
        for (QWidget* field : {static_cast<QWidget*>(&list), static_cast<QWidget*>(&number)})
            QVERIFY(pixels(field, m_colours.window) > field->width() * field->height() / 2);
    }

    void toolButtonShowsItsGroundOnlyInUse() {
        QWidget window;
        window.resize(300, 200);
        QToolButton button(&window);
        button.setAutoRaise(true);
        button.setGeometry(150, 100, 40, 40);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QTest::mouseMove(&window, QPoint(2, 2));
        const auto ground = [&] { return button.grab().toImage().pixelColor(20, 6); };
        QCOMPARE(ground(), m_colours.window);
        QTest::mousePress(&button, Qt::LeftButton);
        QCOMPARE(ground(), blend(m_colours.window, m_colours.accent, 0.2));
        QTest::mouseRelease(&button, Qt::LeftButton);
        button.setAutoRaise(false);
        QVERIFY(ground() != m_colours.window);
    }

    void tabUnderTheMouseIsTinted() {
        QTabBar tabs;
        tabs.addTab(QStringLiteral("Bring In"));
        tabs.addTab(QStringLiteral("Take Out"));
        tabs.show();
        QVERIFY(QTest::qWaitForWindowExposed(&tabs));
        const QPoint place = tabs.tabRect(1).center();
        const auto ground = [&] {
            return tabs.grab().toImage().pixelColor(tabs.tabRect(1).topLeft() + QPoint(3, 3));
        };
        const QColor tint = blend(m_colours.window, m_colours.accent, 0.1);
        QVERIFY(ground() != tint);
        QHoverEvent enter(QEvent::HoverEnter, place, tabs.mapToGlobal(place), QPoint(-1, -1));
        QCoreApplication::sendEvent(&tabs, &enter);
        QCOMPARE(ground(), tint);
        QHoverEvent leave(QEvent::HoverLeave, QPoint(-1, -1), QPoint(-1, -1), place);
        QCoreApplication::sendEvent(&tabs, &leave);
        QVERIFY(ground() != tint);
    }

    void titleButtonStandsOutUnderTheMouse_data() {
        QTest::addColumn<bool>("active");
        QTest::newRow("active window") << true;
        QTest::newRow("window behind") << false;
    }
    void titleButtonStandsOutUnderTheMouse() {
        QFETCH(bool, active);
        QMdiArea area;
        area.resize(700, 400);
        QMdiSubWindow* window = area.addSubWindow(new QWidget);
        QMdiSubWindow* other = area.addSubWindow(new QWidget);
        window->setGeometry(0, 0, 300, 200);
        other->setGeometry(320, 0, 300, 200);
        area.show();
        QVERIFY(QTest::qWaitForWindowActive(&area));
        area.setActiveSubWindow(active ? window : other);
        const QRect close = titleButton(*window, QStyle::SC_TitleBarCloseButton);
        QVERIFY(close.isValid());
        const QColor ground = active ? m_colours.accent : m_colours.bar;
        const QColor ink = active ? m_colours.accentText : m_colours.muted;
        const auto shown = [&] {
            return window->grab().toImage().pixelColor(close.left() + 2, close.center().y());
        };
        QCOMPARE(shown(), ground);
        QTest::mouseMove(window, close.center() - QPoint(1, 1));
        QTest::mouseMove(window, close.center());
        QCOMPARE(shown(), blend(ground, ink, 0.18));
        if (!active) return;
        QTest::mousePress(window, Qt::LeftButton, {}, close.center());
        QCOMPARE(shown(), blend(ground, ink, 0.3));
        // Let go elsewhere, nothing is closed.
        QTest::mouseRelease(window, Qt::LeftButton, {}, QPoint(100, 100));
        QVERIFY(window->isVisible());
    }

    void yearOfACalendarHasNoFrame() {
        QCalendarWidget calendar;
        calendar.setSelectedDate(QDate(2026, 11, 22));
        calendar.show();
        QVERIFY(QTest::qWaitForWindowExposed(&calendar));
        auto* button = calendar.findChild<QToolButton*>(QStringLiteral("qt_calendar_yearbutton"));
        auto* year = calendar.findChild<QSpinBox*>(QStringLiteral("qt_calendar_yearedit"));
        QVERIFY(button && year);
        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(year->isVisible());
        const QImage image = year->grab().toImage();
        QCOMPARE(image.pixelColor(0, image.height() / 2), m_colours.base);
        QCOMPARE(image.pixelColor(image.width() - 1, 0), m_colours.base);
        // Its arrows step it.
        QTest::mouseClick(year, Qt::LeftButton, {}, QPoint(year->width() - 8, 5));
        QCOMPARE(year->value(), 2027);
        QTest::mouseClick(year, Qt::LeftButton, {}, QPoint(year->width() - 8, year->height() - 5));
        QTest::mouseClick(year, Qt::LeftButton, {}, QPoint(year->width() - 8, year->height() - 5));
        QCOMPARE(year->value(), 2025);
    }
};

LORVANITE_TEST(TestThemeControls)
#include "test_theme_controls.moc"
