// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Playback of sound files.
#pragma once

#include "core/data/thread_calls.h"

#include <QObject>
#include <QString>

struct mpv_handle;

// Plays one sound file at a time, controlled by commands. No command waits for the disk or the
// sound card. A file that is missing or cannot be played leaves the device closed without a
// message. On a machine without a sound card files play in silence.
class Media : public QObject {
    Q_OBJECT

public:
    explicit Media(QObject* parent = nullptr);
    ~Media() override;

    // The path of the file for the command "Open", with either separator.
    QString FileName;

    // Runs a command, ignoring case: "Open" opens the file at its start, "play" plays it, from the
    // start again if it has reached its end, "pause" pauses, "stop" pauses and returns to the
    // start, "close" closes the file. Without a file all commands but "Open" do nothing; unknown
    // commands do nothing either.
    void Command(const QString& word);

    enum class State { Closed, Held, Playing };

    // The state, updated by the event loop.
    State state() const;

    // The position in the file in seconds, updated by the event loop; 0 if there is no file.
    double position() const { return m_position; }

private:
    void createPlayer();
    void openFile();
    void takeEvents();
    void hold(bool on);
    void goToStart();
    void send(std::initializer_list<const char*> words);

    ThreadCalls m_calls;  // of the player
    mpv_handle* m_player = nullptr;
    bool m_open = false;
    bool m_held = true;
    bool m_atEnd = false;
    double m_position = 0;
};

// The sound device of the process. It outlives the windows.
Media& soundDevice();
