// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/print_server.h"

#include "support/files.h"

#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QSemaphore>
#include <QStandardPaths>
#include <QTest>
#include <QThread>

#include <atomic>
#include <csignal>
#include <sys/prctl.h>

namespace {

constexpr int Patience = 120000;  // milliseconds, on a busy machine

// A printer in colour for PDF and two papers.
constexpr const char* PrinterDescription = R"ppd(*PPD-Adobe: "4.3"
*FormatVersion: "4.3"
*FileVersion: "1.0"
*LanguageVersion: English
*LanguageEncoding: ISOLatin1
*PCFileName: "PAPER.PPD"
*Manufacturer: "Test"
*Product: "(Test)"
*ModelName: "Test"
*ShortNickName: "Test"
*NickName: "Test"
*PSVersion: "(3010.000) 0"
*LanguageLevel: "3"
*ColorDevice: True
*DefaultColorSpace: RGB
*FileSystem: False
*cupsVersion: 1.1
*cupsFilter: "application/vnd.cups-pdf 0 -"
*OpenUI *PageSize/Page Size: PickOne
*OrderDependency: 10 AnySetup *PageSize
*DefaultPageSize: @PAPER@
*PageSize A4/A4: "<</PageSize[595 842]>>setpagedevice"
*PageSize Letter/Letter: "<</PageSize[612 792]>>setpagedevice"
*CloseUI: *PageSize
*OpenUI *PageRegion/Page Region: PickOne
*OrderDependency: 10 AnySetup *PageRegion
*DefaultPageRegion: @PAPER@
*PageRegion A4/A4: "<</PageSize[595 842]>>setpagedevice"
*PageRegion Letter/Letter: "<</PageSize[612 792]>>setpagedevice"
*CloseUI: *PageRegion
*DefaultImageableArea: @PAPER@
*ImageableArea A4/A4: "12 12 583 830"
*ImageableArea Letter/Letter: "12 12 600 780"
*DefaultPaperDimension: @PAPER@
*PaperDimension A4/A4: "595 842"
*PaperDimension Letter/Letter: "612 792"
*OpenUI *ColorModel/Color: PickOne
*OrderDependency: 20 AnySetup *ColorModel
*DefaultColorModel: RGB
*ColorModel Gray/Grey: ""
*ColorModel RGB/Colour: ""
*CloseUI: *ColorModel
)ppd";

// Programs of an administrator are not in everybody's path.
QString tool(const QString& name) {
    const QString found = QStandardPaths::findExecutable(
        name, {QStringLiteral("/usr/sbin"), QStringLiteral("/sbin")});
    return found.isEmpty() ? name : found;
}

void failPrinting(const QString& why) { QTest::qFail(qPrintable(why), __FILE__, __LINE__); }

// Each paper of a PDF in points, as its page is to be read.
QList<QSize> papersOf(const QString& pdf) {
    QProcess info;
    info.start(QStringLiteral("pdfinfo"), {QStringLiteral("-f"), QStringLiteral("1"),
                                           QStringLiteral("-l"), QStringLiteral("-1"), pdf});
    info.waitForFinished(Patience);
    QList<QSize> papers;
    for (const QByteArray& line : info.readAllStandardOutput().split('\n')) {
        // "Page    1 size: 595 x 842 pts (A4)", "Page    1 rot:  90"
        const QList<QByteArray> words = line.simplified().split(' ');
        if (words.value(0) != "Page") continue;
        if (words.value(2) == "size:")
            papers.append(
                QSize(qRound(words.value(3).toDouble()), qRound(words.value(5).toDouble())));
        else if (words.value(2) == "rot:" && words.value(3).toInt() % 180 != 0)
            papers.last().transpose();
    }
    return papers;
}

}  // namespace

// Passes everything on between this process and the scheduler, as long as it is let.
class PrintServer::Relay : public QThread {
public:
    Relay(QString near, QString far) : m_near(std::move(near)), m_far(std::move(far)) {
        start();
        m_listens.acquire();
    }
    ~Relay() override {
        quit();
        wait();
    }

    std::atomic<bool> cutsNextJob = false;

protected:
    void run() override {
        QLocalServer server;
        QLocalServer::removeServer(m_near);
        const bool listens = server.listen(m_near);
        m_listens.release();
        if (!listens) return;
        QObject::connect(&server, &QLocalServer::newConnection, &server, [&] {
            QLocalSocket* client = server.nextPendingConnection();
            auto* scheduler = new QLocalSocket(client);
            scheduler->connectToServer(m_far);
            QObject::connect(client, &QLocalSocket::readyRead, client, [&, client, scheduler] {
                const QByteArray bytes = client->readAll();
                if (cutsNextJob && bytes.contains("POST /printers/")) server.close();
                if (server.isListening())
                    scheduler->write(bytes);
                else
                    client->abort();
            });
            QObject::connect(scheduler, &QLocalSocket::readyRead, client,
                             [=] { client->write(scheduler->readAll()); });
            QObject::connect(scheduler, &QLocalSocket::disconnected, client,
                             &QLocalSocket::disconnectFromServer);
            QObject::connect(client, &QLocalSocket::disconnected, client,
                             &QLocalSocket::deleteLater);
        });
        exec();
    }

private:
    const QString m_near;
    const QString m_far;
    QSemaphore m_listens;
};

