// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Lines on screens whose pixels are smaller than the program's.
#include "platform/grid_view/sheet_view.h"
#include "platform/theme/theme.h"
#include "support/registry.h"

#include <QApplication>
#include <QImage>
#include <QScrollArea>
#include <QTest>

namespace {

// A window on a screen of this scale.
QImage shot(QWidget& window, double scale) {
    QImage image(window.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    window.render(&image);
    return image;
}

bool isNear(const QImage& image, QPointF place, const QColor& colour) {
    const QPoint pixel = (place * image.devicePixelRatio()).toPoint();
    for (int y = pixel.y() - 2; y <= pixel.y() + 2; ++y)
        for (int x = pixel.x() - 2; x <= pixel.x() + 2; ++x)
            if (image.valid(x, y) && image.pixelColor(x, y) == colour) return true;
    return false;
}

// The sides of a rectangle that have no line of this colour in their middle.
QString missingSides(const QImage& image, const QRectF& rect, const QColor& colour) {
    QString missing;
    const QPointF middle = rect.center();
    if (!isNear(image, {rect.left(), middle.y()}, colour)) missing += QLatin1String(" left");
    if (!isNear(image, {rect.right(), middle.y()}, colour)) missing += QLatin1String(" right");
    if (!isNear(image, {middle.x(), rect.top()}, colour)) missing += QLatin1String(" top");
    if (!isNear(image, {middle.x(), rect.bottom()}, colour)) missing += QLatin1String(" bottom");
    return missing;
}

}  // namespace

class TestScaledScreen : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        qputenv("LORVANITE_THEME", "light");
        applyTheme(*qobject_cast<QApplication*>(QCoreApplication::instance()));
    }

    void cleanup() { qunsetenv("LORVANITE_THEME"); }

    void frameHasFourSides_data() { scalesAndPlaces(); }

    void frameHasFourSides() {
        QFETCH(double, scale);
        QFETCH(int, place);
        QWidget window;
        window.resize(200, 160);
        QScrollArea area(&window);
        area.setGeometry(place, place, 81, 61);
        const QImage image = shot(window, scale);
        QCOMPARE(missingSides(image, area.geometry(), themeColours(false).line), QString());
    }

    void activeCellHasFourSides_data() { scalesAndPlaces(); }

    void activeCellHasFourSides() {
        QFETCH(double, scale);
        QFETCH(int, place);
        QWidget window;
        window.resize(400, 240);
        SheetView view(&window);
        view.setGeometry(place, place, 321, 201);
        view.MaxCols(3);
        view.MaxRows(5);
        view.SetActiveCell(2, 3);
        view.flush();
        const QImage image = shot(window, scale);
        QRect cell = view.visualRect(view.model()->index(2, 1));
        cell.translate(view.viewport()->mapTo(&window, QPoint()));
        QCOMPARE(missingSides(image, cell, themeColours(false).accent), QString());
    }

private:
    static void scalesAndPlaces() {
        QTest::addColumn<double>("scale");
        QTest::addColumn<int>("place");
        for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0})
            for (int place = 20; place < 24; ++place)
                QTest::addRow("%g at %d", scale, place) << scale << place;
    }
};

LORVANITE_TEST(TestScaledScreen)
#include "test_scaled_screen.moc"
