// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The window that shows the user's guide.
#pragma once

#include <QDateTime>
#include <QDialog>
#include <QPointer>

class QLabel;
class QLineEdit;
class QPushButton;
class QTextBrowser;
class QTextDocument;

// Shows a text with headings and links to them. Ctrl+F moves the focus to the search field; typing
// finds the first match, Enter, F3 and the button the next one, Shift+Enter and Shift+F3 the
// previous one. The search wraps around and ignores case.
class HelpWindow : public QDialog {
    Q_OBJECT

public:
    explicit HelpWindow(QWidget* parent = nullptr);

    // Shows a Markdown file in UTF-8 from its beginning, or at a heading, given as in links. It is
    // read again only if it has changed since. Paths of pictures are relative to the file; pictures
    // are shrunk to the width of the window, and read when they come into view.
    void showFile(const QString& path, const QString& heading = QString());

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    enum class Step { Here, Next, Previous };

    void lay();
    void read(const QString& path);
    void goTo(const QString& heading);
    void dress(QTextDocument& guide);
    void fitPictures(QTextDocument& guide);
    void find(Step step);
    void follow(const QUrl& link);

    QLineEdit* m_find;
    QPushButton* m_next;
    QLabel* m_state;
    QTextBrowser* m_text;
    QPointer<QTextDocument> m_guide;
    QString m_path;     // of the file shown
    QDateTime m_stamp;  // when it was written
};
