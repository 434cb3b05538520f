#include "charts/chart_output.h"

#include "charts/chart_files.h"
#include "charts/rules/chart_page.h"
#include "core/data/paths.h"
#include "core/grid/sheet_grid.h"
#include "platform/desktop/common_dialog.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"
#include "platform/desktop/program_files.h"
#include "platform/paper/printing.h"
#include "platform/paper/rtf_writer.h"

#include <QTextCursor>
#include <QTextEdit>

#include <tuple>

namespace {

constexpr double LyricPoints = 24;

void showGridLines(SheetGrid& chart, bool on) {
    chart.GridShowHoriz(on);
    chart.GridShowVert(on);
}

// Asks for a file named after the page's title, or `untitled` where it has none.
bool chooseExport(SheetGrid& chart, const QString& ending, const QString& untitled,
                  const QString& filter) {
    // A cancel leaves the lines hidden: this is meant.
    showGridLines(chart, false);
    const QString title = chart.GetText(1, 1);
    commonDlg().FileName = title.isEmpty() ? untitled : title + ending;
    return chooseMusicFile(filter, &CommonDialog::ShowSave);
}

// Lays all further pages under page 1 and puts that on view. After a page without a cell a box
// tells so, and it is false: page 1 keeps the rows added so far, and the page is on view.
bool mergePages(SheetGrid& chart) {
    for (int page = 2; page <= chart.SheetCount(); ++page) {
        chart.ActiveSheet(1);
        addRowsOfPage(chart);
        chart.ActiveSheet(page);
        CellBlock buffer;
        if (!chart.SaveBlockToBuffer(1, 1, chart.MaxCols(), chart.MaxRows(), buffer)) {
            messageBox(QStringLiteral("save to buffer failed"));
            return false;
        }
        chart.ActiveSheet(1);
        if (!chart.LoadBlockFromBuffer(1, chart.MaxRows() - ChartRows + 1, buffer))
            messageBox(QStringLiteral("load from buffer failed"));
    }
    return true;
}

// On page 1 all pages for paper and mail; false where that failed.
bool gatherPages(SheetGrid& chart) {
    chart.SetActiveCell(0, 0);
    return chart.SheetCount() == 1 || mergePages(chart);
}

void releasePages(SheetGrid& chart) {
    if (chart.SheetCount() == 1) return;
    chart.ActiveSheet(1);
    dropAddedRows(chart);
}

void setLyricLetters(QTextDocument& sheet) {
    QTextCharFormat letters;
    letters.setFontFamilies({QStringLiteral("Arial")});
    letters.setFontPointSize(LyricPoints);
    letters.setFontWeight(QFont::Bold);
    QTextBlockFormat centred;
    centred.setAlignment(Qt::AlignHCenter);
    QTextCursor all(&sheet);
    all.select(QTextCursor::Document);
    all.mergeCharFormat(letters);
    all.mergeBlockCharFormat(letters);
    all.mergeBlockFormat(centred);
}

}  // namespace

void printChart(SheetGrid& chart) {
    if (!gatherPages(chart)) return;
    applySetPrintSettings(chart);
    PrintSheet(chart, 1);
    releasePages(chart);
}

void exportChart(SheetGrid& chart) {
    if (!chooseExport(chart, QStringLiteral(".htm"), QStringLiteral("Song.htm"),
                      QStringLiteral("HTML Files|*.htm")))
        return;
    const bool written = chart.ExportRangeToHTML(
        1, 1, chart.MaxCols(), chart.MaxRows(), commonDlg().FileName, false, QStringLiteral("lsl"));
    if (!written) tellNotSaved();
    showGridLines(chart, true);
}

void mailChart(SheetGrid& chart, NoteButton note) {
    if (!gatherPages(chart)) return;
    // Where this fails, what an earlier export has left is mailed: this is meant.
    std::ignore = chart.ExportRangeToHTML(1, 1, chart.MaxCols(), chart.DataRowCnt(),
                                          mailStagingFile(), false, QStringLiteral("lsl"));
    handOverStagedMail(note);
    releasePages(chart);
}

void saveLyricSheet(SheetGrid& chart, QTextEdit& rtb) {
    if (!chooseExport(chart, QStringLiteral(".rtf"), QStringLiteral("Song.rtf"),
                      QStringLiteral("RTF Files|*.rtf")))
        return;
    // The page loses its chords for its lyric sheet: this is meant.
    for (int row = FirstChordRow; row <= chart.MaxRows(); row += 2)
        chart.ClearRange(1, row, chart.MaxCols(), row, true);
    // What an earlier sheet has left stands ahead of this one: this is meant.
    QTextCursor end(rtb.document());
    end.movePosition(QTextCursor::End);
    for (int row = FirstLyricRow; row <= chart.MaxRows(); row += 2) {
        end.insertBlock();
        end.insertText(chart.GetText(1, row));
    }
    setLyricLetters(*rtb.document());
    // From the dialog on errors do not stop the command, and none is told.
    std::ignore = replaceFile(commonDlg().FileName, rtfOf(*rtb.document()));
    showGridLines(chart, true);
}
