// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/shell/show_song.h"

#include "catalogue/frm_song_admin.h"
#include "catalogue/rules/song_list.h"
#include "charts/sheet_music.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/message_box.h"
#include "sets/frm_set_list.h"
#include "sets/rules/song_picker.h"

#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace {

bool selectIn(FormBase& window, SheetView& list, int idColumn, int titleColumn, int songID) {
    const int row = list.SearchCol(idColumn, 1, -1, QString::number(songID));
    if (row < 1) return false;
    window.Show();
    list.SetActiveCell(titleColumn, row);
    list.setFocus();
    return true;
}

bool selectInOpenList(int songID) {
    const QList<QMdiSubWindow*> windows =
        formArea()->subWindowList(QMdiArea::ActivationHistoryOrder);
    for (auto last = windows.crbegin(); last != windows.crend(); ++last) {
        if (!(*last)->isVisible()) continue;
        if (auto* songs = dynamic_cast<frmSongAdmin*>((*last)->widget()))
            if (selectIn(*songs, *songs->fpSongList2, SongListColumn::ID, SongListColumn::Title,
                         songID))
                return true;
        if (auto* sets = dynamic_cast<frmSetList*>((*last)->widget()))
            if (selectIn(*sets, *sets->fpSongList1, PickerColumn::ID, PickerColumn::Title, songID))
                return true;
    }
    return false;
}

bool holdsChart(const SheetGrid& chart) {
    for (int sheet = 1; sheet <= chart.SheetCount(); ++sheet)
        if (chart.dataRowsOf(sheet) > 0) return true;
    return false;
}

}  // namespace

bool showSong(int songID, const QString& chart) {
    if (songID > 0 && selectInOpenList(songID)) return true;
    if (chart.isEmpty() || !QFileInfo(chart).isFile()) return songID == 0;
    if (SheetMusic::isLoaded() && holdsChart(*SheetMusic::instance().fpSong) &&
        messageBox(QStringLiteral("The window SheetMusic has a chart already.\r"
                                  "Do you want to open the chart found in its place?"),
                   BoxIcon::None, QStringLiteral("Lorvanite"), BoxButtons::YesNo) != BoxAnswer::Yes)
        return true;
    SheetMusic::instance().Show();
    SheetMusic::instance().centre();
    SheetMusic::instance().openChart(chart);
    return true;
}
