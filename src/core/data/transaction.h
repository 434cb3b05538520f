// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Several statements of which all take effect, or none.
#pragma once

#include "core/data/database.h"

// Statements that run on the connection during the life of this object take effect with commit, all
// at once; without it the destructor rolls them back. After a statement that failed, no other may
// run before the object is gone: SQLite may have ended the transaction. Another program cannot
// write in between. The commands of the windows use none: each of their statements commits on its
// own.
class Transaction {
public:
    // Begins. Raises RunTimeError::ObjectIsClosed if the connection is closed, StatementRefused if
    // a transaction is open on it or another program is writing.
    explicit Transaction(Connection& connection);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    // Makes the changes last. Raises RunTimeError::StatementRefused if they cannot be written or
    // SQLite has rolled them back already, on a full disk for example, ObjectIsClosed if the
    // connection was closed; nothing has changed then.
    void commit();

private:
    int run(const char* statement);

    Connection& m_connection;
    bool m_isOpen = false;
};
