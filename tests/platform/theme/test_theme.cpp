// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Colours that can be read, icons that are there, controls in their look.
#include "platform/theme/theme.h"
#include "support/registry.h"

#include <QCalendarWidget>
#include <QComboBox>
#include <QDir>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QTest>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <qtestspontaneevent.h>

class TestTheme : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void textCanBeRead_data();
    void textCanBeRead();
    void paletteHasTheColours();
    void followsTheWish();
    void icons();
    void iconWithoutRoomIsNotDrawn();
    void iconsTakeTheAccent();
    void strongButton();
    void focusShows_data();
    void focusShows();
    void innerWindow();
    void wheelPassesByAnUnfocusedBox();
    void dropDownIsAsWideAsItsItems();
    void clickBesideTheSliderScrollsByAPage_data();
    void clickBesideTheSliderScrollsByAPage();
    void calendarHasNoRedDays();
};

static QColor dominant(const QImage& image) {
    QHash<QRgb, int> counts;
    QRgb best = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            if (++counts[pixel] > counts.value(best)) best = pixel;
        }
    }
    return QColor::fromRgb(best);
}

static void wear(const char* look) {
    qputenv("LORVANITE_THEME", look);
    applyTheme(*qobject_cast<QApplication*>(QCoreApplication::instance()));
    QCoreApplication::processEvents();
}

void TestTheme::cleanup() { qunsetenv("LORVANITE_THEME"); }

void TestTheme::textCanBeRead_data() {
    QTest::addColumn<bool>("dark");
    QTest::addRow("light") << false;
    QTest::addRow("dark") << true;
}

void TestTheme::textCanBeRead() {
    QFETCH(bool, dark);
    const ThemeColours& c = themeColours(dark);
    for (const QColor& ground : {c.window, c.base, c.alternate, c.button, c.head, c.bar}) {
        QVERIFY2(contrast(c.text, ground) >= 4.5, qPrintable(ground.name()));
        QVERIFY2(contrast(c.accent, ground) >= 4.5, qPrintable(ground.name()));
        QVERIFY2(contrast(c.muted, ground) >= 4.5, qPrintable(ground.name()));
    }
    QVERIFY(contrast(c.accentText, c.accent) >= 4.5);
    // Data colours carry the light look's text in both looks.
    for (const QColor& ground : {QColor(180, 255, 180), QColor(255, 120, 120)}) {
        QVERIFY(contrast(themeColours(false).text, ground) >= 4.5);
    }
    QCOMPARE(qRound(contrast(Qt::black, Qt::white) * 10), 210);
    QCOMPARE(contrast(Qt::red, Qt::red), 1.0);
}

void TestTheme::paletteHasTheColours() {
    const QPalette palette = themePalette(themeColours(true));
    QCOMPARE(palette.color(QPalette::Window), QColor(0x262522));
    QCOMPARE(palette.color(QPalette::Highlight), QColor(0x6FB7A6));
    QCOMPARE(themeColours(palette).base, QColor(0x1E1D1B));
    QCOMPARE(themeColours(themePalette(themeColours(false))).base, QColor(0xFFFFFF));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::ButtonText}) {
        QVERIFY(contrast(palette.color(QPalette::Disabled, role),
                         palette.color(QPalette::Disabled, QPalette::Window)) >= 4.5);
    }
}

void TestTheme::followsTheWish() {
    wear("dark");
    QCOMPARE(QApplication::palette().color(QPalette::Base), themeColours(true).base);
    wear("light");
    QCOMPARE(QApplication::palette().color(QPalette::Base), themeColours(false).base);
    QCOMPARE(QApplication::font().pointSize(), 10);
    // The desktop changes its look while the program runs.
    qputenv("LORVANITE_THEME", "dark");
    QWidget window;
    window.show();
    QEvent change(QEvent::ThemeChange);
    QCoreApplication::sendEvent(&window, &change);
    QTRY_COMPARE(QApplication::palette().color(QPalette::Base), themeColours(true).base);
}

