// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Ends of the program that come from outside.
#pragma once

#include <QObject>

// While it exists, the unsaved work of all windows is kept before SIGTERM, SIGINT or SIGHUP ends
// the process, and when the session ends. The process then ends by the signal as it would without.
// One at a time.
class EndSignals : public QObject {
    Q_OBJECT

public:
    EndSignals();
    ~EndSignals() override;

private:
    void endBySignal();
};
