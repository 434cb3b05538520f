// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "charts/chart_output.h"

#include "charts/chart_files.h"
#include "charts/rules/chart_sheets.h"
#include "charts/rules/chart_texts.h"
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

// Hides the grid lines and asks for a file named after the page's title.
bool chooseExport(SheetGrid& chart, const QString& extension, const QString& filter) {
    // Deliberate: behaviour 145.
    showGridLines(chart, false);
    return chooseMusicFile(filter, &CommonDialog::ShowSave, proposedFileName(chart, extension));
}

void tellFailure(const QString& text) { messageBox(text); }

void setLyricFormat(QTextDocument& sheet) {
    QTextCharFormat format;
    format.setFontFamilies({QStringLiteral("Arial")});
    format.setFontPointSize(LyricPoints);
    format.setFontWeight(QFont::Bold);
    QTextBlockFormat centred;
    centred.setAlignment(Qt::AlignHCenter);
    QTextCursor all(&sheet);
    all.select(QTextCursor::Document);
    all.mergeCharFormat(format);
    all.mergeBlockCharFormat(format);
    all.mergeBlockFormat(centred);
}

}  // namespace

void printChart(SheetGrid& chart) {
    if (!mergePages(chart, tellFailure)) return;
    applySetPrintSettings(chart);
    PrintSheet(chart, 1);
    splitMergedPages(chart);
}

// Deliberate: behaviour 121.
void exportChart(SheetGrid& chart) {
    if (!chooseExport(chart, QStringLiteral(".htm"), QStringLiteral("HTML Files|*.htm"))) return;
    if (writePageAsHtml(chart, commonDlg().FileName))
        tellSaved(commonDlg().FileName);
    else
        tellNotSaved();
    showGridLines(chart, true);
}

void mailChart(SheetGrid& chart, NoteButton note) {
    if (!mergePages(chart, tellFailure)) return;
    // The result does not matter. Deliberate: behaviour 148.
    static_cast<void>(chart.ExportRangeToHTML(1, 1, chart.MaxCols(), chart.DataRowCnt(),
                                              mailStagingFile(), false, QStringLiteral("lsl")));
    handOverStagedMail(note);
    splitMergedPages(chart);
}

void saveLyricSheet(SheetGrid& chart, QTextEdit& rtb) {
    if (!chooseExport(chart, QStringLiteral(".rtf"), QStringLiteral("RTF Files|*.rtf"))) return;
    // Deliberate: behaviour 146.
    eraseChords(chart);
    // Deliberate: behaviour 147.
    QTextCursor end(rtb.document());
    end.movePosition(QTextCursor::End);
    for (const QString& lyric : lyricsOfPage(chart)) {
        end.insertBlock();
        end.insertText(lyric);
    }
    setLyricFormat(*rtb.document());
    // Once the dialog has been shown, errors do not stop this command.
    const QString file = commonDlg().FileName;
    if (replaceFile(file, rtfOf(*rtb.document())))
        tellSaved(file);
    else
        setStatusText(QStringLiteral("The lyric sheet could not be written to ") + file);
    showGridLines(chart, true);
}
