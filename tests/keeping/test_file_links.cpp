// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Charts and sounds that have moved.
#include "keeping/file_links.h"
#include "support/registry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QObject>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

class TestFileLinks : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;

    QString path(const QString& relative) const { return m_dir->filePath(relative); }

    void make(const QString& relative) const {
        QDir().mkpath(QFileInfo(path(relative)).path());
        QFile file(path(relative));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }

    QStringList candidatesOf(const QString& lost) const {
        const auto broken = brokenLinks({{1, "Song", lost, ""}}, m_dir->path());
        return broken.empty() ? QStringList{"not broken"} : broken[0].candidates;
    }

private Q_SLOTS:
    void init() { m_dir = std::make_unique<QTemporaryDir>(); }

    void linksToFilesThatAreThereAreNotListed() {
        make("sheetmusic/Grace.stp");
        const QTemporaryDir elsewhere;
        QFile outside(elsewhere.filePath("outside.mp3"));
        QVERIFY(outside.open(QIODevice::WriteOnly));
        QString windows = path("sheetmusic/Grace.stp");
        windows.replace('/', '\\');
        QVERIFY(brokenLinks({{1, "A", path("sheetmusic/Grace.stp"), outside.fileName()},
                             {2, "B", windows, ""},
                             {3, "C", "", ""}},
                            m_dir->path())
                    .empty());
    }

    void eachLostChartAndSoundIsListedWithItsSong() {
        const auto broken = brokenLinks(
            {{7, "A", "/gone/a.stp", "/gone/a.mp3"}, {9, "B", "", "E:\\music\\b.mp3"}}, path(""));
        QCOMPARE(broken.size(), size_t(3));
        QCOMPARE(broken[0].songId, 7);
        QCOMPARE(broken[0].title, QStringLiteral("A"));
        QCOMPARE(broken[0].path, QStringLiteral("/gone/a.stp"));
        QVERIFY(broken[0].file == LinkedFile::Chart && broken[1].file == LinkedFile::Sound);
        QCOMPARE(broken[1].path, QStringLiteral("/gone/a.mp3"));
        QCOMPARE(broken[2].songId, 9);
        QVERIFY(broken[2].file == LinkedFile::Sound);
        QVERIFY(broken[2].candidates.isEmpty());
    }

    void fileAtTheSamePlaceIsFoundUnderAnyDriveAndSeparator() {
        make("sheetmusic/hymns/Grace.stp");
        make("sheetmusic/Grace.stp");
        for (const char* lost : {"D:\\Lorvanite\\sheetmusic\\hymns\\Grace.stp",
                                 "D:/Lorvanite/sheetmusic/hymns/Grace.stp",
                                 "/media/stick/Lorvanite/sheetmusic/hymns/Grace.stp",
                                 "\\\\server\\share\\sheetmusic/hymns\\Grace.stp",
                                 "F:\\SheetMusic\\HYMNS\\GRACE.STP"}) {
            QCOMPARE(candidatesOf(lost), QStringList{path("sheetmusic/hymns/Grace.stp")});
        }
    }

    void longestEndOfThePathDecides() {
        make("music/2026/a.mp3");
        make("2026/a.mp3");
        QCOMPARE(candidatesOf("/home/me/Lorvanite/music/2026/a.mp3"),
                 QStringList{path("music/2026/a.mp3")});
        QCOMPARE(candidatesOf("/home/me/Lorvanite/sounds/2026/a.mp3"),
                 QStringList{path("2026/a.mp3")});
    }

    void fileOfTheSameNameIsFoundInAnotherFolder() {
        make("sheetmusic/new order/Grace.stp");
        QCOMPARE(candidatesOf("C:\\Lorvanite\\sheetmusic\\Grace.stp"),
                 QStringList{path("sheetmusic/new order/Grace.stp")});
        QCOMPARE(candidatesOf("grace.STP"), QStringList{path("sheetmusic/new order/Grace.stp")});
    }

    void twoFilesOfTheSameNameAreBothCandidates() {
        make("sheetmusic/a/Grace.stp");
        make("sheetmusic/b/grace.stp");
        QCOMPARE(candidatesOf("C:\\old\\Grace.stp"),
                 (QStringList{path("sheetmusic/a/Grace.stp"), path("sheetmusic/b/grace.stp")}));
    }

    void namesDifferingInCaseAtTheSamePlaceAreBothCandidates() {
        make("sheetmusic/Grace.stp");
        make("sheetmusic/grace.stp");
        QCOMPARE(candidatesOf("C:\\old\\sheetmusic\\GRACE.stp").size(), 2);
    }

    void copiesAndUnsavedWorkAreNoCandidates() {
        make("copies/2026-11-21/sheetmusic/Grace.stp");
        make("unsaved/Grace.stp");
        make("delivered/config/Grace.stp");
        QCOMPARE(candidatesOf("C:\\old\\sheetmusic\\Grace.stp"), QStringList());
        make("sheetmusic/copies/Grace.stp");
        QCOMPARE(candidatesOf("C:\\old\\sheetmusic\\Grace.stp"),
                 QStringList{path("sheetmusic/copies/Grace.stp")});
    }

    void composedAndDecomposedLettersAreTheSame() {
        make(QStringLiteral("sheetmusic/O\u0308de.stp"));
        QCOMPARE(candidatesOf(QStringLiteral("C:\\old\\sheetmusic\\\u00d6de.stp")).size(), 1);
    }

    void folderInThePlaceOfAFileIsABrokenLink() {
        QDir().mkpath(path("sheetmusic/Grace.stp"));
        QCOMPARE(candidatesOf(path("sheetmusic/Grace.stp")), QStringList());
    }

    void folderThatLinksToItselfIsSearchedOnce() {
        make("sheetmusic/a.stp");
        QVERIFY(QFile::link(path("sheetmusic"), path("sheetmusic/again")));
        QCOMPARE(candidatesOf("C:\\old\\a.stp"), QStringList{path("sheetmusic/a.stp")});
    }

    void missingFolderGivesNoCandidates() {
        QCOMPARE(brokenLinks({{1, "A", "/gone/a.stp", ""}}, path("gone"))[0].candidates,
                 QStringList());
    }
};

LORVANITE_TEST(TestFileLinks)
#include "test_file_links.moc"
