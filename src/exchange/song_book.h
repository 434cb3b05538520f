// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A song book: the charts of many songs as one PDF, with contents, bookmarks and page numbers.
#pragma once

#include "exchange/library_songs.h"

#include <QPageSize>

#include <functional>

// Called with the number of songs done and of all. Returning false cancels.
using ExchangeProgress = std::function<bool(int done, int all)>;

struct SongBook {
    // On the first page, and the file's title.
    QString title;
    // In the order of the book.
    QList<LibrarySong> songs;
    QPageSize::PageSizeId paper = QPageSize::A4;
};

struct SongBookContent {
    // The PDF file. Empty without any chart, after cancelling, and where `problem` says why.
    QByteArray pdf;
    int songs = 0;
    int pages = 0;
    // The titles of songs without a chart that can be read. They are not in the book.
    QStringList withoutChart;
    QString problem;
};

// Makes the book: its contents, then the charts as they print, each beginning a page. Page numbers
// count from the first page of the contents. Each line of the contents leads to its song.
SongBookContent makeSongBook(const SongBook& book, const ExchangeProgress& progress);
