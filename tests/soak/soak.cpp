// lorvanite_soak [--seed S] [--commands N] [--patience SECONDS] [--tell]
// A random user works with all windows over a copy of the sample folder. Nothing may crash, hang,
// leak, make the toolkit warn, leave a statement open or the hourglass on; only what is told in the
// box of a run-time error may end the program, which is started again over the same folder then.
#include "core/database.h"
#include "platform/desktop.h"
#include "platform/theme.h"
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

constexpr int FirstCommands = 200;  // after which the toolkit has opened what it needs
constexpr int MoreFiles = 10;       // that it may still open

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

// The mail of a schedule without a title ends under the hourglass: this is meant.
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

int fail(const QString& what) {
    printCommands();
    std::fprintf(stderr, "FAILED: %s\n", qPrintable(what));
    return 1;
}

int soak(quint64 seed, int commands, bool tells) {
    World world(WorldTree::Sample);
    if (!QFile::exists(world.path(u"db1.mdb"_s))) return fail(u"no sample folder"_s);
    QDir::setCurrent(world.folder());
    QFile settings(world.path(u"config/mail.ini"_s));
    if (settings.open(QIODevice::WriteOnly))
        settings.write("[library]\nTimeout=1\nAnswerTimeout=1\n");
    settings.close();
    RandomUser user(world, seed, u"127.0.0.1:%1"_s.arg(deafPort()));
    int filesAtFirst = 0;
    for (int n = 0; n < commands; ++n) {
        if (n == FirstCommands) filesAtFirst = openFiles();
        user.doCommand(n);
        if (tells) std::printf("%s\n", commandDone());
        const QString wrong = wrongNow();
        if (!wrong.isEmpty()) return fail(wrong);
        if (n % 1000 == 999) {
            std::printf("%d commands, %d ends\n", n + 1, user.ends);
            std::fflush(stdout);
        }
    }
    commandBegins(commands);
    world.stop();
    commandsEnd();
    if (filesAtFirst > 0 && openFiles() > filesAtFirst + MoreFiles)
        return fail(u"files are left open"_s);
    const QStringList verdict = world.rows(u"PRAGMA integrity_check"_s);
    if (verdict != QStringList{u"ok"_s}) return fail(verdict.join(u' '));
    std::printf("%d commands done; the program ended %d times; run-time errors told:\n", commands,
                user.ends);
    for (auto told = user.errorsTold.cbegin(); told != user.errorsTold.cend(); ++told)
        std::printf("%6d x %s\n", told.value(), qPrintable(told.key()));
    return 0;
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
                       {u"patience"_s, u"How long one may take."_s, u"seconds"_s, u"10"_s},
                       {u"tell"_s, u"Prints each command."_s}});
    parser.process(app);
    const quint64 seed =
        parser.isSet(u"seed"_s) ? parser.value(u"seed"_s).toULongLong() : std::random_device()();
    const int commands = parser.value(u"commands"_s).toInt();
    std::printf("lorvanite_soak --seed %llu --commands %d\n", static_cast<unsigned long long>(seed),
                commands);
    std::fflush(stdout);
    const Links links;
    qInstallMessageHandler(takeMessage);
    startWatchdog(parser.value(u"patience"_s).toInt());
    return soak(seed, commands, parser.isSet(u"tell"_s));
}

#include "soak.moc"
