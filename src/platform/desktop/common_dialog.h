// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The file and help dialog that all windows share.
#pragma once

#include <QPointer>
#include <QString>

class QWidget;

// A file dialog that is used by setting its members, showing it and reading FileName. The members
// keep their values between uses.
class CommonDialog {
public:
    enum Flag { OverwritePrompt = 2, AllowMultiselect = 0x200 };

    bool CancelError = false;  // whether a cancel raises RunTimeError::DialogCancelled
    QString Filter;            // pairs "Description|*.ext;*.ext2", separated by "|"
    int FilterIndex = 1;       // the pair that is selected first, from 1
    QString InitDir;           // the folder to start in, with either separator
    QString FileName;          // the proposed name, and afterwards the chosen one; if several were
                               // chosen, their folder and their names, separated by NUL
    QString DialogTitle;       // empty: the usual title
    int Flags = 0;
    int MaxFileSize = 0;  // has no effect: a result may have any length
    int HelpCommand = 0;  // has no effect: the file is shown from its beginning
    QString HelpFile;

    // Lets the user choose an existing file, or several if Flags has AllowMultiselect. If the user
    // cancels, FileName does not change, and RunTimeError::DialogCancelled is raised if CancelError
    // is set.
    void ShowOpen();

    // Lets the user choose a file to write. A name without an extension of the filter gets its
    // first one. Asks before an existing file is chosen if Flags has OverwritePrompt. A cancel is
    // as above.
    void ShowSave();

    // Lets the user choose an existing folder, starting in `start`. `button` is the caption of the
    // button that accepts. Returns its path; empty if the user cancelled. The members have no part
    // in this.
    static QString chosenFolder(const QString& title, const QString& button, const QString& start);

    // Sets CancelError and calls ShowOpen or ShowSave. Returns false if the user cancelled, and
    // true otherwise, even after another error. Deliberate: behaviour 15.
    bool chosen(void (CommonDialog::*show)());

    // Shows HelpFile in the help window, from its beginning or at a heading ("Your first Sunday" is
    // "your-first-sunday"), or a message if there is no such file.
    void ShowHelp(const QString& heading = QString());

private:
    void show(bool saves);
    QPointer<QWidget> m_help;
};
