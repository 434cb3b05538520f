// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A server on this machine that never answers.
#pragma once

#include <QString>

// Accepts connections on a free port of the loopback interface and says nothing.
class SilentServer {
public:
    SilentServer();
    ~SilentServer();
    SilentServer(const SilentServer&) = delete;
    SilentServer& operator=(const SilentServer&) = delete;

    // "127.0.0.1:port".
    QString address() const;

    // Whether somebody has connected since the last call. The connection stays open.
    bool wasCalled() const;

private:
    int m_socket;
    int m_port = 0;
};
