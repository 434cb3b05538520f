// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Pictures of every window, light and dark, at 100, 150 and 200 per cent, on a sheet each in
// build/tour.
#include "platform/theme/theme.h"
#include "support/every_window.h"
#include "support/registry.h"
#include "trees.h"

#include <QApplication>
#include <QDir>
#include <QMdiSubWindow>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int SheetWidth = 4000;  // pixels at 100 per cent
constexpr int Gap = 12;

// What a widget looks like on a screen of this scale.
QImage pictureAt(QWidget& widget, double scale) {
    QImage image(widget.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    widget.render(&image);
    return image;
}

// Lays pictures side by side in rows.
QImage sheetOf(const QList<QImage>& pictures, double scale) {
    QList<QPoint> places;
    QPoint at(Gap, Gap);
    int bottom = 0;
    for (const QImage& picture : pictures) {
        const QSize size = picture.deviceIndependentSize().toSize();
        if (at.x() + size.width() > SheetWidth && at.x() > Gap) at = QPoint(Gap, bottom + Gap);
        places << at;
        bottom = std::max(bottom, at.y() + size.height());
        at.rx() += size.width() + Gap;
    }
    QImage sheet(QSize(SheetWidth, bottom + Gap) * scale, QImage::Format_RGB32);
    sheet.setDevicePixelRatio(scale);
    sheet.fill(Qt::gray);
    QPainter painter(&sheet);
    for (qsizetype i = 0; i < pictures.size(); ++i) painter.drawImage(places[i], pictures[i]);
    return sheet;
}

bool isPlain(const QImage& picture) {
    const QImage few = picture.scaled(64, 64);
    for (int y = 0; y < few.height(); ++y) {
        for (int x = 0; x < few.width(); ++x)
            if (few.pixel(x, y) != few.pixel(0, 0)) return false;
    }
    return true;
}

}  // namespace

class TestWindowSheet : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyWindowIsOnTheSheet_data() {
        QTest::addColumn<QSize>("size");
        QTest::newRow("light") << QSize(1024, 768);
        QTest::newRow("dark") << QSize(1280, 800);
    }
    void everyWindowIsOnTheSheet() {
        QFETCH(QSize, size);
        const QString look = QString::fromLatin1(QTest::currentDataTag());
        qputenv("LORVANITE_THEME", look.toLatin1());
        applyTheme(*qApp);
        World world(WorldTree::Sample);
        world.answers.custom("reminder", [](QWidget* box) {
            QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::Ok),
                              Qt::LeftButton);
        });
        world.start();
        world.main().resize(size);
        settle();
        std::map<int, QList<QImage>> pictures;  // by per cent
        lookAtEveryWindow(world, [&](const QString& name, QWidget* window) {
            QWidget* frame = window->parentWidget() ? window->parentWidget() : window;
            for (const int percent : {100, 150, 200})
                pictures[percent] << pictureAt(*frame, percent / 100.0);
            QVERIFY2(!isPlain(pictures[100].last()), qPrintable(name));
        });
        const QDir folder(QStringLiteral(SOURCE_TREE "/build/tour"));
        QVERIFY(folder.mkpath(QStringLiteral(".")));
        for (const auto& [percent, shown] : pictures) {
            QVERIFY(shown.size() >= 20);
            const QString name = QStringLiteral("windows-%1-%2.png").arg(look).arg(percent);
            QVERIFY(sheetOf(shown, percent / 100.0).save(folder.filePath(name)));
        }
    }

    void cleanup() {
        qunsetenv("LORVANITE_THEME");
        applyTheme(*qApp);
    }
};

LORVANITE_TEST(TestWindowSheet)
#include "test_window_sheet.moc"
