// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/song_book.h"

#include "charts/rules/chart_sheets.h"
#include "core/grid/sheet_grid.h"
#include "exchange/pdf_outline.h"
#include "platform/paper/print_layout.h"
#include "platform/paper/print_painter.h"
#include "platform/paper/printing.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

// Lengths are in twips.
constexpr double ContentsMargin = 1080;
constexpr double ContentsHead = 1000;
constexpr double ContentsRow = 300;
constexpr double NumberRoom = 700;
constexpr double LeaderGap = 90;
constexpr int HeadSize = 400;
constexpr int RowSize = 220;
constexpr int NumberSize = 180;
constexpr double PointsPerTwip = 72.0 / TwipsPerInch;

QFont bookFont(int size, bool bold = false) {
    QFont font(u"Arial"_s);
    font.setPixelSize(size);
    font.setBold(bold);
    return font;
}

// Draws a book whose charts can all be read.
class BookDrawing {
public:
    BookDrawing(const SongBook& book, const QList<LibrarySong>& songs)
        : m_book(book), m_songs(songs), m_writer(&m_file) {
        m_file.open(QIODevice::WriteOnly);
        m_writer.setResolution(TwipsPerInch);
        m_writer.setTitle(book.title);
        m_writer.setCreator(u"Lorvanite"_s);
        m_writer.setPageSize(QPageSize(book.paper));
        m_writer.setPageMargins({});
        m_paper = m_writer.pageLayout().fullRect(QPageLayout::Inch).size() * TwipsPerInch;
    }

    // Draws the charts, and the contents behind them. False where the writer fails or `progress`
    // cancels.
    bool draw(const ExchangeProgress& progress);

    const QByteArray& pdf() const { return m_file.data(); }
    int contentsPages() const;
    int pages() const { return m_number - 1; }
    const QList<PdfMark>& marks() const { return m_marks; }

private:
    double rowsOfPage(int page) const;
    bool drawSong(const LibrarySong& song);
    bool drawContents();
    void drawRow(const PdfMark& mark, const QRectF& row);
    void drawNumber(int number);

    const SongBook& m_book;
    const QList<LibrarySong>& m_songs;
    QBuffer m_file;
    QPdfWriter m_writer;
    QPainter m_painter;
    QSizeF m_paper;
    QList<PdfMark> m_marks;
    int m_number = 1;  // of the page to draw, as it will be in the book
};

double BookDrawing::rowsOfPage(int page) const {
    const double room = m_paper.height() - 2 * ContentsMargin - (page == 0 ? ContentsHead : 0);
    return std::max(1.0, std::floor(room / ContentsRow));
}

int BookDrawing::contentsPages() const {
    const double further = double(m_songs.size()) - rowsOfPage(0);
    return further <= 0 ? 1 : 1 + int(std::ceil(further / rowsOfPage(1)));
}

bool BookDrawing::draw(const ExchangeProgress& progress) {
    if (!m_painter.begin(&m_writer)) return false;
    m_number = contentsPages() + 1;
    for (qsizetype i = 0; i < m_songs.size(); ++i) {
        if (i > 0 && !m_writer.newPage()) return false;
        if (!drawSong(m_songs[i])) return false;
        if (!progress(int(i + 1), int(m_songs.size()))) return false;
    }
    return drawContents() && m_painter.end();
}

bool BookDrawing::drawSong(const LibrarySong& song) {
    m_marks += PdfMark{song.song.title(), m_number, 0, {}};
    SheetGrid chart;
    if (!loadChart(song, chart)) return false;
    // A page without cells ends the merging; what was merged so far is drawn.
    if (!mergePages(chart, [](const QString&) {})) chart.ActiveSheet(1);
    applySetPrintSettings(chart);
    return drawSheet(m_painter, m_writer, chart, [&] { drawNumber(m_number++); });
}

