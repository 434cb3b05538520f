// The little bar that finds a text in a grid.
#pragma once

#include <QFrame>

class QLabel;
class QLineEdit;

// Lies over its parent's upper right corner while it is open. Asks for the next place at each
// change of its text and at Enter, for the previous one at Shift+Enter; Escape closes it.
class FindBar : public QFrame {
    Q_OBJECT

public:
    explicit FindBar(QWidget* parent);

    // Opens it, with its text selected, over the area.
    void openOver(const QRect& area);

    // Keeps it at the area's corner.
    void follow(const QRect& area);

    // Tells whether the last search met something.
    void setFound(bool found);

Q_SIGNALS:
    // step: 0 from the current place on, 1 the next one, -1 the previous one.
    void searched(const QString& text, int step);
    void closed();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void end();

    QLineEdit* m_text;
    QLabel* m_state;
};
