// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Sound files are opened, played, paused and closed, even on a machine without a loudspeaker.
#include "platform/desktop/media.h"
#include "support/registry.h"
#include "support/silent_server.h"
#include "support/sound_file.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <clocale>
#include <sys/stat.h>

namespace {

using State = Media::State;

// How long a condition may take on a busy machine, in milliseconds.
constexpr int Patience = 60000;

// How long a command may wait, in milliseconds.
constexpr double Soon = 1000;

// How long this thread has run or was ready to run, in milliseconds. The rest of the time it waits
// for something else than a processor.
double busyTime() {
    QFile file(QStringLiteral("/proc/thread-self/schedstat"));
    if (!file.open(QIODevice::ReadOnly)) return 0;
    const QList<QByteArray> fields = file.readAll().simplified().split(' ');
    return (fields.value(0).toDouble() + fields.value(1).toDouble()) / 1e6;
}

}  // namespace

class TestMedia : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Media> mm;

    QString path(const QString& name) const { return m_folder->filePath(name); }

    QString silence(const QString& name, double seconds) const {
        writeSilence(path(name), seconds);
        return path(name);
    }

    void write(const QString& name, const QByteArray& content) const {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    // Gives a command and checks that it does not wait.
    void say(const char* word) {
        QElapsedTimer clock;
        clock.start();
        const double busyBefore = busyTime();
        mm->Command(QLatin1String(word));
        const double waited = double(clock.elapsed()) - (busyTime() - busyBefore);
        QVERIFY2(waited < Soon, qPrintable(QString::number(waited)));
    }

    void openFile(const QString& file) {
        mm->FileName = file;
        mm->Command("Open");
    }

private Q_SLOTS:
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        mm = std::make_unique<Media>();
    }
    void cleanup() { mm.reset(); }

    void openedFileWaitsAtItsStart() {
        openFile(silence("a.wav", 5));
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Held, Patience);
        QTest::qWait(200);
        QCOMPARE(mm->state(), State::Held);
        QCOMPARE(mm->position(), 0.0);
    }

    void playPauseAndStopMoveThePlace() {
        openFile(silence("a.wav", 600));
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Held, Patience);
        say("play");
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Playing, Patience);
        QTRY_VERIFY_WITH_TIMEOUT(mm->position() > 1, Patience);
        say("pause");
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Held, Patience);
        // The position is reported a little late; then it does not change.
        double held = 0;
        const auto stays = [&] {
            held = mm->position();
            QTest::qWait(300);
            return mm->position() == held;
        };
        QTRY_VERIFY_WITH_TIMEOUT(stays(), Patience);
        QVERIFY(held > 1);
        say("play");
        QTRY_VERIFY_WITH_TIMEOUT(mm->position() > held + 0.2, Patience);
        say("stop");
        QTRY_COMPARE_WITH_TIMEOUT(mm->position(), 0.0, Patience);
        QCOMPARE(mm->state(), State::Held);
        // From the start: no more can have been played than the time that has passed.
        QElapsedTimer clock;
        clock.start();
        say("play");
        QTRY_VERIFY_WITH_TIMEOUT(mm->position() > 0.1, Patience);
        QVERIFY(mm->position() < double(clock.elapsed()) / 1000 + 0.5);
        say("close");
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Closed, Patience);
        QTRY_COMPARE_WITH_TIMEOUT(mm->position(), 0.0, Patience);
    }

    void filesOfTheUsualFormatsPlay_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("codec");
        QTest::newRow("mp3") << "a.mp3"
                             << "libmp3lame";
        QTest::newRow("ogg") << "a.ogg"
                             << "libvorbis";
        QTest::newRow("flac") << "a.flac"
                              << "flac";
        QTest::newRow("m4a") << "a.m4a"
                             << "aac";
        QTest::newRow("wav") << "a.wav"
                             << "pcm_s16le";
    }
    void filesOfTheUsualFormatsPlay() {
        QFETCH(const QString, name);
        QFETCH(const QString, codec);
        // Another program writes them.
        QCOMPARE(QProcess::execute("ffmpeg",
                                   {"-v", "error", "-f", "lavfi", "-i",
                                    "sine=frequency=440:duration=20", "-c:a", codec, path(name)}),
                 0);
        openFile(path(name));
        say("play");
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Playing, Patience);
        QTRY_VERIFY_WITH_TIMEOUT(mm->position() > 0.5, Patience);
    }

    void playBeforeTheFileIsReadPlaysIt() {
        openFile(silence("a.wav", 600));
        say("play");
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Playing, Patience);
        QTRY_VERIFY_WITH_TIMEOUT(mm->position() > 0.1, Patience);
    }

    void fileThatCameToItsEndPlaysFromItsStart() {
        // Long enough to be seen playing on a busy machine.
        openFile(silence("a.wav", 5));
        const auto isAtItsEnd = [&] { return mm->state() == State::Held && mm->position() > 4.5; };
        say("play");
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Playing, Patience);
        QTRY_VERIFY_WITH_TIMEOUT(isAtItsEnd(), Patience);
        say("play");
        QTRY_VERIFY_WITH_TIMEOUT(mm->state() == State::Playing && mm->position() < 4, Patience);
        QTRY_VERIFY_WITH_TIMEOUT(isAtItsEnd(), Patience);
        // A stop at the end goes to the start and stays there.
        say("stop");
        QTRY_COMPARE_WITH_TIMEOUT(mm->position(), 0.0, Patience);
        QCOMPARE(mm->state(), State::Held);
    }

    void anotherFileTakesThePlaceOfTheOneThatPlays() {
        openFile(silence("a.wav", 600));
        say("play");
        QTRY_VERIFY_WITH_TIMEOUT(mm->position() > 0.2, Patience);
        say("close");
        openFile(silence("b.wav", 5));
        QTRY_COMPARE_WITH_TIMEOUT(mm->position(), 0.0, Patience);
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Held, Patience);
        say("play");
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Playing, Patience);
        // It is the short one.
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Held, Patience);
    }

    void fileThatCannotBePlayedLeavesTheDeviceClosed_data() {
        QTest::addColumn<QString>("name");
        for (const char* name :
             {"missing.wav", "", "empty.wav", "text.wav", "cut.wav", "zeros.mp3", "folder", "pipe"})
            QTest::newRow(*name ? name : "no name") << QString::fromLatin1(name);
    }
    void fileThatCannotBePlayedLeavesTheDeviceClosed() {
        QFETCH(QString, name);
        write("empty.wav", {});
        write("text.wav", "This is no sound.");
        write("cut.wav", QByteArray("RIFF\x24\x10\0\0WAVEfmt \x10\0", 18));
        write("zeros.mp3", QByteArray(100000, '\0'));
        QVERIFY(QDir().mkpath(path("folder")));
        QCOMPARE(mkfifo(qPrintable(path("pipe")), 0600), 0);
        // It replaces a file that is playing.
        openFile(silence("good.wav", 600));
        say("play");
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Playing, Patience);
        mm->FileName = name.isEmpty() ? QString() : path(name);
        say("Open");
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Closed, Patience);
        for (const char* word : {"play", "pause", "stop", "close", "close"}) {
            say(word);
            QTest::qWait(20);
            QCOMPARE(mm->state(), State::Closed);
        }
        openFile(path("good.wav"));
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Held, Patience);
    }

    void wordsWithoutAFileDoNothing() {
        for (const char* word : {"play", "pause", "stop", "close", "Open", "play", "", "nonsense"})
            say(word);
        QTest::qWait(50);
        QCOMPARE(mm->state(), State::Closed);
    }

    void wordsAreTakenInAnyCaseAndOthersLeft() {
        mm->FileName = silence("a.wav", 600);
        say("OPEN");
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Held, Patience);
        say("Play");
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Playing, Patience);
        say("halt");
        say("");
        QTest::qWait(100);
        QCOMPARE(mm->state(), State::Playing);
        say("PAUSE");
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Held, Patience);
    }

    void pathMayBeAnything_data() {
        QTest::addColumn<QString>("name");
        for (const char* name :
             {"Größe – 讃美.wav", "it's a 'song'.wav", "a b  c.wav", "-a.wav", "--pause=no",
              "100%.wav", "no ending", "\\back.wav", "a:b#c?d.wav"})
            QTest::newRow(name) << QString::fromUtf8(name);
    }
    void pathMayBeAnything() {
        QFETCH(QString, name);
        openFile(silence(name, 5));
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Held, Patience);
    }

    void pathMayBeWrittenWithBackslashes() {
        openFile(silence("a.wav", 5).replace('/', '\\'));
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Held, Patience);
    }

    void nothingIsFetchedFromTheNetwork() {
        const SilentServer server;
        const QString address = QStringLiteral("http://%1/a.wav").arg(server.address());
        openFile(address);
        say("play");
        QTest::qWait(300);
        QCOMPARE(mm->state(), State::Closed);
        write("list.m3u", "#EXTM3U\n" + address.toLatin1() + '\n');
        write("list.pls", "[playlist]\nFile1=" + address.toLatin1() + '\n');
        for (const char* list : {"list.m3u", "list.pls"}) {
            openFile(path(QLatin1String(list)));
            say("play");
            QTest::qWait(500);
            QVERIFY(mm->state() != State::Playing);
        }
        QVERIFY(!server.wasCalled());
    }

    void manyOpensInARowLeaveTheLast() {
        const QString a = silence("a.wav", 30);
        const QString b = silence("b.wav", 0.3);
        for (int i = 0; i < 50; ++i) {
            say("close");
            mm->FileName = i % 2 ? b : a;
            say("Open");
            say("play");
        }
        // It is the short one, and plays to its end.
        QTRY_VERIFY_WITH_TIMEOUT(mm->position() > 0.2, Patience);
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Held, Patience);
        QVERIFY(mm->position() < 0.5);
    }

    void deviceThatIsThrownAwayWhileItPlaysKeepsNobodyWaiting() {
        openFile(silence("a.wav", 600));
        say("play");
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Playing, Patience);
        QElapsedTimer clock;
        clock.start();
        mm.reset();
        // It does not wait for the end of the sound.
        QVERIFY2(clock.elapsed() < Patience, qPrintable(QString::number(clock.elapsed())));
        // Nor does a device that is opening a file.
        mm = std::make_unique<Media>();
        openFile(path("a.wav"));
        mm.reset();
    }

    // A desktop of a country that writes numbers with a comma.
    void numbersOfAnotherCountryDoNoHarm() {
        QCOMPARE(
            QProcess::execute(QStringLiteral("localedef"),
                              {QStringLiteral("-c"), QStringLiteral("-i"), QStringLiteral("de_DE"),
                               QStringLiteral("-f"), QStringLiteral("UTF-8"), path("de_DE.utf8")}),
            0);
        qputenv("LOCPATH", QFile::encodeName(m_folder->path()));
        const auto back = qScopeGuard([] {
            qunsetenv("LOCPATH");
            std::setlocale(LC_NUMERIC, "C");
        });
        QVERIFY(std::setlocale(LC_NUMERIC, "de_DE.utf8"));
        QCOMPARE(QByteArray(std::localeconv()->decimal_point), QByteArray(","));
        openFile(silence("a.wav", 5));
        QTRY_COMPARE_WITH_TIMEOUT(mm->state(), State::Held, Patience);
    }
};

LORVANITE_TEST(TestMedia)
#include "test_media.moc"
