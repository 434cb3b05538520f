// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Completion of a text typed into a combo box.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

class QComboBox;
class QLineEdit;

// Completes what is typed into an editable combo box to an item, in the item's own spelling, as
// soon as no other item begins like it. It takes the place of the box's own completer and belongs
// to the box.
class ItemCompletion : public QObject {
    Q_OBJECT

public:
    explicit ItemCompletion(QComboBox& box);

    // If several items begin with the typed text, and none is the text, opens the list at the first
    // of them. Returns false if there is nothing to choose, or this text has been offered already.
    bool offer();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void complete(const QString& typed);
    QStringList itemsLike(const QString& typed) const;
    QLineEdit& line() const;

    QComboBox& m_box;
    bool m_removing = false;  // the last key removes text
    QString m_typed;          // what the user has typed; empty if an item was picked or completed
    QString m_offered;
};
