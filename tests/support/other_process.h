// A process that writes only where its user may, and one whose disk is full.
#pragma once

#include <functional>

// Runs something in a separate process that has no rights beyond a user's, also where the tests
// run as the superuser: as nobody there. Returns what the body returns, from 0 to 255.
int asOtherUser(const std::function<int()>& body);

// From here on no file of this process grows past so many bytes: its writes fail.
void limitFiles(long bytes);

// Runs something in a separate process. Returns what the body returns, from 0 to 255.
int inOtherProcess(const std::function<int()>& body);