void TestTheme::icons() {
    wear("light");
    const char* names[] = {"set-list", "song-admin", "song-history", "past-sets", "sheet-music",
                           "email",    "scheduling", "notes",        "utilities", "about",
                           "help",     "people",     "reload",       "close",     "play",
                           "pause",    "stop",       "search",       "app"};
    for (const char* name : names) {
        const QIcon icon = themedIcon(QLatin1String(name));
        QVERIFY2(!icon.isNull(), name);
        for (const int size : {16, 24, 64}) {
            const QImage image = icon.pixmap(size).toImage();
            QCOMPARE(image.size(), QSize(size, size));
            int drawn = 0;
            for (int y = 0; y < size; ++y) {
                for (int x = 0; x < size; ++x) drawn += qAlpha(image.pixel(x, y)) > 128;
            }
            QVERIFY2(drawn > size / 2, name);
        }
    }
    QVERIFY(themedIcon(QStringLiteral("no-such-picture")).isNull());
}

void TestTheme::iconWithoutRoomIsNotDrawn() {
    QTest::failOnWarning(QRegularExpression(QStringLiteral("QPainter")));
    const QIcon icon = themedIcon(QStringLiteral("close"));
    QVERIFY(icon.pixmap(QSize(24, 0)).isNull());
    QVERIFY(icon.pixmap(QSize(0, 24)).isNull());
}

void TestTheme::iconsTakeTheAccent() {
    const auto stroke = [](const QIcon& icon, QIcon::Mode mode) {
        const QImage image = icon.pixmap(QSize(96, 96), mode).toImage();
        return image.pixelColor(48, 24);  // the round of "stop" has its upper edge here
    };
    wear("light");
    const QIcon icon = themedIcon(QStringLiteral("stop"));
    QCOMPARE(stroke(icon, QIcon::Normal), themeColours(false).accent);
    QVERIFY(stroke(icon, QIcon::Disabled).alphaF() < 0.7F);
    wear("dark");
    QCOMPARE(stroke(icon, QIcon::Normal), themeColours(true).accent);
    // Sharp on screens of twice the density.
    const QPixmap fine = icon.pixmap(QSize(24, 24), 2.0);
    QCOMPARE(fine.size(), QSize(48, 48));
}

void TestTheme::strongButton() {
    wear("light");
    QWidget window;
    QVBoxLayout layout(&window);
    QPushButton plain(QStringLiteral("Save Set"));
    QPushButton strong(QStringLiteral("Save Set"));
    strong.setProperty("primary", true);
    layout.addWidget(&plain);
    layout.addWidget(&strong);
    window.show();
    QCOMPARE(dominant(strong.grab().toImage()), themeColours(false).accent);
    QCOMPARE(dominant(plain.grab().toImage()), themeColours(false).button);
    QVERIFY(strong.font().weight() > plain.font().weight());
    QVERIFY(strong.height() >= 28);
    strong.setEnabled(false);
    QCOMPARE(dominant(strong.grab().toImage()), themeColours(false).window);
    wear("dark");
    strong.setEnabled(true);
    QCOMPARE(dominant(strong.grab().toImage()), themeColours(true).accent);
    QFrame bar;
    bar.setObjectName(QStringLiteral("picButHold"));
    bar.resize(200, 60);
    bar.show();
    QCOMPARE(dominant(bar.grab().toImage()), themeColours(true).bar);
}

void TestTheme::focusShows_data() {
    QTest::addColumn<QString>("kind");
    for (const char* kind :
         {"QPushButton", "primary", "QToolButton", "QCheckBox", "QRadioButton", "QLineEdit",
          "QComboBox", "QSpinBox", "QListWidget", "QTextEdit", "QTabBar", "QGroupBox"}) {
        QTest::addRow("%s", kind) << QString::fromLatin1(kind);
    }
}

