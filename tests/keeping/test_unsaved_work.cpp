// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Work that is kept while it is not saved.
#include "core/data/dates.h"
#include "core/data/run_time_error.h"
#include "core/grid/sheet_grid.h"
#include "keeping/unsaved_store.h"
#include "keeping/work_keeper.h"
#include "support/files.h"
#include "support/full_disk.h"
#include "support/other_process.h"
#include "support/registry.h"

#include <QDir>
#include <QFile>
#include <QObject>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

class TestUnsavedWork : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;

    // The work on view.
    QByteArray m_work;

    UnsavedStore store() const { return UnsavedStore(m_dir->path()); }
    QString path(const QString& relative) const { return m_dir->filePath(relative); }

    QStringList names() const {
        return QDir(path("unsaved")).entryList(QDir::Files | QDir::Hidden);
    }

    std::vector<QByteArray> keptContents(UnsavedKind kind = UnsavedKind::Set) const {
        std::vector<QByteArray> contents;
        for (const UnsavedEntry& entry : store().list(kind))
            contents.push_back(UnsavedStore::load(entry.path).value_or("unreadable"));
        return contents;
    }
    using Contents = std::vector<QByteArray>;

    std::unique_ptr<WorkKeeper> keeper(UnsavedKind kind = UnsavedKind::Set) {
        auto made = std::make_unique<WorkKeeper>(m_dir->path(), kind, [this] { return m_work; });
        made->workLoaded();
        return made;
    }

    void change(WorkKeeper& of, const QByteArray& work) {
        m_work = work;
        of.workChanged();
    }

