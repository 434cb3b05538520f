// The file and help dialog of the whole program.
#pragma once

#include <QPointer>
#include <QString>

class QWidget;

// Set the members, show it, read FileName. The members keep what they hold between uses.
class CommonDialog {
public:
    enum Flag { OverwritePrompt = 2, AllowMultiselect = 0x200 };

    bool CancelError = false;  // a cancel raises error 32755
    QString Filter;            // pairs "Description|*.ext;*.ext2", joined by "|"
    int FilterIndex = 1;       // the pair shown first, from 1
    QString InitDir;           // the folder to start in; either separator
    QString FileName;          // the name proposed, and afterwards the one chosen; of several
                               // chosen the folder and each name in it, NUL between them
    QString DialogTitle;       // empty: the platform's usual title
    int Flags = 0;
    int MaxFileSize = 0;  // kept for the callers' sake: a result of any length fits
    int HelpCommand = 0;
    QString HelpFile;

    // Waits for the choice of an existing file, or of several where Flags has AllowMultiselect. A
    // cancel leaves FileName and, where CancelError is
    // set, raises 32755.
    void ShowOpen();

    // Waits for the choice of a file to write. A name without one of the filter's endings gets the
    // first of them. Asks before an existing file is chosen where Flags has OverwritePrompt.
    void ShowSave();

    // Shows the dialog by one of the two above with a cancel as an error, and tells whether to go
    // on: false after a cancel, true also after any other error.
    bool chosen(void (CommonDialog::*show)());

    // Shows HelpFile in a window of its own, and says so where there is no such file.
    void ShowHelp();

private:
    void show(bool saves);
    QPointer<QWidget> m_help;
};
