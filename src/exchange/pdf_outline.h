// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Bookmarks and links for a PDF, which the writer of the pages does not make.
#pragma once

#include <QByteArray>
#include <QList>
#include <QRectF>
#include <QString>

// A bookmark, and the place in the contents that leads to the same page.
struct PdfMark {
    QString title;
    // Counted from 1.
    int page = 0;
    int linkPage = 0;
    // In points from the page's lower left corner.
    QRectF link;
};

// Moves the last `contents` pages of a PDF to its front, and adds a bookmark for them and for each
// mark, and the links. Page numbers are those after moving. Returns an empty array and a sentence
// in `problem` if the bytes are no PDF or a page is not there.
QByteArray withOutline(const QByteArray& pdf, int contents, const QList<PdfMark>& marks,
                       QString& problem);
