// The program itself, as a process of its own.
#include "core/paths.h"
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

    static void openToAll(const QString& folder, bool toWriting) {
        auto mode = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup | QFile::ExeGroup |
                    QFile::ReadOther | QFile::ExeOther;
        if (toWriting) mode |= QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
        QVERIFY(QFile::setPermissions(folder, mode));
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
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("XDG_DATA_HOME"), data);
        environment.insert(QStringLiteral("HOME"), data);
        environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
        program.setProcessEnvironment(environment);
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
};

LORVANITE_TEST(TestProgram)
#include "test_program.moc"
