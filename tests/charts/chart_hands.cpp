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
    QApplication::setActiveWindow(&world->main());  // a box has taken it
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
    for (int row = 6; row <= grid->rowsOf(page); row += 2) texts.append(grid->textAt(page, 1, row));
    while (!texts.isEmpty() && texts.last().isEmpty()) texts.removeLast();
    return texts;
}
