// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The dates on which a song was played.
#include "catalogue/song_admin_hands.h"
#include "support/registry.h"

namespace {

const QString ThreeDates = QStringLiteral(
    "INSERT INTO songs (ID, title, cat1) VALUES (4, 'Song', 'Praise');"
    "INSERT INTO played_on (ID, title, played_date, songID) VALUES (11, 'Song', '12/31/05', 4), "
    "(12, 'Song', '01/01/06', 4), (15, 'Song', '06/12/04', 4), (16, 'Else', '06/12/04', 9)");

QString insertion(const QString& title, const QString& date) {
    return QStringLiteral(
               "INSERT INTO played_on (title, played_date, songID) VALUES "
               "('%1', '%2', 4); [3]")
        .arg(title, date);
}

QString deletion(int id) {
    return QStringLiteral("DELETE FROM played_on WHERE ID = %1 [3]").arg(id);
}

}  // namespace

class TestPlayedDates : public SongAdminTest {
    Q_OBJECT

    frmSongAdmin& openSong() {
        frmSongAdmin& w = open();
        showSong("Song");
        world->statements.clear();
        return w;
    }

    QStringList dates() {
        return world->rows("SELECT title, played_date FROM played_on WHERE songID = 4 ORDER BY ID");
    }

private Q_SLOTS:
    // Deliberate: behaviour 38.
    void datesAreShownInTableOrder() {
        world->sql(ThreeDates);
        frmSongAdmin& w = openSong();
        QCOMPARE(columnOf(w.fpdp, PlayedDateColumn::ID), (QStringList{"11", "12", "15", ""}));
        QCOMPARE(columnOf(w.fpdp, PlayedDateColumn::Date),
                 (QStringList{"12/31/05", "01/01/06", "06/12/04", ""}));
        QCOMPARE(columnOf(w.fpdp, PlayedDateColumn::SongID), (QStringList{"4", "4", "4", ""}));
        QCOMPARE(w.fpdp->GetText(PlayedDateColumn::Date, 0), QStringLiteral("Last Played"));
    }

    void songWithoutDatesKeepsOneEmptyRow() {
        world->sql(ThreeDates + ";INSERT INTO songs (title) VALUES ('New')");
        frmSongAdmin& w = openSong();
        showSong("New");
        QCOMPARE(columnOf(w.fpdp, PlayedDateColumn::Date), QStringList{""});
        QCOMPARE(columnOf(w.fpdp, PlayedDateColumn::ID), QStringList{""});
    }

    // Deliberate: behaviour 35.
    void updateWithoutAChangeReplacesTheRowsOfTheDates() {
        world->sql(ThreeDates);
        frmSongAdmin& w = openSong();
        click(w.cmdAdd);
        QCOMPARE(world->statements.size(), 7);
        QVERIFY(world->statements.first().startsWith("UPDATE songs SET title = 'Song'"));
        QCOMPARE(world->statements.mid(1),
                 (QStringList{deletion(11), insertion("Song", "12/31/05"), deletion(12),
                              insertion("Song", "01/01/06"), deletion(15),
                              insertion("Song", "06/12/04")}));
        QCOMPARE(dates(), (QStringList{"Song|12/31/05", "Song|01/01/06", "Song|06/12/04"}));
        QCOMPARE(world->rows("SELECT ID FROM played_on WHERE songID = 4 AND ID <= 16"),
                 QStringList());
        QCOMPARE(world->rows("SELECT ID FROM played_on WHERE songID = 9"), QStringList{"16"});
    }

    void emptiedDateIsRemoved() {
        world->sql(ThreeDates);
        frmSongAdmin& w = openSong();
        typeInCell(w.fpdp, PlayedDateColumn::Date, 2, "");
        click(w.cmdAdd);
        QCOMPARE(world->statements.mid(1),
                 (QStringList{deletion(11), insertion("Song", "12/31/05"), deletion(12),
                              deletion(15), insertion("Song", "06/12/04")}));
        QCOMPARE(dates(), (QStringList{"Song|12/31/05", "Song|06/12/04"}));
    }

