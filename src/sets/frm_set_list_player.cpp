// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The panel that plays a song of the list.
#include "platform/theme/theme.h"
#include "sets/frm_set_list.h"
#include "sets/rules/song_picker.h"

namespace {

constexpr int PressedLookTime = 1000;  // milliseconds

}  // namespace

void frmSetList::setUpPlayer() {
    const struct {
        QToolButton* button;
        const char* icon;
        QToolButton* pressedLook;
    } looks[] = {
        {imgPlay, "play", imgPlay2},
        {imgPause, "pause", imgPause2},
        {imgS, "stop", imgS2},
        {imgClose, "close", nullptr},
    };
    for (const auto& look : looks) {
        const QIcon icon = themedIcon(QLatin1String(look.icon));
        look.button->setIcon(icon);
        if (!look.pressedLook) continue;
        look.pressedLook->setIcon(icon);
        look.pressedLook->setDown(true);
        // It covers its button, but leaves the clicks to it.
        look.pressedLook->setAttribute(Qt::WA_TransparentForMouseEvents);
        look.pressedLook->raise();
    }
    onEvent(this, imgPlay, &QToolButton::clicked, &frmSetList::imgPlay_Click);
    onEvent(this, imgPause, &QToolButton::clicked, &frmSetList::imgPause_Click);
    onEvent(this, imgS, &QToolButton::clicked, &frmSetList::imgS_Click);
    onEvent(this, imgClose, &QToolButton::clicked, &frmSetList::imgClose_Click);
    onEscape(this, this, &frmSetList::closePlayer);
    onEvent(this, &playerTimer, &QTimer::timeout, &frmSetList::playerTimer_Timer);
    playerTimer.setInterval(PressedLookTime);
    mm.Command(QStringLiteral("close"));
}

void frmSetList::openPlayer(int row) {
    const QString soundFile = soundFileOf(fpSongList1->GetText(PickerColumn::ID, row));
    lblPlayTitle->setText(fpSongList1->GetText(PickerColumn::Title, row));
    // Close the song that may still be open.
    mm.Command(QStringLiteral("close"));
    mm.FileName = soundFile;
    mm.Command(QStringLiteral("Open"));
    picPlayer->setVisible(true);
}

void frmSetList::pressPlayerButton(QToolButton* pressedLook, const QString& command) {
    pressedLook->setVisible(true);
    // A timer that is already running hides this look too.
    if (!playerTimer.isActive()) playerTimer.start();
    mm.Command(command);
}

void frmSetList::imgPlay_Click() { pressPlayerButton(imgPlay2, QStringLiteral("play")); }

void frmSetList::imgPause_Click() { pressPlayerButton(imgPause2, QStringLiteral("pause")); }

void frmSetList::imgS_Click() { pressPlayerButton(imgS2, QStringLiteral("stop")); }

void frmSetList::playerTimer_Timer() {
    playerTimer.stop();
    imgPlay2->setVisible(false);
    imgS2->setVisible(false);
    imgPause2->setVisible(false);
}

// Escape, wherever the keyboard focus is: the player opens without taking it.
void frmSetList::closePlayer() {
    if (picPlayer->isVisible()) imgClose_Click();
}

void frmSetList::imgClose_Click() {
    mm.Command(QStringLiteral("stop"));
    mm.Command(QStringLiteral("close"));
    // The keyboard focus goes back to the list of songs.
    fpSongList1->setFocus();
    picPlayer->setVisible(false);
}
