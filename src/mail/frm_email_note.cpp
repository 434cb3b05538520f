// The note panel.
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "core/data/texts.h"
#include "mail/frm_email.h"
#include "mail/mail_hand_over.h"

#include <QFile>

namespace {

const QString NoteStart = QStringLiteral("<TABLE Width='400' name = note>");

QString notedFile() { return programFolder() + QStringLiteral("/config/email.html"); }

bool holds(const QString& line, const QString& text) {
    return line.contains(text, Qt::CaseInsensitive);
}

QString withBreaks(QString note) {
    return withUnixLineEnds(note).replace(QLatin1Char('\n'), QLatin1String("<BR>"));
}

}  // namespace

void frmEmail::cmdAddNote_Click() {
    frmNote->raise();
    frmNote->show();
    txtNote->setFocus();
}

void frmEmail::hideNote() {
    frmNote->hide();
    frmNote->lower();
}

void frmEmail::cmdAttachNote_Click() { addNote(); }

void frmEmail::cmdClearNote_Click() { clearNote(); }

void frmEmail::addNote() {
    if (!txtNote->toPlainText().isEmpty()) {
        txtNote->setPlainText(withBreaks(txtNote->toPlainText()));
        QStringList lines = linesOf(notedFile());
        for (QString& line : lines) {
            if (!holds(line, QStringLiteral("<HTML>"))) continue;
            // The line's first six characters are taken to be "<HTML>" itself: this is meant.
            line = line.left(6) + NoteStart + QStringLiteral("<TR><TD>") + txtNote->toPlainText() +
                   QStringLiteral("</TD></TR></TABLE>") + line.mid(6);
        }
        rewriteStagingFile(lines);
    }
    hideNote();
}

void frmEmail::clearNote() {
    QStringList lines;
    // With the note goes its line, which is also the one with "<HTML>", and each line with the
    // table's end: this is meant, mail readers show the rest.
    for (const QString& line : linesOf(notedFile()))
        if (!holds(line, NoteStart) && !holds(line, QStringLiteral("</TABLE>"))) lines += line;
    rewriteStagingFile(lines);
    txtNote->clear();
    frmNote->raise();
}

void frmEmail::rewriteStagingFile(const QStringList& lines) {
    QString text;
    for (const QString& line : lines) text += line + QStringLiteral("\r\n");
    // Replaced whole: the old file stands until the new one is on the disk.
    if (!replaceFile(notedFile(), text.toUtf8())) throw RunTimeError(RunTimeError::PathAccess);
    txtMsg->setPlainText(joinedLinesOf(notedFile()));
}
