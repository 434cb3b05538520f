// A list that comes up at the mouse.
#pragma once

#include <QListWidget>
#include <QPointer>

// Shows texts to pick one from. It goes away at Escape and when the keyboard goes elsewhere.
class PopUpList : public QListWidget {
    Q_OBJECT

public:
    explicit PopUpList(QWidget* parent = nullptr);

    // Comes up with its top left corner at a place of the parent, nearer where it would stand
    // out of the parent, and takes the keyboard.
    void popUp(const QPoint& place);

    // Goes away and gives the keyboard back to where it was.
    void dismiss();

    // The text that is picked; empty where none is.
    QString Text() const;

Q_SIGNALS:
    // The list was clicked, on a text or beside all, or Enter was pressed.
    void Click();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void fitToItems();

    QPointer<QWidget> m_before;  // had the keyboard when the list came up
};
