// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The name by which this computer identifies itself to a mail server.
#pragma once

#include <QString>

// The full host name, or else an address literal such as "[192.0.2.1]" or "[IPv6:2001:db8::1]".
// May wait two seconds for the name service.
QString clientName();

// Whether a name is a full host name, such as "office.example.org". Names that mean the computer
// itself are not.
bool isFullHostName(const QString& name);

// The address literal of an IPv4 or IPv6 address.
QString addressLiteral(const QString& address);