    void dateTypedInTheOnlyRowIsAdded() {
        world->sql("INSERT INTO songs (ID, title, cat1) VALUES (4, 'Song', 'Praise')");
        frmSongAdmin& w = openSong();
        typeInCell(w.fpdp, PlayedDateColumn::Date, 1, "11/15/26");
        click(w.cmdAdd);
        QCOMPARE(world->statements.mid(1), QStringList{insertion("Song", "11/15/26")});
        QCOMPARE(dates(), QStringList{"Song|11/15/26"});
        click(w.Command12);
        QCOMPARE(w.fpSongList2->GetText(SongListColumn::LastPlayed, 1), QStringLiteral("11/15/26"));
    }

    void datesTypedInTheSpareRowsAreAdded() {
        world->sql(ThreeDates);
        frmSongAdmin& w = openSong();
        typeInCell(w.fpdp, PlayedDateColumn::Date, 4, "11/15/26");
        QCOMPARE(w.fpdp->MaxRows(), 5);
        typeInCell(w.fpdp, PlayedDateColumn::Date, 5, "11/22/26");
        click(w.cmdAdd);
        QCOMPARE(dates(), (QStringList{"Song|12/31/05", "Song|01/01/06", "Song|06/12/04",
                                       "Song|11/15/26", "Song|11/22/26"}));
    }

    void datesTypedOneAfterTheOtherAreAllAdded() {
        world->sql("INSERT INTO songs (ID, title, cat1) VALUES (4, 'Song', 'Praise')");
        frmSongAdmin& w = openSong();
        w.fpdp->setFocus(Qt::TabFocusReason);
        QCOMPARE(w.fpdp->ActiveRow(), 0);
        for (const char* date : {"09/06/26", "09/13/26", "09/20/26"}) {
            QTest::keyClicks(QApplication::focusWidget(), QLatin1String(date).left(1));
            QTest::keyClicks(QApplication::focusWidget(), QString::fromLatin1(date).mid(1));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        }
        click(w.cmdAdd);
        QCOMPARE(dates(), (QStringList{"Song|09/06/26", "Song|09/13/26", "Song|09/20/26"}));
    }

