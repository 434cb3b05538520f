// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "team/choose_email_panel.h"

#include "platform/theme/theme.h"

#include <QApplication>
#include <QKeyEvent>

namespace {

// The items of optEmail.
constexpr int RangeMode = 0;
constexpr int WholeMode = 1;

}  // namespace

ChooseEmailPanel::ChooseEmailPanel(QWidget* parent) : QFrame(parent) {
    setupUi(this);
    optEmail = {optEmail_0, optEmail_1};
    Command4->setIcon(themedIcon(QStringLiteral("close")));
    paintHead();
    // The panel keeps its size while the dates are hidden.
    for (QWidget* part : rangeParts()) {
        QSizePolicy policy = part->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        part->setSizePolicy(policy);
    }
    optEmail_Click(WholeMode);
    for (int i : {RangeMode, WholeMode})
        connect(optEmail[size_t(i)], &QRadioButton::clicked, this,
                [this, i] { optEmail_Click(i); });
    connect(Command4, &QToolButton::clicked, this, [this] { hidePanel(); });
}

void ChooseEmailPanel::paintHead() {
    QFont font = Label16->font();
    font.setFamilies(QStringList(QStringLiteral("Arial Black")) + font.families());
    font.setWeight(QFont::Black);
    Label16->setFont(font);
    // The bright caption needs a dark ground, in the light theme too.
    QPalette colours = Label16->palette();
    colours.setColor(QPalette::Window, themeColours(false).accent);
    colours.setColor(QPalette::WindowText, QColor(0, 255, 255));
    Label16->setPalette(colours);
}

std::array<QWidget*, 4> ChooseEmailPanel::rangeParts() const {
    return {lblfrm, txtFrom, lblto, txtto};
}

void ChooseEmailPanel::optEmail_Click(int index) {
    for (QWidget* part : rangeParts()) part->setVisible(index == RangeMode);
}

bool ChooseEmailPanel::isRangeMode() const { return optEmail[RangeMode]->isChecked(); }

// Either button hides the panel that the other one has shown.
// Deliberate: behaviour 106.
void ChooseEmailPanel::toggle(Output output, QPushButton* opener) {
    if (isVisible()) {
        hidePanel();
        return;
    }
    const bool mails = output == Output::Mail;
    optEmail[RangeMode]->setText(mails ? QStringLiteral("e-Mail Range of &Weeks")
                                       : QStringLiteral("Print Range of &Weeks"));
    optEmail[WholeMode]->setText(mails ? QStringLiteral("e-Mail W&hole Schedule")
                                       : QStringLiteral("Print W&hole Schedule"));
    cmdSend->setText(mails ? QStringLiteral("Send") : QStringLiteral("Print"));
    m_output = output;
    m_opener = opener;
    show();
    raise();
    optEmail[isRangeMode() ? RangeMode : WholeMode]->setFocus();
}

void ChooseEmailPanel::hidePanel() {
    const bool hadFocus = isAncestorOf(QApplication::focusWidget());
    hide();
    if (hadFocus) m_opener->setFocus();
}

void ChooseEmailPanel::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QFrame::keyPressEvent(event);
    else if (Command4->hasFocus())
        hidePanel();
    else
        cmdSend->click();
}