PrintServer::PrintServer() {
    // Filters may run as another user.
    QFile::setPermissions(m_folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                               QFile::ReadOther | QFile::ExeOther);
    writeSettings();
    // It ends even if the test crashes.
    m_scheduler.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_scheduler.setStandardErrorFile(path(QStringLiteral("log")));
    m_scheduler.start(
        tool(QStringLiteral("cupsd")),
        {QStringLiteral("-f"), QStringLiteral("-c"), path(QStringLiteral("cupsd.conf")),
         QStringLiteral("-s"), path(QStringLiteral("cups-files.conf"))});
    const bool listens = QTest::qWaitFor(
        [this] { return QFile::exists(path(QStringLiteral("scheduler"))); }, Patience);
    if (!listens) failPrinting(QString::fromUtf8(bytesOf(path(QStringLiteral("log")))));
    comeBack();
    qputenv("CUPS_SERVER", path(QStringLiteral("server")).toUtf8());
    // What the user of this machine prefers is of no account.
    qputenv("CUPS_SERVERROOT", path(QStringLiteral("root")).toUtf8());
    qputenv("HOME", m_folder.path().toUtf8());
    qunsetenv("LPDEST");
    qunsetenv("PRINTER");
}

PrintServer::~PrintServer() {
    m_relay.reset();
    m_scheduler.terminate();
    if (!m_scheduler.waitForFinished(Patience)) failPrinting(QStringLiteral("cupsd does not end"));
}

void PrintServer::writeFile(const QString& name, QString content) const {
    content.replace(QLatin1String("@FOLDER@"), m_folder.path());
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content.toUtf8()) < 0) failPrinting(name);
}

void PrintServer::writeSettings() const {
    for (const char* folder : {"bin/backend", "root", "spool/tmp", "cache", "state", "out"})
        QDir().mkpath(path(QLatin1String(folder)));
    for (const char* shared : {"filter", "daemon", "driver", "monitor", "notifier", "cgi-bin"})
        QFile::link(QLatin1String("/usr/lib/cups/") + QLatin1String(shared),
                    path(QLatin1String("bin/") + QLatin1String(shared)));
    // Called with job, user, title, copies, options and perhaps the file; without anything when it
    // is asked which devices it knows.
    writeFile(QStringLiteral("bin/backend/paper"), QStringLiteral(R"sh(#!/bin/sh
[ $# -ge 5 ] || exit 0
out="@FOLDER@/out/$(printf %05d "$1")"
cat ${6:+"$6"} >"$out.pdf" && printf '%s\n%s' "$PRINTER" "$3" >"$out.part" &&
    mv "$out.part" "$out.job"
)sh"));
    QFile::setPermissions(path(QStringLiteral("bin/backend/paper")),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    writeFile(QStringLiteral("cups-files.conf"), QStringLiteral(R"(ServerRoot @FOLDER@/root
ServerBin @FOLDER@/bin
RequestRoot @FOLDER@/spool
TempDir @FOLDER@/spool/tmp
CacheDir @FOLDER@/cache
StateDir @FOLDER@/state
AccessLog stderr
ErrorLog stderr
PageLog stderr
)"));
    writeFile(QStringLiteral("cupsd.conf"), QStringLiteral(R"(Listen @FOLDER@/scheduler
Browsing No
WebInterface No
<Location />
Allow all
</Location>
<Location /admin>
Allow all
</Location>
<Policy default>
<Limit All>
Order deny,allow
</Limit>
</Policy>
)"));
}

void PrintServer::addPrinter(const QString& name, const QString& paper) {
    writeFile(QStringLiteral("printer.ppd"),
              QString::fromLatin1(PrinterDescription).replace(QLatin1String("@PAPER@"), paper));
    run(QStringLiteral("lpadmin"),
        {QStringLiteral("-p"), name, QStringLiteral("-E"), QStringLiteral("-v"),
         QStringLiteral("paper:/"), QStringLiteral("-P"), path(QStringLiteral("printer.ppd"))});
}

void PrintServer::run(const QString& command, const QStringList& arguments) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("CUPS_SERVER"), path(QStringLiteral("scheduler")));
    process.setProcessEnvironment(environment);
    process.start(tool(command), arguments);
    if (!process.waitForFinished(Patience) || process.exitCode() != 0)
        failPrinting(command + QLatin1Char(' ') + arguments.join(QLatin1Char(' ')) +
                     QStringLiteral(": ") + QString::fromUtf8(process.readAllStandardError()));
}

QStringList PrintServer::arrived() const {
    return QDir(path(QStringLiteral("out")))
        .entryList({QStringLiteral("*.job")}, QDir::Files, QDir::Name);
}

int PrintServer::moreJobs() const { return int(arrived().size()) - m_returned; }

PrintServer::Job PrintServer::nextJob() {
    if (!QTest::qWaitFor([this] { return moreJobs() > 0; }, Patience)) {
        failPrinting(QStringLiteral("no job has arrived\n") +
                     QString::fromUtf8(bytesOf(path(QStringLiteral("log"))).right(4000)));
        return {};
    }
    const QString file = path(QStringLiteral("out/")) + arrived()[m_returned++];
    const QStringList lines = QString::fromUtf8(bytesOf(file)).split(QLatin1Char('\n'));
    const QString pdf = file.chopped(3) + QStringLiteral("pdf");
    return {lines.value(0), lines.value(1), pdf, papersOf(pdf)};
}

void PrintServer::vanishAtNextJob() { m_relay->cutsNextJob = true; }

void PrintServer::comeBack() {
    m_relay.reset();
    m_relay =
        std::make_unique<Relay>(path(QStringLiteral("server")), path(QStringLiteral("scheduler")));
}
