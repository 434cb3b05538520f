// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// One program on one folder.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QLockFile>
#include <QObject>
#include <QString>

#include <optional>

class QDeadlineTimer;
class QSocketNotifier;

// Owns the program's folder through the lock file ".lorvanite.lock" in it, so that two programs do
// not write the same files. Whoever owns it can be called to the front by later starts of the same
// user on the same computer. The folder is released when the object goes; a lock that a killed
// process has left is taken over.
class FolderLock : public QObject {
    Q_OBJECT

public:
    enum class Result {
        Owned,        // this process owns the folder
        OwnerCalled,  // another process owns it and has been called to the front
        OutOfReach,   // another computer, another user or a process that hangs owns it
        NotPossible,  // the folder cannot be written, so that nobody can own it
    };

    explicit FolderLock(const QString& folder);
    ~FolderLock() override;

    // Tries to own the folder. If a process of this computer owns it, that process is called to
    // the front; it is given `patience` milliseconds to answer, which it does once its event loop
    // runs.
    Result acquire(int patience = 10'000);

    // After OutOfReach: the name of the owner's computer, and since when it has owned the folder.
    // Empty and invalid if the lock file cannot be read.
    QString ownerHost() const;
    QDateTime ownedSince() const;

    // After OutOfReach, once the user has decided so: takes the lock from its owner, who is not
    // told. False if it cannot be had; the program may go on without it.
    bool takeOver();

Q_SIGNALS:
    // A later start calls this process to the front. Comes through the event loop.
    void called();

private:
    std::optional<QString> host() const;
    bool isLeftEmpty() const;
    bool replaceLock(bool (FolderLock::*condition)() const);
    bool callOwner(const QDeadlineTimer& deadline);
    void listen();
    void answer();

    QByteArray m_name;  // of the local socket
    QLockFile m_lock;
    int m_socket = -1;
    QSocketNotifier* m_calls = nullptr;
};