private Q_SLOTS:
    void init() {
        m_dir = std::make_unique<QTemporaryDir>();
        m_work = "loaded";
        setToday(QDate(2026, 11, 21));
    }
    void cleanup() { setToday({}); }

    // --- The store

    void keptWorkIsListedWithItsTimeAndComesBack() {
        const QString kept = store().keep(UnsavedKind::Set, "work");
        const auto entries = store().list(UnsavedKind::Set);
        QCOMPARE(entries.size(), size_t(1));
        QCOMPARE(entries[0].path, kept);
        QCOMPARE(entries[0].time.date(), QDate(2026, 11, 21));
        QVERIFY(qAbs(entries[0].time.time().secsTo(QTime::currentTime())) < 5);
        QCOMPARE(UnsavedStore::load(kept).value(), QByteArray("work"));
        store().discard(kept);
        QVERIFY(store().list(UnsavedKind::Set).empty());
        QVERIFY(!UnsavedStore::load(kept));
        store().discard(kept);
    }

    void kindsAreKeptApart() {
        const UnsavedKind kinds[] = {UnsavedKind::Set,   UnsavedKind::Schedule,
                                     UnsavedKind::Chart, UnsavedKind::TransposedChart,
                                     UnsavedKind::Song,  UnsavedKind::Person,
                                     UnsavedKind::Note,  UnsavedKind::Message};
        for (const UnsavedKind kind : kinds) store().keep(kind, QByteArray::number(int(kind)));
        for (const UnsavedKind kind : kinds)
            QCOMPARE(keptContents(kind), Contents{QByteArray::number(int(kind))});
    }

    void lastThreeOfAKindStay() {
        store().keep(UnsavedKind::Note, "note");
        for (const char* work : {"1", "2", "3", "4", "5"}) store().keep(UnsavedKind::Set, work);
        QCOMPARE(keptContents(), (Contents{"5", "4", "3"}));
        QCOMPARE(keptContents(UnsavedKind::Note), Contents{"note"});
        QCOMPARE(names().size(), 4);
    }

    void keptWorkStaysForThirtyDays() {
        store().keep(UnsavedKind::Set, "old");
        setToday(QDate(2026, 12, 21));
        QCOMPARE(keptContents(), Contents{"old"});
        setToday(QDate(2026, 12, 22));
        QCOMPARE(keptContents(), Contents());
        store().keep(UnsavedKind::Set, "new");
        QCOMPARE(names().size(), 1);
    }

    void laterStateReplacesTheEarlierOne() {
        const QString other = store().keep(UnsavedKind::Set, "other");
        const QString first = store().keep(UnsavedKind::Set, "first");
        store().keep(UnsavedKind::Set, "second", first);
        QCOMPARE(keptContents(), (Contents{"second", "other"}));
    }

    void twentyStatesInOneMomentAreKeptInTheirOrder() {
        for (int i = 0; i < 20; ++i) store().keep(UnsavedKind::Set, QByteArray::number(i));
        QCOMPARE(keptContents(), (Contents{"19", "18", "17"}));
    }

    void keptWorkIsReadByItsOwnerAlone() {
        const QString kept = store().keep(UnsavedKind::Message, "private");
        QCOMPARE(QFileInfo(kept).permissions() & QFileDevice::Permissions(0x77),
                 QFile::Permissions());
        QCOMPARE(QFileInfo(path("unsaved")).permissions() & QFileDevice::Permissions(0x77),
                 QFile::Permissions());
    }

    void filesOfOthersInTheFolderAreLeftAlone() {
        QDir().mkpath(path("unsaved"));
        for (const char* name : {"unsaved/set list.set", "unsaved/set 2026.set", "unsaved/x.txt"}) {
            QFile file(path(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        for (const char* work : {"1", "2", "3", "4"}) store().keep(UnsavedKind::Set, work);
        QCOMPARE(keptContents().size(), size_t(3));
        QCOMPARE(names().size(), 6);
        store().discard(path("elsewhere.txt"));
        store().discard(path("unsaved/../unsaved"));
        store().discard(QString());
        QCOMPARE(names().size(), 6);
    }

    void fullDiskRaisesAndLeavesWhatWasKept() {
        const QString first = store().keep(UnsavedKind::Set, "first");
        for (const rlim_t most : {0, 1, 4}) {
            QCOMPARE(inOtherProcess([&] {
                         const FullDisk full(most);
                         try {
                             store().keep(UnsavedKind::Set, "second", first);
                         } catch (const RunTimeError& error) {
                             return error.number();
                         }
                         return 0;
                     }),
                     int(RunTimeError::PathAccess));
            QCOMPARE(keptContents(), Contents{"first"});
            QCOMPARE(names().size(), 1);
        }
    }

    void folderThatCannotBeWrittenRaises() {
        QVERIFY(QFile::setPermissions(m_dir->path(), QFile::ReadOwner | QFile::ExeOwner |
                                                         QFile::ReadOther | QFile::ExeOther));
        QCOMPARE(asOtherUser([&] {
                     try {
                         store().keep(UnsavedKind::Set, "work");
                     } catch (const RunTimeError& error) {
                         return error.number();
                     }
                     return 0;
                 }),
                 int(RunTimeError::PathAccess));
        QFile::setPermissions(m_dir->path(),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void fieldsComeBackAsTheyWere() {
        const FormFields fields{{"txtTitle", "Öde \"an\" die\r\nFreude"}, {"lblID", ""}};
        QCOMPARE(readFields(writeFields(fields)).value(), fields);
        QCOMPARE(readFields(writeFields({})).value(), FormFields());
    }

    void damagedFieldsGiveNothing() {
        const QByteArray good = writeFields({{"a", "b"}});
        for (int size = 0; size < good.size(); ++size) QVERIFY(!readFields(good.left(size)));
        QVERIFY(!readFields(QByteArray(good).replace("\"version\":1", "\"version\":2")));
        QVERIFY(!readFields(QByteArray(good).replace("\"b\"", "7")));
        QVERIFY(!readFields(QByteArray(good).replace("lorvanite-fields", "lorvanite-grid")));
    }

    // --- The keeper

    void changedWorkIsKeptAfterTheDelay() {
        auto one = keeper();
        one->setDelay(std::chrono::milliseconds(50));
        change(*one, "changed");
        QVERIFY(names().isEmpty());
        QTRY_COMPARE(keptContents(), Contents{"changed"});
    }

    void typingWithoutAPauseIsKeptToo() {
        auto one = keeper();
        one->setDelay(std::chrono::milliseconds(200));
        for (int i = 0; i < 40 && names().isEmpty(); ++i) {
            change(*one, QByteArray::number(i));
            QTest::qWait(20);
        }
        QCOMPARE(names().size(), 1);
    }

    void delayIsThirtySeconds() {
        auto one = keeper();
        const auto timers = one->findChildren<QTimer*>();
        change(*one, "changed");
        QTest::qWait(300);
        QVERIFY(names().isEmpty());
        QCOMPARE(timers.size(), 1);
        QCOMPARE(timers[0]->interval(), 30'000);
        QVERIFY(timers[0]->isActive());
    }

    void workThatHasNotChangedIsNotKept() {
        auto one = keeper();
        QVERIFY(one->keepNow());
        one->workChanged();
        QVERIFY(one->keepNow());
        QVERIFY(names().isEmpty());
    }

    void oneWorkHasOneEntryHoweverOftenItIsKept() {
        auto one = keeper();
        for (const char* work : {"a", "b", "c"}) {
            change(*one, work);
            QVERIFY(one->keepNow());
        }
        QCOMPARE(keptContents(), Contents{"c"});
        const QStringList before = names();
        QVERIFY(one->keepNow());
        QCOMPARE(names(), before);
    }

    void workChangedBackIsKeptNoLonger() {
        auto one = keeper();
        change(*one, "changed");
        QVERIFY(one->keepNow());
        QCOMPARE(names().size(), 1);
        change(*one, "loaded");
        QVERIFY(one->keepNow());
        QVERIFY(names().isEmpty());
    }

    void savingRemovesTheEntryAndOthersStay() {
        store().keep(UnsavedKind::Set, "of last week");
        auto one = keeper();
        change(*one, "changed");
        QVERIFY(one->keepNow());
        one->workSaved();
        QVERIFY(one->keepNow());
        QCOMPARE(keptContents(), Contents{"of last week"});
        change(*one, "changed again");
        QVERIFY(one->keepNow());
        QCOMPARE(keptContents(), (Contents{"changed again", "of last week"}));
    }

    void savingStopsTheDelay() {
        auto one = keeper();
        one->setDelay(std::chrono::milliseconds(50));
        change(*one, "changed");
        one->workSaved();
        QTest::qWait(150);
        QVERIFY(names().isEmpty());
    }

    void workThatIsLeftForOtherWorkStays() {
        auto one = keeper();
        change(*one, "changed");
        QVERIFY(one->keepNow());
        m_work = "another file";
        one->workLoaded();
        change(*one, "another change");
        QVERIFY(one->keepNow());
        QCOMPARE(keptContents(), (Contents{"another change", "changed"}));
    }

    void workThatWasBroughtBackIsReplacedAndSavingRemovesIt() {
        store().keep(UnsavedKind::Set, "kept");
        const UnsavedEntry entry = store().list(UnsavedKind::Set)[0];
        auto one = keeper();
        m_work = UnsavedStore::load(entry.path).value();
        one->workBroughtBack(entry);
        QVERIFY(one->keepNow());
        QCOMPARE(keptContents(), Contents{"kept"});
        change(*one, "more of it");
        QVERIFY(one->keepNow());
        QCOMPARE(keptContents(), Contents{"more of it"});
        one->workSaved();
        QVERIFY(one->keepNow());
        QVERIFY(names().isEmpty());
    }

    void endOfTheProgramKeepsTheWorkOfAllWindows() {
        auto set = keeper();
        auto note = keeper(UnsavedKind::Note);
        auto untouched = keeper(UnsavedKind::Chart);
        m_work = "changed";
        set->workChanged();
        note->workChanged();
        WorkKeeper::keepAllNow();
        QCOMPARE(keptContents(), Contents{"changed"});
        QCOMPARE(keptContents(UnsavedKind::Note), Contents{"changed"});
        QCOMPARE(names().size(), 2);
        note.reset();
        m_work = "more";
        WorkKeeper::keepAllNow();
        QCOMPARE(keptContents(), Contents{"more"});
        QCOMPARE(keptContents(UnsavedKind::Note), Contents{"changed"});
    }

    void keeperThatGoesWaitsForItsWriting() {
        auto one = keeper();
        one->setDelay(std::chrono::milliseconds(0));
        change(*one, QByteArray("large").repeated(1'000'000));
        QTest::qWait(1);
        one.reset();
        QCOMPARE(names().size(), 1);
    }

    void failureIsReportedOnceAndEndsWithTheNextSuccess() {
        QFile inTheWay(path("unsaved"));
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        auto one = keeper();
        QSignalSpy failed(one.get(), &WorkKeeper::failed);
        change(*one, "a");
        QVERIFY(!one->keepNow());
        change(*one, "b");
        QVERIFY(!one->keepNow());
        QVERIFY(failed.count() == 1 || failed.wait());
        QTest::qWait(50);
        QCOMPARE(failed.count(), 1);
        QCOMPARE(failed[0][0].toString(),
                 QStringLiteral("The folder \"%1\" cannot be made.").arg(path("unsaved")));
        QVERIFY(inTheWay.remove());
        QVERIFY(one->keepNow());
        QCOMPARE(keptContents(), Contents{"b"});
    }

    void unsavedWorkIsReportedWhenItBeginsAndEnds() {
        auto one = keeper();
        QSignalSpy reported(one.get(), &WorkKeeper::unsavedWorkChanged);
        QVERIFY(!one->hasUnsavedWork());
        change(*one, "changed");
        QVERIFY(one->hasUnsavedWork());
        QVERIFY(reported.wait());
        QCOMPARE(reported.takeFirst()[0].toBool(), true);
        change(*one, "changed more");
        change(*one, "loaded");
        QVERIFY(!one->hasUnsavedWork());
        QVERIFY(reported.wait());
        QCOMPARE(reported.takeFirst()[0].toBool(), false);
        change(*one, "changed");
        QVERIFY(reported.wait());
        one->workSaved();
        QCOMPARE(reported.size(), 2);
        QVERIFY(!one->hasUnsavedWork());
    }

    void whatIsNoPartOfTheWorkMakesItNotUnsaved() {
        SheetGrid grid;
        grid.SetText(2, 1, "11/22/26");
        WorkKeeper one(m_dir->path(), UnsavedKind::Set, [&] { return grid.fileBytes(); });
        one.setComparison([&] { return grid.contentSum(); });
        one.workLoaded();
        grid.ColWidth(2, 40);
        grid.EditModeReplace(true);
        one.workChanged();
        QVERIFY(!one.hasUnsavedWork());
        QVERIFY(one.keepNow());
        QVERIFY(names().isEmpty());
        grid.SetText(2, 2, "Abide");
        QVERIFY(one.hasUnsavedWork());
        grid.SetText(2, 2, QString());
        QVERIFY(!one.hasUnsavedWork());
    }

    void workThatIsLeftKeepsItsEntryWhateverComesNext() {
        auto one = keeper();
        change(*one, "changed");
        one->workLeft();
        // The other work fails to load halfway.
        change(*one, "half");
        QVERIFY(one->keepNow());
        QCOMPARE(keptContents(), (Contents{"half", "changed"}));
    }

    void gridComesBackFromItsOwnForm() {
        SheetGrid grid;
        grid.SetText(2, 1, "11/22/26");
        grid.AddCellSpan(1, 3, 2, 1);
        WorkKeeper one(m_dir->path(), UnsavedKind::Set, [&] { return grid.fileBytes(); });
        one.workLoaded();
        grid.SetText(2, 2, "Amazing Grace");
        one.workChanged();
        QVERIFY(one.keepNow());
        const auto entries = store().list(UnsavedKind::Set);
        QCOMPARE(entries.size(), size_t(1));
        QVERIFY(entries[0].path.endsWith(".set"));
        SheetGrid back;
        QVERIFY(back.LoadFromFile(entries[0].path));
        QCOMPARE(back.GetText(2, 2), QStringLiteral("Amazing Grace"));
        QCOMPARE(back.fileBytes(), grid.fileBytes());
        QVERIFY(grid.SaveToFile(path("saved.set"), false));
        QCOMPARE(bytesOf(path("saved.set")), bytesOf(entries[0].path));
    }
};

LORVANITE_TEST(TestUnsavedWork)
#include "test_unsaved_work.moc"