static QWidget* make(const QString& kind) {
    if (kind == QLatin1String("QPushButton")) return new QPushButton(QStringLiteral("Go"));
    if (kind == QLatin1String("primary")) {
        auto* button = new QPushButton(QStringLiteral("Go"));
        button->setProperty("primary", true);
        return button;
    }
    if (kind == QLatin1String("QToolButton")) {
        auto* button = new QToolButton;
        button->setText(QStringLiteral("Go"));
        button->setFocusPolicy(Qt::StrongFocus);
        button->setAutoRaise(true);
        return button;
    }
    if (kind == QLatin1String("QCheckBox")) return new QCheckBox(QStringLiteral("Go"));
    if (kind == QLatin1String("QRadioButton")) return new QRadioButton(QStringLiteral("Go"));
    if (kind == QLatin1String("QLineEdit")) return new QLineEdit;
    if (kind == QLatin1String("QComboBox")) return new QComboBox;
    if (kind == QLatin1String("QSpinBox")) return new QSpinBox;
    if (kind == QLatin1String("QListWidget")) return new QListWidget;
    if (kind == QLatin1String("QTextEdit")) return new QTextEdit;
    if (kind == QLatin1String("QTabBar")) {
        auto* tabs = new QTabBar;
        tabs->addTab(QStringLiteral("One"));
        return tabs;
    }
    auto* group = new QGroupBox(QStringLiteral("Go"));
    group->setCheckable(true);
    return group;
}

void TestTheme::focusShows() {
    QFETCH(QString, kind);
    for (const char* look : {"light", "dark"}) {
        wear(look);
        QWidget window;
        QVBoxLayout layout(&window);
        QLineEdit other;
        QWidget* control = make(kind);
        layout.addWidget(&other);
        layout.addWidget(control);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        other.setFocus();
        const QImage without = control->grab().toImage();
        control->setFocus(Qt::TabFocusReason);
        QVERIFY(control->hasFocus());
        QVERIFY(control->grab().toImage() != without);
    }
}

void TestTheme::innerWindow() {
    wear("light");
    QMdiArea area;
    area.resize(600, 400);
    auto* first = area.addSubWindow(new QWidget);
    auto* second = area.addSubWindow(new QWidget);
    first->setWindowTitle(QStringLiteral("First"));
    first->setGeometry(0, 0, 250, 200);
    second->setGeometry(260, 0, 250, 200);
    area.show();
    area.setActiveSubWindow(first);
    const auto title = [](QMdiSubWindow* window) {
        return dominant(window->grab(QRect(40, 6, 100, 18)).toImage());
    };
    QVERIFY(QTest::qWaitForWindowActive(&area));
    QCOMPARE(title(first), themeColours(false).accent);
    QCOMPARE(title(second), themeColours(false).bar);
    area.setActiveSubWindow(second);
    QCOMPARE(title(second), themeColours(false).accent);
    // The frame is a line of one pixel.
    const QImage image = first->grab().toImage();
    QCOMPARE(image.pixelColor(0, 100), themeColours(false).line);
    QCOMPARE(image.pixelColor(2, 100), themeColours(false).window);
}

