// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/silent_server.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

SilentServer::SilentServer() : m_socket(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0)) {
    sockaddr_in place = {};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof place;
    auto* address = reinterpret_cast<sockaddr*>(&place);
    if (bind(m_socket, address, size) == 0 && listen(m_socket, 1) == 0 &&
        getsockname(m_socket, address, &size) == 0)
        m_port = ntohs(place.sin_port);
}

SilentServer::~SilentServer() { close(m_socket); }

QString SilentServer::address() const { return QStringLiteral("127.0.0.1:%1").arg(m_port); }

bool SilentServer::wasCalled() const { return accept(m_socket, nullptr, nullptr) >= 0; }
