// Sound files, opened, played, held and let go, on a machine without a loudspeaker too.
#include "platform/desktop/media.h"
#include "support/registry.h"
#include "support/sound_file.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <arpa/inet.h>
#include <clocale>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using State = Media::State;

// A word's longest time, in milliseconds: nothing that a person would feel.
constexpr int Soon = 100;

// A server that nobody should call.
class Listener {
public:
    Listener() : m_socket(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0)) {
        sockaddr_in place = {};
        place.sin_family = AF_INET;
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof place;
        auto* address = reinterpret_cast<sockaddr*>(&place);
        if (bind(m_socket, address, size) == 0 && listen(m_socket, 1) == 0 &&
            getsockname(m_socket, address, &size) == 0)
            m_port = ntohs(place.sin_port);
    }
    ~Listener() { close(m_socket); }

    QString address() const { return QStringLiteral("http://127.0.0.1:%1/a.wav").arg(m_port); }

    bool wasCalled() const {
        const int caller = accept(m_socket, nullptr, nullptr);
        if (caller >= 0) close(caller);
        return caller >= 0;
    }

private:
    int m_socket;
    int m_port = 0;
};

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

    // Gives a word and looks that it keeps nobody waiting.
    void say(const char* word) {
        QElapsedTimer clock;
        clock.start();
        mm->Command(QLatin1String(word));
        QVERIFY2(clock.elapsed() < Soon, qPrintable(QString::number(clock.elapsed())));
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
        QTRY_COMPARE(mm->state(), State::Held);
        QTest::qWait(200);
        QCOMPARE(mm->state(), State::Held);
        QCOMPARE(mm->position(), 0.0);
    }

    void playPauseAndStopMoveThePlace() {
        openFile(silence("a.wav", 20));
        QTRY_COMPARE(mm->state(), State::Held);
        say("play");
        QTRY_COMPARE(mm->state(), State::Playing);
        QTRY_VERIFY(mm->position() > 0.3);
        say("pause");
        QTRY_COMPARE(mm->state(), State::Held);
        // The place is told a little late; then it stays.
        double held = 0;
        const auto stays = [&] {
            held = mm->position();
            QTest::qWait(300);
            return mm->position() == held;
        };
        QTRY_VERIFY(stays());
        QVERIFY(held > 0.3);
        say("play");
        QTRY_VERIFY(mm->position() > held + 0.2);
        say("stop");
        QTRY_COMPARE(mm->position(), 0.0);
        QCOMPARE(mm->state(), State::Held);
        say("play");
        QTRY_VERIFY(mm->position() > 0.1);
        QVERIFY(mm->position() < held);
        say("close");
        QTRY_COMPARE(mm->state(), State::Closed);
        QTRY_COMPARE(mm->position(), 0.0);
    }

    void playBeforeTheFileIsReadPlaysIt() {
        openFile(silence("a.wav", 20));
        say("play");
        QTRY_COMPARE(mm->state(), State::Playing);
        QTRY_VERIFY(mm->position() > 0.1);
    }

    void fileThatCameToItsEndPlaysFromItsStart() {
        openFile(silence("a.wav", 1.5));
        say("play");
        QTRY_COMPARE(mm->state(), State::Playing);
        QTRY_COMPARE(mm->state(), State::Held);
        QTRY_VERIFY(mm->position() > 1);
        say("play");
        QTRY_COMPARE(mm->state(), State::Playing);
        QVERIFY(mm->position() < 1);
        QTRY_COMPARE(mm->state(), State::Held);
        QTRY_VERIFY(mm->position() > 1);
        // A stop at the end goes to the start and stays there.
        say("stop");
        QTRY_COMPARE(mm->position(), 0.0);
        QCOMPARE(mm->state(), State::Held);
    }

    void anotherFileTakesThePlaceOfTheOneThatPlays() {
        openFile(silence("a.wav", 20));
        say("play");
        QTRY_VERIFY(mm->position() > 0.2);
        say("close");
        openFile(silence("b.wav", 1));
        QTRY_COMPARE(mm->position(), 0.0);
        QTRY_COMPARE(mm->state(), State::Held);
        say("play");
        QTRY_COMPARE(mm->state(), State::Playing);
        // It is the short one.
        QTRY_COMPARE(mm->state(), State::Held);
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
        // One that plays gives way to it.
        openFile(silence("good.wav", 20));
        say("play");
        QTRY_COMPARE(mm->state(), State::Playing);
        mm->FileName = name.isEmpty() ? QString() : path(name);
        say("Open");
        QTRY_COMPARE(mm->state(), State::Closed);
        for (const char* word : {"play", "pause", "stop", "close", "close"}) {
            say(word);
            QTest::qWait(20);
            QCOMPARE(mm->state(), State::Closed);
        }
        openFile(path("good.wav"));
        QTRY_COMPARE(mm->state(), State::Held);
    }

    void wordsWithoutAFileDoNothing() {
        for (const char* word : {"play", "pause", "stop", "close", "Open", "play", "", "nonsense"})
            say(word);
        QTest::qWait(50);
        QCOMPARE(mm->state(), State::Closed);
    }

    void wordsAreTakenInAnyCaseAndOthersLeft() {
        mm->FileName = silence("a.wav", 20);
        say("OPEN");
        QTRY_COMPARE(mm->state(), State::Held);
        say("Play");
        QTRY_COMPARE(mm->state(), State::Playing);
        say("halt");
        say("");
        QTest::qWait(100);
        QCOMPARE(mm->state(), State::Playing);
        say("PAUSE");
        QTRY_COMPARE(mm->state(), State::Held);
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
        QTRY_COMPARE(mm->state(), State::Held);
    }

    void pathMayBeWrittenWithBackslashes() {
        openFile(silence("a.wav", 5).replace('/', '\\'));
        QTRY_COMPARE(mm->state(), State::Held);
    }

    void nothingIsFetchedFromTheNetwork() {
        const Listener listener;
        openFile(listener.address());
        say("play");
        QTest::qWait(300);
        QCOMPARE(mm->state(), State::Closed);
        write("list.m3u", "#EXTM3U\n" + listener.address().toLatin1() + '\n');
        write("list.pls", "[playlist]\nFile1=" + listener.address().toLatin1() + '\n');
        for (const char* list : {"list.m3u", "list.pls"}) {
            openFile(path(QLatin1String(list)));
            say("play");
            QTest::qWait(500);
            QVERIFY(mm->state() != State::Playing);
        }
        QVERIFY(!listener.wasCalled());
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
        QTRY_VERIFY(mm->position() > 0.2);
        QTRY_COMPARE(mm->state(), State::Held);
        QVERIFY(mm->position() < 0.5);
    }

    void deviceThatIsThrownAwayWhileItPlaysKeepsNobodyWaiting() {
        openFile(silence("a.wav", 20));
        say("play");
        QTRY_COMPARE(mm->state(), State::Playing);
        QElapsedTimer clock;
        clock.start();
        mm.reset();
        QVERIFY2(clock.elapsed() < 2000, qPrintable(QString::number(clock.elapsed())));
        // Nor does one that is in the middle of opening.
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
        QTRY_COMPARE(mm->state(), State::Held);
    }
};

LORVANITE_TEST(TestMedia)
#include "test_media.moc"
