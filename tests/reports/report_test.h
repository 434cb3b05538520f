// What the tests of the report windows share.
#pragma once

#include "support/grid_hands.h"
#include "support/registry.h"
#include "support/world.h"

class ReportTest : public WindowTest {
    Q_OBJECT

protected:
    // Stores a song with a row for each date on which it was played. The ID that the song gets.
    QString addSong(const QString& title, const QStringList& dates = {},
                    const QString& number = QString());

    // From now on a statement fails when it reads a date of this song.
    void makeReadingFail(const QString& songID);
};
