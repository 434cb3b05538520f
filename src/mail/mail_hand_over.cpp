#include "mail/mail_hand_over.h"

#include "core/paths.h"
#include "core/run_time_error.h"
#include "mail/frm_email.h"

#include <QFile>

QString mailStagingFile() { return programFolder() + QStringLiteral("\\config\\email.html"); }

QStringList linesOf(const QString& path) {
    QFile file(resolvedPath(path));
    if (!file.exists()) throw RunTimeError(RunTimeError::FileNotFound);
    if (!file.open(QIODevice::ReadOnly)) throw RunTimeError(RunTimeError::PathAccess);
    QString text = QString::fromUtf8(file.readAll());
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    if (text.endsWith(QLatin1Char('\n'))) text.chop(1);
    return text.isEmpty() ? QStringList() : text.split(QLatin1Char('\n'));
}

QString joinedLinesOf(const QString& path) { return linesOf(path).join(QString()); }

void fillMail(const QString& html, NoteButton note) {
    frmEmail& mail = frmEmail::instance();
    mail.txtMsg->setPlainText(html);
    // A prepared body is no station of the Tab key.
    mail.txtMsg->setFocusPolicy(Qt::ClickFocus);
    if (note == NoteButton::Shown) mail.cmdAddNote->setVisible(true);
}

void handOverMail(const QString& html, NoteButton note) {
    fillMail(html, note);
    frmEmail::instance().Show();
}

void handOverStagedMail(NoteButton note) { handOverMail(joinedLinesOf(mailStagingFile()), note); }
