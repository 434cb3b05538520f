// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The base of the tests of the report windows.
#pragma once

#include "support/grid_hands.h"
#include "support/registry.h"
#include "support/world.h"

class ReportTest : public WindowTest {
    Q_OBJECT

protected:
    // Stores a song with a row for each date on which it was played. Returns the song's ID.
    QString addSong(const QString& title, const QStringList& dates = {},
                    const QString& number = QString());

    // Makes every statement fail that reads a date of this song.
    void makeReadingFail(const QString& songID);
};