static void turnWheel(QWidget* over) {
    const QPoint place = over->rect().center();
    QWheelEvent turn(place, over->mapToGlobal(place), QPoint(), QPoint(0, -120), Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    // Only a turn that comes from the window system goes on to the widgets around.
    QSpontaneKeyEvent::setSpontaneous(&turn);
    qApp->notify(over, &turn);
}

void TestTheme::wheelPassesByAnUnfocusedBox() {
    wear("light");
    QScrollArea area;
    auto* content = new QWidget;
    content->setFixedSize(200, 2000);
    auto* box = new QComboBox(content);
    box->addItems({QStringLiteral("Guitar"), QStringLiteral("Piano"), QStringLiteral("Drums")});
    box->move(20, 20);
    auto* typed = new QComboBox(content);
    typed->setEditable(true);
    typed->addItems({QStringLiteral("Praise"), QStringLiteral("Advent")});
    typed->move(20, 80);
    auto* slider = new QSlider(Qt::Horizontal, content);
    slider->move(20, 140);
    area.setWidget(content);
    area.resize(240, 300);
    area.setFocusPolicy(Qt::StrongFocus);
    area.show();
    QVERIFY(QTest::qWaitForWindowActive(&area));
    area.setFocus();
    for (QWidget* passed : {static_cast<QWidget*>(box), static_cast<QWidget*>(typed->lineEdit()),
                            static_cast<QWidget*>(slider)}) {
        area.verticalScrollBar()->setValue(0);
        turnWheel(passed);
        QVERIFY(area.verticalScrollBar()->value() > 0);
        QCOMPARE(box->currentIndex(), 0);
        QCOMPARE(typed->currentIndex(), 0);
        QCOMPARE(slider->value(), 0);
        QVERIFY(area.hasFocus());
    }
    area.verticalScrollBar()->setValue(0);
    box->setFocus();
    turnWheel(box);
    QCOMPARE(box->currentIndex(), 1);
    QCOMPARE(area.verticalScrollBar()->value(), 0);
}

void TestTheme::dropDownIsAsWideAsItsItems() {
    wear("light");
    QWidget window;
    QComboBox box(&window);
    box.setFixedWidth(80);
    const QString wide = QStringLiteral("Background Vocals:Bartholomew Featherstone");
    box.addItems({QStringLiteral("Piano"), wide});
    window.resize(300, 200);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    box.showPopup();
    const int room = box.view()->viewport()->width();
    QVERIFY2(room > box.fontMetrics().horizontalAdvance(wide) + 8,
             qPrintable(QString::number(room)));
    QVERIFY(box.view()->horizontalScrollBar()->maximum() == 0);
    box.hidePopup();
    box.removeItem(1);
    box.showPopup();
    QVERIFY(box.view()->window()->width() <= box.width() + 2);
}

void TestTheme::clickBesideTheSliderScrollsByAPage_data() {
    QTest::addColumn<bool>("across");
    QTest::addColumn<bool>("mirrored");
    QTest::newRow("down") << false << false;
    QTest::newRow("across") << true << false;
    QTest::newRow("across from right to left") << true << true;
}

void TestTheme::clickBesideTheSliderScrollsByAPage() {
    QFETCH(bool, across);
    QFETCH(bool, mirrored);
    wear("light");
    QScrollBar bar(across ? Qt::Horizontal : Qt::Vertical);
    bar.setLayoutDirection(mirrored ? Qt::RightToLeft : Qt::LeftToRight);
    bar.setRange(0, 100);
    bar.setPageStep(10);
    bar.resize(across ? QSize(300, 12) : QSize(12, 300));
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    const QPoint start = across ? QPoint(3, 6) : QPoint(6, 3);
    const QPoint end = across ? QPoint(296, 6) : QPoint(6, 296);
    QTest::mouseClick(&bar, Qt::LeftButton, {}, mirrored ? start : end);
    QCOMPARE(bar.value(), 10);
    QTest::mouseClick(&bar, Qt::LeftButton, {}, mirrored ? start : end);
    QCOMPARE(bar.value(), 20);
    QTest::mouseClick(&bar, Qt::LeftButton, {}, mirrored ? end : start);
    QCOMPARE(bar.value(), 10);
    // Dragged by its slider to the end.
    const QPoint slider = across ? QPoint(mirrored ? 260 : 40, 6) : QPoint(6, 40);
    QTest::mousePress(&bar, Qt::LeftButton, {}, slider);
    QTest::mouseMove(&bar, mirrored ? start : end);
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, mirrored ? start : end);
    QCOMPARE(bar.value(), 100);
}

void TestTheme::calendarHasNoRedDays() {
    wear("dark");
    QCalendarWidget calendar;
    calendar.ensurePolished();
    calendar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&calendar));
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
        QCOMPARE(calendar.weekdayTextFormat(day).foreground().color(), themeColours(true).text);
    const auto* bar = calendar.findChild<QWidget*>(QStringLiteral("qt_calendar_navigationbar"));
    QVERIFY(bar);
    QCOMPARE(bar->palette().color(QPalette::Highlight), themeColours(true).head);
    for (const auto arrow : {QStyle::SP_ArrowLeft, QStyle::SP_ArrowRight})
        QVERIFY(!calendar.style()->standardIcon(arrow).isNull());
}

LORVANITE_TEST(TestTheme)
#include "test_theme.moc"
