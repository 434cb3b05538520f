// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the print system (CUPS) does with jobs. Qt sends them there and does not report the outcome.
#pragma once

#include <QString>

#include <optional>

// Why the print system did not take the job that this thread has just sent, as a sentence in the
// user's language, or empty if no reason is known. Nothing if it took the job.
std::optional<QString> refusalOfLastJob();

// Returns whether a printer is stopped: it takes jobs, and prints them once it is started again.
bool isStopped(const QString& printerName);
