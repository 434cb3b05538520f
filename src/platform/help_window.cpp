#include "platform/help_window.h"

#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QTextBlock>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace {

// A heading's name in links: small letters, blanks as hyphens, nothing else.
QString anchorOf(const QString& heading) {
    QString anchor;
    for (const QChar c : heading.toLower()) {
        if (c.isLetterOrNumber()) anchor += c;
        if (c == QLatin1Char(' ') || c == QLatin1Char('-')) anchor += QLatin1Char('-');
    }
    return anchor;
}

}  // namespace

HelpWindow::HelpWindow(QWidget* parent)
    : QDialog(parent), m_find(new QLineEdit(this)), m_text(new QTextBrowser(this)) {
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(tr("Lorvanite Help"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    m_find->setObjectName(QStringLiteral("txtFind"));
    m_find->setPlaceholderText(tr("Find in the guide"));
    m_find->setAccessibleName(tr("Find in the guide"));
    m_find->setClearButtonEnabled(true);
    m_text->setObjectName(QStringLiteral("txtGuide"));
    m_text->setAccessibleName(tr("Guide"));
    m_text->setOpenLinks(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(8);
    layout->addWidget(m_find);
    layout->addWidget(m_text);
    resize(760, 640);
    connect(m_find, &QLineEdit::returnPressed, this, &HelpWindow::findNext);
    connect(m_text, &QTextBrowser::anchorClicked, this, &HelpWindow::follow);
}

void HelpWindow::showFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_text->setPlainText(tr("The guide cannot be read: %1.").arg(file.errorString()));
    } else {
        m_text->setSearchPaths({QFileInfo(path).absolutePath()});
        m_text->setMarkdown(QString::fromUtf8(file.readAll()));
    }
    m_text->moveCursor(QTextCursor::Start);
    show();
    raise();
    activateWindow();
}

void HelpWindow::findNext() {
    if (m_text->find(m_find->text())) return;
    m_text->moveCursor(QTextCursor::Start);
    m_text->find(m_find->text());
}

void HelpWindow::follow(const QUrl& link) {
    if (!link.scheme().isEmpty()) {
        QDesktopServices::openUrl(link);
        return;
    }
    for (QTextBlock block = m_text->document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 0 || anchorOf(block.text()) != link.fragment())
            continue;
        m_text->moveCursor(QTextCursor::End);
        m_text->setTextCursor(QTextCursor(block));
        return;
    }
}
