// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A label for texts of any length.
#pragma once

#include <QLabel>

// Shows its text as plain text in one line, shortened with an ellipsis if it is too long; then the
// whole text is its tool tip. The text has no influence on the width of the label or its window.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    // Sets where the text is shortened, initially at its end.
    void setElideMode(Qt::TextElideMode mode);

    // The text as it is shown.
    QString shownText() const;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString line() const;

    Qt::TextElideMode m_mode = Qt::ElideRight;
};
