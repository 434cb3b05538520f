// The window in which the user's guide is read.
#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;
class QTextBrowser;

// Shows one text with headings and links to them, and finds words in it: Ctrl+F goes to the field,
// typing finds the first place, Enter, F3 and the button the next one, Shift+Enter and Shift+F3 the
// one before. The search goes round at the ends and ignores case.
class HelpWindow : public QDialog {
    Q_OBJECT

public:
    explicit HelpWindow(QWidget* parent = nullptr);

    // Reads the guide (Markdown, UTF-8) and shows it from its beginning. Pictures are looked for
    // beside the file, and shrunk to the window's width.
    void showFile(const QString& path);

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    enum class Step { Here, Next, Previous };

    void lay();
    void dress();
    void fitPictures();
    void find(Step step);
    void follow(const QUrl& link);

    QLineEdit* m_find;
    QPushButton* m_next;
    QLabel* m_state;
    QTextBrowser* m_text;
};
