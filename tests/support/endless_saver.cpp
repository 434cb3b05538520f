// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/endless_saver.h"

#include "core/data/database.h"
#include "core/data/paths.h"
#include "core/shell/frm_mdi.h"
#include "sets/frm_set_list.h"
#include "support/answers.h"

#include <QFile>

#include <cstdio>

namespace {

// The round after the recorded one, because the program does not ask again about a recorded set.
int firstRound() {
    Recordset rs;
    rs.Open(QStringLiteral("SELECT title FROM played_on"), dbConn, CursorType::Dynamic,
            LockType::ReadOnly);
    const int round = rs.EOF_() ? 1 : rs.Fields("title").mid(6, 1).toInt() + 1;
    rs.Close();
    return round;
}

}  // namespace

void saveForEver(const QString& folder) {
    setProgramFolder(folder);
    frmMDI main;
    main.show();
    frmSetList& window = frmSetList::instance();
    window.Show();
    Answers answers;
    window.fpSet->SetText(2, 1, QStringLiteral("11/22/26"));
    for (int round = firstRound();; ++round) {
        // The catalogue has songs with these titles for every round.
        for (int row = 2; row <= 24; ++row)
            window.fpSet->SetText(2, row, QStringLiteral("Round %1, %2").arg(round % 9).arg(row));
        answers.custom(QStringLiteral("question"), [](QWidget* box) {
            qobject_cast<QMessageBox*>(box)->button(QMessageBox::Yes)->click();
        });
        const QString file = folder + QStringLiteral("/saved sets/kill.set");
        answers.file(file);
        if (QFile::exists(file))
            answers.custom(QStringLiteral("overwrite question"), [](QWidget* box) {
                qobject_cast<QMessageBox*>(box)->button(QMessageBox::Yes)->click();
            });
        window.saveSet();
        std::printf("%d\n", round);
        std::fflush(stdout);
    }
}
