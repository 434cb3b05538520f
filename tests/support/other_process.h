// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Processes beside the test: what happens to them happens to nobody else.
#pragma once

#include <functional>

// Runs something in a separate process that has no rights beyond a user's, also where the tests
// run as the superuser: as nobody there. Returns what the body returns, from 0 to 255.
int asOtherUser(const std::function<int()>& body);

// Runs something in a separate process. Returns what the body returns, from 0 to 255.
int inOtherProcess(const std::function<int()>& body);
