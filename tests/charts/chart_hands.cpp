// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "charts/chart_test.h"

#include <QFile>
#include <QMenuBar>

SheetMusic& ChartTest::open() {
    if (!world->isRunning()) world->start();
    click(world->main().cmdSheetMusic);
    world->statements.clear();
    return SheetMusic::instance();
}

void ChartTest::pick(QMenu* menu, QAction* item) {
    auto* bar = qobject_cast<QMenuBar*>(menu->parentWidget());
    QVERIFY(bar);
    const QRect place = bar->actionGeometry(menu->menuAction());
    QTest::mouseClick(bar, Qt::LeftButton, {}, place.center());
    settle();
    QVERIFY2(menu->isVisible(), qPrintable(menu->title()));
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(item).center());
    settle();
    if (menu->isVisible()) menu->close();
}

frmTranspose& ChartTest::openTranspose(SheetMusic& window) {
    pick(window.mnuView, window.mnuTranspose);
    return frmTranspose::instance();
}

void ChartTest::write(SheetMusic& window, int pages) {
    for (int page = 1; page <= pages; ++page) {
        if (page > 1) window.addPage();
        window.fpSong->SetText(ChartColumn::Text, ChartRow::Title, QString("Title %1").arg(page));
        window.fpSong->SetText(3 + page % 30, ChartRow::FirstChord, "F#m7");
        window.fpSong->SetText(ChartColumn::Text, ChartRow::FirstLyric,
                               QString::fromUtf8("Großer Gott, wir loben dich €"));
        window.fpSong->SetText(ChartColumn::Text, ChartRow::Last, QString("foot %1").arg(page));
    }
}

QString ChartTest::stateOf(const SheetGrid* chart) {
    QString state;
    for (int page = 1; page <= chart->SheetCount(); ++page) {
        state += QString("%1x%2").arg(chart->colsOf(page)).arg(chart->rowsOf(page));
        for (int row = 1; row <= chart->rowsOf(page); ++row) {
            state += QString("\n%1%2:")
                         .arg(chart->heightOf(page, row))
                         .arg(chart->hasPageBreak(page, row));
            for (int col = 1; col <= chart->colsOf(page); ++col) {
                const CellFormat f = chart->formatAt(page, col, row);
                const CellSpan span = chart->spanAt(page, col, row);
                state += QString("%1|%2|%3|%4|%5|%6|%7 ")
                             .arg(chart->textAt(page, col, row))
                             .arg(int(f.hAlign))
                             .arg(f.fontName)
                             .arg(f.fontSize)
                             .arg(f.fontBold)
                             .arg(span.cols)
                             .arg(chart->widthOf(page, col));
            }
        }
    }
    return state + QString::number(chart->AllowCellOverflow());
}

QString ChartTest::makeFile(const QString& relative, const QByteArray& bytes) {
    const QString path = world->path(relative);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        QTest::qFail("file not written", __FILE__, __LINE__);
    return path;
}

QString ChartTest::addSong(const QString& title) {
    world->sql(QStringLiteral("INSERT INTO songs (title, fileLoco) VALUES ('%1', '')").arg(title));
    return world->rows(QStringLiteral("SELECT max(ID) FROM songs")).value(0);
}

QString ChartTest::fileLocoOf(const QString& id) {
    return world->rows(QStringLiteral("SELECT fileLoco FROM songs WHERE ID = ") + id).value(0);
}

bool ChartTest::isOnTop(const QWidget* panel) {
    const QWidget* window = panel->parentWidget();
    const QWidget* seen = window->childAt(panel->geometry().center());
    return seen && (seen == panel || panel->isAncestorOf(seen));
}

void ChartTest::type(SheetView* grid, int col, int row, const QString& text) {
    QApplication::setActiveWindow(&world->main());  // a message box may have become active
    typeInCell(grid, col, row, text);
    QCOMPARE(grid->GetText(col, row), text);
}

QStringList ChartTest::rowOf(const SheetGrid* grid, int page, int row) {
    QStringList texts;
    for (int col = 1; col <= grid->colsOf(page); ++col) {
        const QString text = grid->textAt(page, col, row);
        if (!text.isEmpty()) texts.append(text);
    }
    return texts;
}

QStringList ChartTest::lyricsOf(const SheetGrid* grid, int page) {
    QStringList texts;
    for (int row = ChartRow::FirstLyric; row <= grid->rowsOf(page); row += 2)
        texts.append(grid->textAt(page, ChartColumn::Text, row));
    while (!texts.isEmpty() && texts.last().isEmpty()) texts.removeLast();
    return texts;
}
