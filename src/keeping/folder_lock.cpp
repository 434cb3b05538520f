// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "keeping/folder_lock.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QSysInfo>
#include <QThread>

#include <unistd.h>

namespace {

constexpr int ConnectWait = 500;  // milliseconds
constexpr int RetryWait = 20;
constexpr int WritingTime = 5;  // seconds

// How many starts at the same moment can wait for the owner's event loop.
constexpr int WaitingCalls = 128;

// The same for every path to the folder; another one for another user, whose windows are on
// another screen.
QString socketName(const QString& folder) {
    const QString path = QFileInfo(folder).canonicalFilePath();
    const QByteArray key = path.toUtf8() + '\n' + QByteArray::number(getuid());
    return QStringLiteral("lorvanite-") +
           QString::fromLatin1(QCryptographicHash::hash(key, QCryptographicHash::Sha1).toHex());
}

}  // namespace

FolderLock::FolderLock(const QString& folder)
    : m_name(socketName(folder)), m_lock(folder + QStringLiteral("/.lorvanite.lock")) {
    // However long a process has been running, its lock is not stale.
    m_lock.setStaleLockTime(0);
}

FolderLock::~FolderLock() = default;

FolderLock::Result FolderLock::acquire(int patience) {
    const QDeadlineTimer deadline(patience);
    while (!m_lock.tryLock()) {
        if (m_lock.error() != QLockFile::LockFailedError) return Result::NotPossible;
        // Nobody there can be called.
        const std::optional<QString> owner = host();
        if (owner && *owner != QSysInfo::machineHostName()) return Result::OutOfReach;
        if (isLeftEmpty() && replaceLock(&FolderLock::isLeftEmpty)) break;
        // The owner may not listen yet, or may just have ended: both are tried again.
        if (callOwner(deadline)) return Result::OwnerCalled;
        // A lock that was left behind stays for ever where nothing can be written.
        const QString folder = QFileInfo(m_lock.fileName()).path();
        if (access(QFile::encodeName(folder).constData(), W_OK) != 0) return Result::NotPossible;
        if (deadline.hasExpired()) return Result::OutOfReach;
        QThread::msleep(RetryWait);
    }
    listen();
    return Result::Owned;
}

std::optional<QString> FolderLock::host() const {
    qint64 process = 0;
    QString host;
    QString program;
    if (!m_lock.getLockInfo(&process, &host, &program)) return std::nullopt;
    return host;
}

QString FolderLock::ownerHost() const { return host().value_or(QString()); }

QDateTime FolderLock::ownedSince() const { return QFileInfo(m_lock.fileName()).lastModified(); }

bool FolderLock::takeOver() {
    if (!replaceLock(nullptr)) return false;
    listen();
    return true;
}

// A lock that says nothing about its owner, as a power failure leaves it; one that is being written
// says so at once.
bool FolderLock::isLeftEmpty() const {
    return !host() && ownedSince().isValid() &&
           ownedSince().secsTo(QDateTime::currentDateTime()) > WritingTime;
}

// One process at a time, and only while the condition still holds: the lock may be another's by
// now.
bool FolderLock::replaceLock(bool (FolderLock::*condition)() const) {
    QLockFile guard(m_lock.fileName() + QStringLiteral(".rmlock"));
    return guard.tryLock() && (!condition || (this->*condition)()) &&
           m_lock.removeStaleLockFile() && m_lock.tryLock();
}

// One that hangs does not answer, and one that is ending lets the connection break.
bool FolderLock::callOwner(const QDeadlineTimer& deadline) {
    QLocalSocket socket;
    // A name that is not a file leaves nothing behind when its owner is killed.
    socket.setSocketOptions(QLocalSocket::AbstractNamespaceOption);
    socket.connectToServer(m_name);
    return socket.waitForConnected(ConnectWait) &&
           socket.waitForReadyRead(int(deadline.remainingTime()));
}

void FolderLock::listen() {
    m_server = new QLocalServer(this);
    m_server->setSocketOptions(QLocalServer::AbstractNamespaceOption);
    m_server->setListenBacklogSize(WaitingCalls);
    // The connection is the message, and any byte the answer.
    connect(m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* caller = m_server->nextPendingConnection()) {
            connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
            caller->write("!");
            caller->flush();
            caller->disconnectFromServer();
        }
        Q_EMIT called();
    });
    m_server->listen(m_name);
}
