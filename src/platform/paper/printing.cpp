// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/paper/printing.h"

#include "core/data/dates.h"
#include "core/data/paths.h"
#include "core/grid/sheet_grid.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"
#include "platform/paper/print_painter.h"
#include "platform/paper/print_queue.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSaveFile>

#include <optional>
#include <tuple>

namespace {

constexpr int MostOfAName = 60;

QString g_targetPath;
QPageSize::PageSizeId g_targetPaper = QPageSize::A4;

QString jobName(const SheetGrid& grid) {
    if (!grid.PrintJobName().isEmpty()) return grid.PrintJobName();
    const int sheet = grid.ActiveSheet();
    QString name;
    for (int row = 1; row <= grid.dataRowsOf(sheet) && name.isEmpty(); ++row) {
        for (int col = 1; col <= grid.colsOf(sheet); ++col)
            name += QLatin1Char(' ') + grid.textAt(sheet, col, row);
        name = name.simplified();
    }
    name = name.left(MostOfAName).trimmed();
    return name.isEmpty() ? QStringLiteral("Lorvanite") : name;
}

QPageLayout::Orientation orientationOf(const SheetGrid& grid) {
    return grid.PrintOrientation() == PrintOrientations::Landscape ? QPageLayout::Landscape
                                                                   : QPageLayout::Portrait;
}

bool writePdf(const SheetGrid& grid, const QString& path, QPageSize::PageSizeId paper) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    {
        QPdfWriter writer(&file);
        writer.setResolution(TwipsPerInch);
        writer.setTitle(jobName(grid));
        writer.setCreator(QStringLiteral("Lorvanite"));
        writer.setPageSize(QPageSize(paper));
        writer.setPageOrientation(orientationOf(grid));
        writer.setPageMargins({});
        if (!drawSheet(writer, grid)) return false;
    }
    // commit() does not notice that the last, buffered part could not be written.
    return file.flush() && file.error() == QFileDevice::NoError && file.commit();
}

// Why the printer did not take the pages, empty if no reason is known. Nothing if it took them.
std::optional<QString> sendToPrinter(const SheetGrid& grid, const QPrinterInfo& info) {
    QPrinter printer(info, QPrinter::HighResolution);
    printer.setDocName(jobName(grid));
    // Otherwise it would be A4.
    if (info.defaultPageSize().isValid()) printer.setPageSize(info.defaultPageSize());
    printer.setPageOrientation(orientationOf(grid));
    printer.setFullPage(true);
    printer.setPageMargins({});
    if (!drawSheet(printer, grid)) return QString();
    return refusalOfLastJob();
}

void printOn(const QPrinterInfo& info, const SheetGrid& grid) {
    const QString name = info.printerName();
    if (const std::optional<QString> reason = sendToPrinter(grid, info)) {
        QString text = QStringLiteral("The printer ") + name +
                       QStringLiteral(
                           " did not take the pages. Make sure that it is switched on, then print "
                           "again.");
        if (!reason->isEmpty()) text += QStringLiteral("\r\r") + *reason;
        messageBox(text, BoxIcon::Exclamation);
        return;
    }
    setStatusText(QStringLiteral("Sent to the printer ") + name);
    if (isStopped(name))
        messageBox(QStringLiteral("The printer ") + name +
                       QStringLiteral(" is stopped. The pages wait in its queue, and are printed "
                                      "when it is started again."),
                   BoxIcon::Exclamation);
}

// The default printer, or the first one if there is no default; null if there is none at all.
QPrinterInfo printerOfTheDesktop() {
    const QPrinterInfo byDefault = QPrinterInfo::defaultPrinter();
    return byDefault.isNull() ? QPrinterInfo::availablePrinters().value(0) : byDefault;
}

// A path that no earlier job has.
QString pdfPath(const QString& job) {
    const QString folder = programFolder() + QStringLiteral("/printed");
    std::ignore = QDir().mkpath(folder);  // if it fails, writing the file reports it
    const QString name = safeFileName(job);
    const QString stem =
        folder + QLatin1Char('/') + (name.isEmpty() ? QStringLiteral("Lorvanite") : name) +
        QLatin1Char(' ') +
        QDateTime(today(), QTime::currentTime()).toString(QStringLiteral("yyyy-MM-dd hh.mm.ss"));
    QString path = stem + QStringLiteral(".pdf");
    for (int n = 2; QFile::exists(path); ++n) path = stem + QStringLiteral(" (%1).pdf").arg(n);
    return path;
}

}  // namespace

void setPrintTarget(const QString& path, QPageSize::PageSizeId paper) {
    g_targetPath = path;
    g_targetPaper = paper;
}

void applySetPrintSettings(SheetGrid& grid) {
    grid.PrintBorder(false);
    grid.PrintMarginTop(720);
    grid.PrintMarginBottom(720);
    grid.PrintOrientation(PrintOrientations::Portrait);
    grid.PrintSmartPrint(true);
    grid.PrintColHeaders(false);
    grid.PrintRowHeaders(false);
    grid.PrintGrid(false);
    grid.PrintUseDataMax(true);
    grid.PrintColor(true);
    grid.PrintScalingMethod(PrintScaling::AsItIs);
    grid.PrintType(PrintTypes::All);
}

void PrintSheet(const SheetGrid& grid, int) {
    if (!g_targetPath.isEmpty()) {
        if (!writePdf(grid, g_targetPath, g_targetPaper))
            messageBox(QStringLiteral("The page could not be written to ") + g_targetPath,
                       BoxIcon::Exclamation);
        return;
    }
    const QPrinterInfo printer = printerOfTheDesktop();
    if (!printer.isNull()) {
        printOn(printer, grid);
        return;
    }
    const bool letter = QLocale().measurementSystem() == QLocale::ImperialUSSystem;
    const QString path = pdfPath(jobName(grid));
    if (writePdf(grid, path, letter ? QPageSize::Letter : QPageSize::A4)) {
        setStatusText(QStringLiteral("No printer found. The pages are in ") +
                      QDir::toNativeSeparators(path));
    } else {
        messageBox(QStringLiteral("There is no printer, and the pages could not be written to\r") +
                       QDir::toNativeSeparators(path),
                   BoxIcon::Exclamation);
    }
}
