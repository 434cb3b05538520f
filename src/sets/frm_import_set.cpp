// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sets/frm_import_set.h"

#include "core/data/file_copy.h"
#include "platform/desktop/message_box.h"
#include "sets/rules/set_grid.h"
#include "sets/rules/set_record.h"
#include "sets/set_folder.h"

frmImportSet::frmImportSet() {
    setupUi(this);
    Drive1 = browser->Drive1;
    Dir1 = browser->Dir1;
    File1 = browser->File1;
    browser->setMultiSelect(true);
    setUpSet(*fpSet);
    setUpSetWidths(*fpSet);
    fpSet->setReadOnly(true);
    fpSet->setFillColumn(SheetView::AllColumns);
    onEvent(this, cmdPrintPast, &QPushButton::clicked, &frmImportSet::cmdPrintPast_Click);
    setDesignSize(size());
    atEdge(onFailure(), [this] { browseSavedSets(*browser); });
}

void frmImportSet::cmdPrintPast_Click() {
    // Deliberate: behaviour 73. The selected files only set the number of passes.
    for (int i = 0; i < File1->count(); ++i) {
        if (!File1->item(i)->isSelected()) continue;
        loadSetFile(*fpSet, browser->FilePath());
        setUpDateCell(*fpSet);
        const QString fileName = browser->FileName();
        importOneSet(fileName);
        copyFile(browser->FilePath(), savedSetsFolder() + QLatin1Char('\\') + fileName);
    }
    messageBox(QStringLiteral("Done!"), BoxIcon::Information);
}

void frmImportSet::importOneSet(const QString& fileName) {
    // Deliberate: behaviour 73. There is no blank before the name.
    const QString theFile = QStringLiteral("The file") + fileName;
    const QString date = dateOfSet(*fpSet);
    if (date.isEmpty()) {
        messageBox(theFile +
                   QStringLiteral(" does not have a date associated with it.\r"
                                  "Please open the file with the Set List module, assign a date "
                                  "and save it there."));
        return;
    }
    if (!holdsKnownTitle(*fpSet)) {
        messageBox(theFile +
                   QStringLiteral(" does not have any songs assigned to it.\r"
                                  "Please open the file with the Set List module, assign at least "
                                  "one song and save it there."));
        return;
    }
    const Titles titles = titlesToRecord(*fpSet);
    if (countRecorded(titles, date) < MostTitles) recordPlayed(titles, date);
}
