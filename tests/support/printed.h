// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The content of printed PDF files, read with common tools.
#pragma once

#include <QHash>
#include <QImage>
#include <QPageSize>
#include <QRectF>
#include <QString>
#include <QStringList>

// Sends all print jobs to a PDF file during its own lifetime.
class PrintedFile {
public:
    explicit PrintedFile(const QString& path, QPageSize::PageSizeId paper = QPageSize::A4);
    ~PrintedFile();
    PrintedFile(const PrintedFile&) = delete;
    PrintedFile& operator=(const PrintedFile&) = delete;

    const QString path;
};

// The text of each page in its layout; empty if there is no such file.
QStringList printedPages(const QString& pdf);

// The place of each word of a page, in points from the paper's top left corner. If a word occurs
// several times, its last place.
QHash<QString, QRectF> printedWords(const QString& pdf, int page = 1);

// Each page as a picture with this resolution.
QList<QImage> pagePictures(const QString& pdf, int dpi = 60);

// The fonts of a PDF, one line each: name, type, and whether it is embedded ("yes" or "no").
QStringList printedFonts(const QString& pdf);
