// The program itself, as a process of its own.
#include "core/data/paths.h"
#include "support/files.h"
#include "support/registry.h"
#include "trees.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

class TestProgram : public QObject {
    Q_OBJECT

    // A folder as it is installed, with the executable in it.
    static void install(const QString& folder) {
        QDir().mkpath(folder);
        copyTree(QStringLiteral(PROGRAM_TREE), folder);
        QVERIFY(QFile::copy(QStringLiteral(PROGRAM_TREE "/lorvanite"),
                            folder + QStringLiteral("/lorvanite")));
    }

    // The same as a package brings it: what is delivered lies in a folder of its own.
    static void installPackage(const QString& folder) {
        install(folder + QStringLiteral("/delivered"));
        QVERIFY(QFile::rename(folder + QStringLiteral("/delivered/lorvanite"),
                              folder + QStringLiteral("/lorvanite")));
    }

    static void openToAll(const QString& folder, bool toWriting) {
        auto mode = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup | QFile::ExeGroup |
                    QFile::ReadOther | QFile::ExeOther;
        if (toWriting) mode |= QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
        QVERIFY(QFile::setPermissions(folder, mode));
    }

    static void setHome(QProcess& program, const QString& home) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("XDG_DATA_HOME"), home);
        environment.insert(QStringLiteral("HOME"), home);
        environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
        program.setProcessEnvironment(environment);
    }

    // Runs the program until the file holds what is told, or is there where nothing is told. The
    // folder "sheetmusic" is the last that is filled.
    static void runUntil(const QString& executable, const QString& home, const QString& file,
                         const QByteArray& content = {}) {
        QProcess program;
        setHome(program, home);
        program.start(executable, {});
        QTRY_VERIFY_WITH_TIMEOUT(content.isEmpty() ? QFile::exists(file) : bytesOf(file) == content,
                                 30000);
        QCOMPARE(program.state(), QProcess::Running);
        program.kill();
        program.waitForFinished();
    }

    static void write(const QString& path, const QByteArray& content) {
        QFile file(path);
        QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(path));
        file.write(content);
    }

private Q_SLOTS:
    void programInAFolderThatCannotBeWrittenKeepsItsDataInTheUsersFolder() {
        QTemporaryDir place;
        openToAll(place.path(), true);
        const QString installed = place.filePath(QStringLiteral("installed"));
        const QString data = place.filePath(QStringLiteral("data"));
        install(installed);
        QVERIFY(QDir().mkpath(data));
        openToAll(data, true);
        openToAll(installed, false);

        QProcess program;
        setHome(program, data);
        // A folder's mode does not bind the superuser, so the program runs as somebody else.
        program.setChildProcessModifier([] {
            if (geteuid() == 0 && setuid(65534) != 0) _exit(3);
        });
        program.start(installed + QStringLiteral("/lorvanite"), {});
        const QString database = data + QStringLiteral("/lorvanite/db1.mdb");
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(database), 30000);
        QTRY_VERIFY_WITH_TIMEOUT(
            QFile::exists(data + QStringLiteral("/lorvanite/config/sound.jpg")), 30000);
        QVERIFY(QDir(data + QStringLiteral("/lorvanite/saved sets")).exists());
        QVERIFY(!QFile::exists(data + QStringLiteral("/lorvanite/lorvanite")));
        QCOMPARE(program.state(), QProcess::Running);
        program.kill();
        program.waitForFinished();
        openToAll(installed, true);
    }

    void installedProgramKeepsItsDataInTheUsersFolderForTheSuperuserToo() {
        QTemporaryDir place;
        const QString installed = place.filePath(QStringLiteral("installed"));
        const QString data = place.filePath(QStringLiteral("data/lorvanite"));
        installPackage(installed);
        write(installed + QStringLiteral("/.installed"), "yes");
        const QString database = data + QStringLiteral("/db1.mdb");
        runUntil(installed + QStringLiteral("/lorvanite"), QFileInfo(data).path(),
                 data + QStringLiteral("/sheetmusic"));
        QVERIFY(!QFile::exists(installed + QStringLiteral("/db1.mdb")));
        QVERIFY(!QFile::exists(data + QStringLiteral("/delivered")));
        QVERIFY(!QFile::exists(data + QStringLiteral("/.installed")));

        // A newer one brings its guide, and leaves the user's files.
        write(data + QStringLiteral("/config/mail.ini"), "mine");
        write(data + QStringLiteral("/saved sets/mine.set"), "mine");
        const QByteArray before = bytesOf(database);
        write(installed + QStringLiteral("/delivered/config/LORVANITEHELP.hlp"), "newer");
        write(installed + QStringLiteral("/delivered/db1.mdb"), "newer");
        runUntil(installed + QStringLiteral("/lorvanite"), QFileInfo(data).path(),
                 data + QStringLiteral("/config/LORVANITEHELP.hlp"), "newer");
        QVERIFY(bytesOf(database) == before);
        QCOMPARE(bytesOf(data + QStringLiteral("/config/mail.ini")), QByteArray("mine"));
        QCOMPARE(bytesOf(data + QStringLiteral("/saved sets/mine.set")), QByteArray("mine"));
    }

    void portableProgramFillsItsOwnFolderFromWhatItDelivers() {
        QTemporaryDir place;
        const QString folder = place.filePath(QStringLiteral("größe und mehr"));
        const QString home = place.filePath(QStringLiteral("home"));
        installPackage(folder);
        runUntil(folder + QStringLiteral("/lorvanite"), home,
                 folder + QStringLiteral("/sheetmusic"));
        for (const char* name :
             {"db1.mdb", "config", "saved sets", "set designs", "schedules", "sheetmusic"})
            QVERIFY2(QFile::exists(folder + QLatin1Char('/') + QLatin1String(name)), name);
        QVERIFY(!QDir(home + QStringLiteral("/lorvanite")).exists());
        QVERIFY(!QFile::exists(folder + QStringLiteral("/delivered/delivered")));
    }
};

LORVANITE_TEST(TestProgram)
#include "test_program.moc"
