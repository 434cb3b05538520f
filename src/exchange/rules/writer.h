// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Writes songs, people, played dates and schedules as bytes of files. The same content gives the
// same bytes.
#pragma once

#include "exchange/rules/song.h"

#include <QByteArray>
#include <QDateTime>

// ChordPro 6, one or more songs in a file.
QByteArray writeChordPro(const QList<Song>& songs);

// OpenLyrics 0.9. A song without title or verses gets what the form asks for.
QByteArray writeOpenLyrics(const Song& song);

// Plain text, with the chords in lines over the lyrics. Where names of chords would run into each
// other, the later one moves to the right.
QByteArray writeSongText(const Song& song);

// Tables with a head row. Songs have title, artist, key, CCLI number and categories first.
QByteArray writeSongsCsv(const QList<Song>& songs);
QByteArray writePeopleCsv(const QList<Contact>& people);
// Dates are written as yyyy-mm-dd.
QByteArray writePlayedCsv(const QList<PlayedDate>& played);

// A service in a schedule.
struct ServiceDate {
    struct Assignment {
        QString role;
        QString person;
    };

    QDate date;
    QList<Assignment> team;
    QStringList songs;
    QString notes;
};

// An iCalendar file with one event a date: who serves, the songs, the notes. With a person's name
// it holds the dates on which that person serves, and what as. An event keeps its UID for good; its
// SEQUENCE grows with `stamp`, the time of writing, so that a second import updates the first.
// Dates that are not valid are left out; of two services on one date each gets its event.
QByteArray writeCalendar(const QList<ServiceDate>& dates, const QDateTime& stamp,
                         const QString& person = {});
