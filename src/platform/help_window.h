// The window in which the user's guide is read.
#pragma once

#include <QDialog>

class QLineEdit;
class QTextBrowser;

// Shows one text with headings and links to them, and finds words in it.
class HelpWindow : public QDialog {
    Q_OBJECT

public:
    explicit HelpWindow(QWidget* parent = nullptr);

    // Reads the guide (Markdown, UTF-8) and shows it from its beginning. Pictures are looked for
    // beside the file.
    void showFile(const QString& path);

private:
    void findNext();
    void follow(const QUrl& link);

    QLineEdit* m_find;
    QTextBrowser* m_text;
};