    void dateTypedIntoTheFocusedDatesIsAdded() {
        world->sql(ThreeDates);
        frmSongAdmin& w = openSong();
        w.fpdp->setFocus(Qt::TabFocusReason);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_0);
        QTest::keyClicks(QApplication::focusWidget(), "9/06/26");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        click(w.cmdAdd);
        QCOMPARE(dates(),
                 (QStringList{"Song|12/31/05", "Song|01/01/06", "Song|06/12/04", "Song|09/06/26"}));
    }

    // Deliberate: behaviour 35.
    void newTitleIsWrittenToAllDates() {
        world->sql(ThreeDates);
        frmSongAdmin& w = openSong();
        typeInSong(SongRow::Title, "Singer's Song");
        click(w.cmdAdd);
        QCOMPARE(dates(), (QStringList{"Singers Song|12/31/05", "Singers Song|01/01/06",
                                       "Singers Song|06/12/04"}));
    }

    // Deliberate: behaviours 33 and 37.
    void newSongWithDatesShownFailsWithoutLosingADate() {
        world->sql(ThreeDates);
        frmSongAdmin& w = openSong();
        click(w.cmdClear);
        QCOMPARE(columnOf(w.fpdp, PlayedDateColumn::Date),
                 (QStringList{"12/31/05", "01/01/06", "06/12/04", ""}));
        typeInSong(SongRow::Title, "New");
        typeInSong(SongRow::Category1, "Praise");
        world->answers.runTimeError(RunTimeError::TypeMismatch, "the date \"12/31/05\" in row 1");
        click(w.cmdAdd);
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(world->statements.size(), 1);
        QVERIFY(world->statements.first().startsWith("INSERT INTO songs "));
        QCOMPARE(world->rows("SELECT title FROM songs ORDER BY ID"), (QStringList{"Song", "New"}));
        QCOMPARE(world->rows("SELECT ID, played_date FROM played_on WHERE songID = 4 ORDER BY ID"),
                 (QStringList{"11|12/31/05", "12|01/01/06", "15|06/12/04"}));
    }

    // Deliberate: behaviours 33 and 37.
    void datesStayShownAfterAnUpdate() {
        world->sql(ThreeDates);
        frmSongAdmin& w = openSong();
        click(w.cmdAdd);
        typeInSong(SongRow::Title, "New");
        typeInSong(SongRow::Category1, "Praise");
        world->answers.runTimeError(RunTimeError::TypeMismatch, "the date \"12/31/05\" in row 1");
        click(w.cmdAdd);
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(dates(), (QStringList{"Song|12/31/05", "Song|01/01/06", "Song|06/12/04"}));
    }

    void newSongWithoutDatesShownIsAdded() {
        world->sql("INSERT INTO songs (ID, title, cat1) VALUES (4, 'Song', 'Praise')");
        frmSongAdmin& w = openSong();
        click(w.cmdClear);
        typeInSong(SongRow::Title, "New");
        typeInSong(SongRow::Category1, "Praise");
        click(w.cmdAdd);
        QCOMPARE(world->endStatus, -1);
        QCOMPARE(world->rows("SELECT title FROM songs ORDER BY ID"), (QStringList{"Song", "New"}));
    }

    void dateOfAnotherFormIsStoredAsTyped_data() {
        QTest::addColumn<QString>("date");
        QTest::newRow("year first") << "2005-06-12";
        QTest::newRow("words") << "Easter 2005";
        QTest::newRow("before the grid's dates") << "12/31/85";
        QTest::newRow("Korean") << QString::fromUtf8("2005년 6월 12일");
    }
    // Deliberate: behaviour 36.
    void dateOfAnotherFormIsStoredAsTyped() {
        QFETCH(QString, date);
        world->sql(ThreeDates);
        frmSongAdmin& w = openSong();
        typeInCell(w.fpdp, PlayedDateColumn::Date, 1, date);
        click(w.cmdAdd);
        QCOMPARE(dates(), (QStringList{"Song|" + date, "Song|01/01/06", "Song|06/12/04"}));
        showSong("Song");
        QCOMPARE(w.fpdp->GetText(PlayedDateColumn::Date, 1), date);
    }

    void dateWithAnApostropheEndsTheProgramAndKeepsTheRowsBefore() {
        world->sql(ThreeDates);
        frmSongAdmin& w = openSong();
        typeInCell(w.fpdp, PlayedDateColumn::Date, 4, "New Year's");
        world->answers.runTimeError(RunTimeError::StatementRefused);
        click(w.cmdAdd);
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(dates(), (QStringList{"Song|12/31/05", "Song|01/01/06", "Song|06/12/04"}));
    }

    void manyDatesAreAllShown() {
        world->sql(
            "INSERT INTO songs (ID, title, cat1) VALUES (4, 'Song', 'Praise');"
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 400) "
            "INSERT INTO played_on (played_date, songID) SELECT printf('%02d/%02d/26', "
            "1 + i % 12, 1 + i % 28), 4 FROM n");
        frmSongAdmin& w = openSong();
        QCOMPARE(w.fpdp->MaxRows(), 401);
        QCOMPARE(w.fpdp->GetText(PlayedDateColumn::ID, 400), QStringLiteral("400"));
    }

    void lockedFileAtTheDatesLosesNone() {
        world->sql(ThreeDates);
        frmSongAdmin& w = openSong();
        {
            const FileHeld held(world->path("db1.mdb"));
            world->answers.runTimeError(RunTimeError::StatementRefused, "locked");
            click(w.cmdAdd);
        }
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(dates(), (QStringList{"Song|12/31/05", "Song|01/01/06", "Song|06/12/04"}));
    }
};

LORVANITE_TEST(TestPlayedDates)
#include "test_played_dates.moc"