void BookDrawing::drawNumber(int number) {
    const QRectF foot(0, m_paper.height() - 720, m_paper.width(), 720);
    m_painter.setFont(bookFont(NumberSize));
    m_painter.setPen(Qt::black);
    m_painter.drawText(foot, Qt::AlignCenter, QString::number(number));
}

bool BookDrawing::drawContents() {
    const double width = m_paper.width() - 2 * ContentsMargin;
    auto mark = m_marks.begin();
    for (int page = 0; page < contentsPages(); ++page) {
        if (!m_writer.newPage()) return false;
        double top = ContentsMargin;
        if (page == 0) {
            m_painter.setFont(bookFont(HeadSize, true));
            m_painter.setPen(Qt::black);
            const QString head =
                m_painter.fontMetrics().elidedText(m_book.title, Qt::ElideRight, int(width));
            m_painter.drawText(QRectF(ContentsMargin, top, width, ContentsHead),
                               Qt::AlignHCenter | Qt::AlignTop | Qt::TextSingleLine, head);
            top += ContentsHead;
        }
        for (int row = 0; row < rowsOfPage(page) && mark != m_marks.end(); ++row, ++mark) {
            const QRectF place(ContentsMargin, top, width, ContentsRow);
            drawRow(*mark, place);
            mark->linkPage = page + 1;
            mark->link = QRectF(place.x() * PointsPerTwip,
                                (m_paper.height() - place.bottom()) * PointsPerTwip,
                                place.width() * PointsPerTwip, place.height() * PointsPerTwip);
            top += ContentsRow;
        }
        drawNumber(page + 1);
    }
    return true;
}

// The title, dots, and the number of the page.
void BookDrawing::drawRow(const PdfMark& mark, const QRectF& row) {
    m_painter.setFont(bookFont(RowSize));
    m_painter.setPen(Qt::black);
    const QFontMetricsF metrics(m_painter.font(), &m_writer);
    const QString number = QString::number(mark.page);
    const QString title = metrics.elidedText(mark.title, Qt::ElideRight, row.width() - NumberRoom);
    constexpr int flags = Qt::AlignVCenter | Qt::TextSingleLine;
    m_painter.drawText(row, Qt::AlignLeft | flags, title);
    m_painter.drawText(row, Qt::AlignRight | flags, number);
    const double dot = metrics.horizontalAdvance(u" ."_s);
    const double from = row.left() + metrics.horizontalAdvance(title) + LeaderGap;
    const double to = row.right() - metrics.horizontalAdvance(number) - LeaderGap;
    // The dots of all rows are in line.
    const int first = int(std::ceil((from - row.left()) / dot));
    const int last = int(std::floor((to - row.left()) / dot));
    if (last <= first) return;
    const QRectF leader(row.left() + first * dot, row.top(), (last - first) * dot + dot,
                        row.height());
    m_painter.setPen(Qt::gray);
    m_painter.drawText(leader, Qt::AlignLeft | flags, u" ."_s.repeated(last - first));
}

}  // namespace

SongBookContent makeSongBook(const SongBook& book, const ExchangeProgress& progress) {
    SongBookContent content;
    QList<LibrarySong> songs;
    for (const LibrarySong& song : book.songs) {
        SheetGrid chart;
        if (loadChart(song, chart))
            songs += song;
        else
            content.withoutChart += song.song.title();
    }
    if (songs.isEmpty()) return content;
    bool cancelled = false;
    BookDrawing drawing(book, songs);
    const bool drawn = drawing.draw([&](int done, int all) {
        cancelled = !progress(done, all);
        return !cancelled;
    });
    if (cancelled) return content;
    if (!drawn) {
        content.problem = u"The pages could not be drawn."_s;
        return content;
    }
    content.pdf =
        withOutline(drawing.pdf(), drawing.contentsPages(), drawing.marks(), content.problem);
    if (content.pdf.isEmpty()) return content;
    content.songs = int(songs.size());
    content.pages = drawing.pages();
    return content;
}
