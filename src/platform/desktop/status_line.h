// The status bar of the main window.
#pragma once

#include <QElapsedTimer>
#include <QStatusBar>

// One line of text. Writing it is cheap: a long load may do so for every row, and the line shows
// the newest text some twenty times a second, also while the event loop waits.
class StatusLine : public QStatusBar {
    Q_OBJECT

public:
    explicit StatusLine(QWidget* parent = nullptr);

    QString SimpleText() const { return m_text; }
    void SimpleText(const QString& text);

private:
    void apply();

    QString m_text;
    QElapsedTimer m_sinceShown;
    bool m_pending = false;
};
