// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "keeping/folder_lock.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>
#include <QSysInfo>
#include <QThread>

#include <cstddef>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr int RetryWait = 20;   // milliseconds
constexpr int WritingTime = 5;  // seconds

// How many starts at the same moment can wait for the owner's event loop.
constexpr int WaitingCalls = 128;

// The same for every path to the folder; another one for another user, whose windows are on
// another screen.
QByteArray socketName(const QString& folder) {
    const QString path = QFileInfo(folder).canonicalFilePath();
    const QByteArray key = path.toUtf8() + '\n' + QByteArray::number(getuid());
    return "lorvanite-" + QCryptographicHash::hash(key, QCryptographicHash::Sha1).toHex();
}

// A plain socket: Qt's class for it comes with libraries that every start would wait for.
int newSocket() { return socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0); }

// Binds or connects a socket to a name. The name is not a file, so it leaves nothing behind when
// its owner is killed.
using Attach = int(int socket, const sockaddr* address, socklen_t size);
bool attach(Attach* call, int socket, const QByteArray& name) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path + 1, name.constData(), size_t(name.size()));
    const auto size = offsetof(sockaddr_un, sun_path) + 1 + size_t(name.size());
    return call(socket, reinterpret_cast<const sockaddr*>(&address), socklen_t(size)) == 0;
}

// The connection is the call, and any byte the answer.
bool isAnswered(int socket, int patience) {
    pollfd answer{socket, POLLIN, 0};
    char byte = 0;
    return poll(&answer, 1, patience) == 1 && read(socket, &byte, 1) == 1;
}

}  // namespace

FolderLock::FolderLock(const QString& folder)
    : m_name(socketName(folder)), m_lock(folder + QStringLiteral("/.lorvanite.lock")) {
    // However long a process has been running, its lock is not stale.
    m_lock.setStaleLockTime(0);
}

FolderLock::~FolderLock() {
    delete m_calls;
    if (m_socket >= 0) close(m_socket);
}

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
    const int socket = newSocket();
    const bool answered =
        attach(&::connect, socket, m_name) && isAnswered(socket, int(deadline.remainingTime()));
    close(socket);
    return answered;
}

void FolderLock::listen() {
    m_socket = newSocket();
    if (!attach(&::bind, m_socket, m_name) || ::listen(m_socket, WaitingCalls) != 0) return;
    m_calls = new QSocketNotifier(m_socket, QSocketNotifier::Read);
    connect(m_calls, &QSocketNotifier::activated, this, &FolderLock::answer);
}

void FolderLock::answer() {
    for (int caller; (caller = accept4(m_socket, nullptr, nullptr, SOCK_CLOEXEC)) >= 0;) {
        send(caller, "!", 1, MSG_NOSIGNAL);
        close(caller);
        Q_EMIT called();
    }
}
