// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The panel that asks which weeks of a schedule are mailed or printed.
#pragma once

#include "ui_choose_email_panel.h"

#include <QFrame>

#include <array>

class ChooseEmailPanel : public QFrame, public Ui::ChooseEmailPanel {
public:
    explicit ChooseEmailPanel(QWidget* parent);

    // What the panel is shown for.
    enum class Output { Mail, Print };

    // The choice between a range of weeks and the whole schedule.
    std::array<QRadioButton*, 2> optEmail{};

    // Shows the panel for an output, and hides it if it is shown. `opener` is the button that was
    // clicked; it gets the keyboard focus back when the panel is hidden.
    void toggle(Output output, QPushButton* opener);
    void hidePanel();

    Output output() const { return m_output; }
    bool isRangeMode() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void paintHead();
    std::array<QWidget*, 4> rangeParts() const;
    void optEmail_Click(int index);

    Output m_output = Output::Mail;
    QPushButton* m_opener = nullptr;
};
