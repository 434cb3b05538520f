// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// lorvanite_soak [--seed S] [--commands N] [--from N] [--patience SECONDS] [--tell]
// A random user works with all windows over copies of the sample folder, a new one
// every 1000 commands: --from with such a number comes back to a later one. Nothing may crash,
// hang, leak, make the toolkit warn, leave a statement open or the hourglass on; only what is told
// in the box of a run-time error may end the program, which is started again over the same folder
// then.
#include "core/data/database.h"
#include "platform/desktop/desktop.h"
#include "platform/paper/printing.h"
#include "platform/theme/theme.h"
#include "soak/random_user.h"
#include "soak/watchdog.h"
#include "team/frm_schedule.h"
#include "trees.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDesktopServices>
#include <QDir>
#include <QTemporaryDir>

#include <arpa/inet.h>
#include <cstdio>
#include <random>
#include <sqlite3.h>
#include <sys/socket.h>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int CommandsOfFolder = 1000;  // one that is emptied by a command gives no more to do
constexpr int MoreFiles = 10;           // that the toolkit may still open after the first folder

// What the toolkit warns of is a fault of the program, but for what the offscreen platform and the
// mouse of a test tell.
void takeMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtDebugMsg || text.startsWith(u"This plugin does not support"_s) ||
        text.startsWith(u"Mouse event"_s))
        return;
    std::fprintf(stderr, "the toolkit tells: %s\n", qPrintable(text));
    std::abort();
}

// Takes links that would open a browser.
class Links : public QObject {
    Q_OBJECT

public:
    Links() {
        for (const QString& scheme : schemes)
            QDesktopServices::setUrlHandler(scheme, this, "swallow");
    }
    ~Links() override {
        for (const QString& scheme : schemes) QDesktopServices::unsetUrlHandler(scheme);
    }

public Q_SLOTS:
    void swallow(const QUrl&) {}

private:
    const QStringList schemes{u"http"_s, u"https"_s, u"mailto"_s, u"file"_s};
};

// The mail of a schedule without a title ends with the hourglass pointer.
bool mailsWithoutTitle() {
    return frmSchedule::isLoaded() && frmSchedule::instance().fpSchedule->GetText(1, 1).isEmpty();
}

// What has to hold between two commands; the empty text where it does.
QString wrongNow() {
    if (QApplication::activeModalWidget()) return u"a dialog is left open"_s;
    if (QApplication::overrideCursor() && !mailsWithoutTitle())
        return u"the hourglass is left on"_s;
    setMousePointer(MousePointer::Arrow);
    if (!dbConn.isOpen()) return {};
    if (sqlite3_next_stmt(dbConn.handle(), nullptr)) return u"a statement is left open"_s;
    if (!sqlite3_get_autocommit(dbConn.handle())) return u"a transaction is left open"_s;
    return {};
}

int openFiles() { return int(QDir(u"/proc/self/fd"_s).count()); }

// The port of a server on the loopback that never says a word.
int deafPort() {
    const int server = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* place = reinterpret_cast<sockaddr*>(&address);
    if (bind(server, place, size) || listen(server, 5) || getsockname(server, place, &size))
        return 9;
    return ntohs(address.sin_port);
}

// What a run is made of.
struct Plan {
    quint64 seed = 0;
    int from = 0;
    int commands = 0;
    bool tells = false;
    QString deafServer;
};

struct Tally {
    int ends = 0;
    QMap<QString, int> errorsTold;
};

// Works in a folder of its own from one command to before another. What was wrong, or nothing.
QString soakFolder(const Plan& plan, int from, int end, Tally& tally) {
    commandsEnd();
    World world(WorldTree::Sample);
    if (!QFile::exists(world.path(u"db1.mdb"_s))) return u"no sample folder"_s;
    QDir::setCurrent(world.folder());
    setPrintTarget({});
    QFile settings(world.path(u"config/mail.ini"_s));
    if (settings.open(QIODevice::WriteOnly))
        settings.write("[library]\nTimeout=1\nAnswerTimeout=1\n");
    settings.close();
    RandomUser user(world, plan.seed, plan.deafServer);
    for (int n = from; n < end; ++n) {
        user.doCommand(n);
        if (plan.tells) std::printf("%s\n", commandDone());
        const QString wrong = wrongNow();
        if (!wrong.isEmpty()) return wrong;
        if (!user.lost.isEmpty()) return user.lost;
    }
    world.stop();
    tally.ends += user.ends;
    for (auto told = user.errorsTold.cbegin(); told != user.errorsTold.cend(); ++told)
        tally.errorsTold[told.key()] += told.value();
    const QStringList verdict = world.rows(u"PRAGMA integrity_check"_s);
    return verdict == QStringList{u"ok"_s} ? QString() : verdict.join(u' ');
}

QString soak(const Plan& plan, Tally& tally) {
    int filesAtFirst = 0;
    for (int n = plan.from; n < plan.commands; n += CommandsOfFolder) {
        const int end = std::min(n + CommandsOfFolder, plan.commands);
        const QString wrong = soakFolder(plan, n, end, tally);
        if (!wrong.isEmpty()) return wrong;
        if (filesAtFirst == 0) filesAtFirst = openFiles();
        if (openFiles() > filesAtFirst + MoreFiles) return u"files are left open"_s;
        std::printf("%d commands, %d ends\n", end, tally.ends);
        std::fflush(stdout);
    }
    return {};
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM",
                "offscreen:configfile=" SOURCE_TREE "/tests/support/screen.json");
    const QTemporaryDir home;
    qputenv("HOME", home.path().toLocal8Bit());
    QApplication app(argc, argv);
    QApplication::setApplicationName(u"Lorvanite"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    applyTheme(app);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({{u"seed"_s, u"Where the chances begin."_s, u"number"_s},
                       {u"commands"_s, u"How many commands."_s, u"number"_s, u"1000"_s},
                       {u"from"_s, u"The first of them."_s, u"number"_s, u"0"_s},
                       {u"patience"_s, u"How long one may take."_s, u"seconds"_s, u"10"_s},
                       {u"tell"_s, u"Prints each command."_s}});
    parser.process(app);
    Plan plan;
    plan.seed =
        parser.isSet(u"seed"_s) ? parser.value(u"seed"_s).toULongLong() : std::random_device()();
    plan.from = parser.value(u"from"_s).toInt();
    plan.commands = parser.value(u"commands"_s).toInt();
    plan.tells = parser.isSet(u"tell"_s);
    plan.deafServer = u"127.0.0.1:%1"_s.arg(deafPort());
    std::printf("lorvanite_soak --seed %llu --commands %d\n",
                static_cast<unsigned long long>(plan.seed), plan.commands);
    std::fflush(stdout);
    const Links links;
    qInstallMessageHandler(takeMessage);
    startWatchdog(parser.value(u"patience"_s).toInt());
    Tally tally;
    const QString wrong = soak(plan, tally);
    commandsEnd();
    if (!wrong.isEmpty()) {
        printCommands();
        std::fprintf(stderr, "FAILED: %s\n", qPrintable(wrong));
        return 1;
    }
    std::printf("the program ended %d times; run-time errors told:\n", tally.ends);
    for (auto told = tally.errorsTold.cbegin(); told != tally.errorsTold.cend(); ++told)
        std::printf("%6d x %s\n", told.value(), qPrintable(told.key()));
    return 0;
}

#include "soak.moc"
