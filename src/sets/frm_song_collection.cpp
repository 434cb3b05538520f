#include "sets/frm_song_collection.h"

#include "charts/chart_output.h"
#include "charts/rules/chart_page.h"
#include "core/data/paths.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"
#include "platform/paper/printing.h"

#include <QMdiArea>
#include <QMdiSubWindow>

namespace {

constexpr int WindowWidth = 4425;  // twips
constexpr int WindowHeight = 2940;

}  // namespace

frmSongCollection::frmSongCollection() {
    setupUi(this);
    lblSngList->setBackgroundRole(QPalette::Base);
    fpT.MaxCols(ChartCols);
    fpT.MaxRows(ChartRows);
    fpSong.GridShowHoriz(false);
    fpSong.GridShowVert(false);
    watchActivation();
    onEvent(this, cmdPrint, &QPushButton::clicked, &frmSongCollection::cmdPrint_Click);
    onEvent(this, Command1, &QPushButton::clicked, &frmSongCollection::Command1_Click);
    setDesignSize(QSize(px(WindowWidth), px(WindowHeight)));
    centre();
}

// A box over the program, or another program, takes no activation away: coming back from them is
// none.
void frmSongCollection::watchActivation() {
    connect(formArea(), &QMdiArea::subWindowActivated, this, [this](const QMdiSubWindow* window) {
        if (!window) return;
        const bool isActive = window->widget() == this;
        if (isActive && !m_isActive) Form_Activate();
        m_isActive = isActive;
    });
}

// Each activation adds the names once more: this is meant.
void frmSongCollection::Form_Activate() {
    QString names = lblSngList->text();
    for (const QString& path : lblHidFile->text().split(QLatin1Char('|')))
        names += fileNameOf(path) + QLatin1Char('\n');
    lblSngList->setText(names);
}

QStringList frmSongCollection::chartPaths() const {
    QStringList paths = lblHidFile->text().split(QLatin1Char('|'));
    paths.removeLast();  // nothing stands behind the last "|"
    return paths;
}

void frmSongCollection::stackCharts() {
    fpSong.MaxRows(0);
    fpSong.MaxCols(0);
    for (const QString& path : chartPaths()) {
        // In place of a chart that cannot be opened the one before it comes once more: this is
        // meant.
        fpT.LoadFromFile(path);
        // Of a chart of several pages this is the one on view.
        CellBlock buffer;
        if (!fpT.SaveBlockToBuffer(1, 1, fpT.MaxCols(), fpT.MaxRows(), buffer))
            messageBox(QStringLiteral("save to buffer failed"));
        const int above = fpSong.MaxRows();
        fpSong.MaxCols(fpT.MaxCols());
        fpSong.MaxRows(above + fpT.MaxRows());
        if (!fpSong.LoadBlockFromBuffer(1, above + 1, buffer))
            messageBox(QStringLiteral("load from buffer failed"));
        fpSong.Row(fpSong.MaxRows());
        fpSong.RowPageBreak(true);
    }
}

void frmSongCollection::layoutCollection() { formatStackedCharts(fpSong); }

void frmSongCollection::printCollection() {
    stackCharts();
    layoutCollection();
    applySetPrintSettings(fpSong);
    PrintSheet(fpSong, 1);
}

void frmSongCollection::cmdPrint_Click() { printCollection(); }

void frmSongCollection::mailCollection() {
    stackCharts();
    layoutCollection();
    // Several charts leave the button as it was, as several pages of one chart do: this is meant.
    mailChart(fpSong, chartPaths().size() == 1 ? NoteButton::Shown : NoteButton::AsItWas);
}

void frmSongCollection::Command1_Click() { mailCollection(); }
