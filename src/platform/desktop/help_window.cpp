// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/help_window.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QImageReader>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextTable>
#include <QVBoxLayout>

namespace {

// The name of a heading in links: lower case, with hyphens for blanks and without punctuation.
QString anchorOf(const QString& heading) {
    QString anchor;
    for (const QChar c : heading.toLower()) {
        if (c.isLetterOrNumber()) anchor += c;
        if (c == QLatin1Char(' ') || c == QLatin1Char('-')) anchor += QLatin1Char('-');
    }
    return anchor;
}

// Gives the head row and every other row a background.
void dressTable(QTextTable& table, const QPalette& palette) {
    QTextTableFormat look = table.format();
    look.setCellPadding(5);
    look.setCellSpacing(0);
    look.setBorder(0);
    look.setTopMargin(6);
    look.setBottomMargin(12);
    table.setFormat(look);
    for (int row = 0; row < table.rows(); row += 2)
        for (int col = 0; col < table.columns(); ++col) {
            QTextTableCell cell = table.cellAt(row, col);
            QTextCharFormat ground = cell.format();
            ground.setBackground(row == 0 ? palette.window() : palette.alternateBase());
            cell.setFormat(ground);
        }
}

}  // namespace

HelpWindow::HelpWindow(QWidget* parent)
    : QDialog(parent),
      m_find(new QLineEdit(this)),
      m_next(new QPushButton(tr("Find &Next"), this)),
      m_state(new QLabel(this)),
      m_text(new QTextBrowser(this)) {
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(tr("Lorvanite Help"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    m_find->setObjectName(QStringLiteral("txtFind"));
    m_find->setPlaceholderText(tr("Find in the guide"));
    m_find->setAccessibleName(tr("Find in the guide"));
    m_find->setClearButtonEnabled(true);
    m_next->setObjectName(QStringLiteral("cmdFindNext"));
    m_next->setAccessibleName(tr("Find Next"));
    m_next->setAutoDefault(false);
    m_state->setObjectName(QStringLiteral("lblFound"));
    m_text->setObjectName(QStringLiteral("txtGuide"));
    m_text->setAccessibleName(tr("Guide"));
    m_text->setOpenLinks(false);
    // The width of the text is known before it is laid out.
    m_text->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    lay();
    connect(m_find, &QLineEdit::textEdited, this, [this] { find(Step::Here); });
    connect(m_next, &QPushButton::clicked, this, [this] { find(Step::Next); });
    connect(m_text, &QTextBrowser::anchorClicked, this, &HelpWindow::follow);
}

void HelpWindow::lay() {
    auto* findLayout = new QHBoxLayout;
    findLayout->setSpacing(8);
    findLayout->addWidget(m_find, 1);
    findLayout->addWidget(m_state);
    findLayout->addWidget(m_next);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(8);
    layout->addLayout(findLayout);
    layout->addWidget(m_text);
    resize(760, 640);
}

void HelpWindow::showFile(const QString& path, const QString& heading) {
    const QDateTime stamp = QFileInfo(path).lastModified();
    if (path != m_path || stamp != m_stamp) {
        read(path);
        m_path = path;
        m_stamp = stamp;
    }
    m_text->moveCursor(QTextCursor::Start);
    show();
    raise();
    activateWindow();
    goTo(heading);
}

void HelpWindow::read(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_text->setPlainText(tr("The guide cannot be read: %1.").arg(file.errorString()));
        return;
    }
    m_text->setSearchPaths({QFileInfo(path).absolutePath()});
    // Nothing is laid out, and no picture read, before all measures are known.
    auto* guide = new QTextDocument(m_text);
    guide->setDefaultFont(m_text->document()->defaultFont());
    guide->setMarkdown(QString::fromUtf8(file.readAll()));
    dress(*guide);
    fitPictures(*guide);
    m_text->setDocument(guide);
    delete m_guide;
    m_guide = guide;
}

// Adds space around headings and in tables, which Markdown lacks.
void HelpWindow::dress(QTextDocument& guide) {
    guide.setDocumentMargin(14);
    QTextCursor whole(&guide);
    whole.beginEditBlock();
    for (QTextBlock block = guide.begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        if (level == 0) continue;
        QTextBlockFormat room;
        room.setTopMargin(level > 2 ? 16 : 24);
        room.setBottomMargin(6);
        QTextCursor(block).mergeBlockFormat(room);
    }
    for (QTextFrame* frame : guide.rootFrame()->childFrames())
        if (auto* table = qobject_cast<QTextTable*>(frame)) dressTable(*table, palette());
    whole.endEditBlock();
}

// Limits the width of pictures to that of the text. Both measures are set, so that the text can be
// laid out without the pictures.
void HelpWindow::fitPictures(QTextDocument& guide) {
    const double room = m_text->viewport()->width() - 2 * guide.documentMargin();
    const QDir folder(m_text->searchPaths().value(0));
    QTextCursor edit(&guide);
    edit.beginEditBlock();
    for (QTextBlock block = guide.begin(); block.isValid(); block = block.next())
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            QTextImageFormat picture = fragment.charFormat().toImageFormat();
            if (!picture.isValid()) continue;
            const QSizeF size = QImageReader(folder.filePath(picture.name())).size();
            const QSizeF fitting = size.width() > room ? size * (room / size.width()) : size;
            picture.setWidth(fitting.width());
            picture.setHeight(fitting.height());
            edit.setPosition(fragment.position());
            edit.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
            edit.setCharFormat(picture);
            break;  // the fragments have changed; a picture is the only one in its block
        }
    edit.endEditBlock();
}

void HelpWindow::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    fitPictures(*m_text->document());
}

void HelpWindow::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) dress(*m_text->document());
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->matches(QKeySequence::Find)) {
        m_find->setFocus(Qt::ShortcutFocusReason);
        m_find->selectAll();
    } else if (event->key() == Qt::Key_F3 || (enter && focusWidget() == m_find)) {
        find(event->modifiers() & Qt::ShiftModifier ? Step::Previous : Step::Next);
    } else {
        QDialog::keyPressEvent(event);
    }
}

void HelpWindow::find(Step step) {
    const QString wanted = m_find->text();
    const QTextCursor before = m_text->textCursor();
    QTextCursor from = before;
    // The match of a shorter word may still match the longer one.
    if (step == Step::Here) from.setPosition(before.selectionStart());
    m_text->setTextCursor(from);
    const QTextDocument::FindFlags way =
        step == Step::Previous ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    bool found = !wanted.isEmpty() && m_text->find(wanted, way);
    if (!found && !wanted.isEmpty()) {
        m_text->moveCursor(step == Step::Previous ? QTextCursor::End : QTextCursor::Start);
        found = m_text->find(wanted, way);
        if (!found) m_text->setTextCursor(before);
    }
    // Scrolls on, so that the text below the match is visible as well.
    const int below = m_text->cursorRect().bottom() - m_text->viewport()->height() / 2;
    QScrollBar* bar = m_text->verticalScrollBar();
    if (found && below > 0) bar->setValue(bar->value() + below);
    m_state->setText(found || wanted.isEmpty() ? QString() : tr("not found"));
}

void HelpWindow::follow(const QUrl& link) {
    if (!link.scheme().isEmpty()) {
        QDesktopServices::openUrl(link);
        return;
    }
    goTo(link.fragment());
}

void HelpWindow::goTo(const QString& heading) {
    if (heading.isEmpty()) return;
    for (QTextBlock block = m_text->document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 0 || anchorOf(block.text()) != heading) continue;
        m_text->moveCursor(QTextCursor::End);
        m_text->setTextCursor(QTextCursor(block));
        return;
    }
}
