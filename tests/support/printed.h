// What a printed PDF holds, by the tools of any reader.
#pragma once

#include <QHash>
#include <QImage>
#include <QPageSize>
#include <QRectF>
#include <QString>
#include <QStringList>

// A PDF that all prints go to until this is gone.
class PrintedFile {
public:
    explicit PrintedFile(const QString& path, QPageSize::PageSizeId paper = QPageSize::A4);
    ~PrintedFile();
    PrintedFile(const PrintedFile&) = delete;
    PrintedFile& operator=(const PrintedFile&) = delete;

    const QString path;
};

// The text of each page, as it lies on the page; empty where there is no such file.
QStringList printedPages(const QString& pdf);

// Where each word of a page stands, in points from the paper's top left corner. Where a word comes
// several times, its last place.
QHash<QString, QRectF> printedWords(const QString& pdf, int page = 1);

// Each page as a picture, at so many dots an inch.
QList<QImage> pagePictures(const QString& pdf, int dpi = 60);

// The fonts of a PDF, a line each: name, type, and whether it is embedded ("yes" or "no").
QStringList printedFonts(const QString& pdf);
