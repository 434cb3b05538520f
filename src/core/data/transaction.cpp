// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/transaction.h"

#include "core/data/run_time_error.h"

#include <sqlite3.h>
#include <tuple>

Transaction::Transaction(Connection& connection) : m_connection(connection) {
    if (!connection.isOpen()) throw RunTimeError(RunTimeError::ObjectIsClosed);
    // At once with the right to write: a later statement need not wait for another program.
    if (run("BEGIN IMMEDIATE") != SQLITE_OK)
        throw RunTimeError(RunTimeError::StatementRefused,
                           QString::fromUtf8(sqlite3_errmsg(connection.handle())));
    m_isOpen = true;
}

Transaction::~Transaction() {
    // If this fails, SQLite has rolled back by itself, or the next opening of the file does.
    if (m_isOpen && m_connection.isOpen()) std::ignore = run("ROLLBACK");
}

void Transaction::commit() {
    if (!m_connection.isOpen()) throw RunTimeError(RunTimeError::ObjectIsClosed);
    m_isOpen = false;
    if (run("COMMIT") == SQLITE_OK) return;
    const QString why = QString::fromUtf8(sqlite3_errmsg(m_connection.handle()));
    std::ignore = run("ROLLBACK");
    throw RunTimeError(RunTimeError::StatementRefused, why);
}

int Transaction::run(const char* statement) {
    m_connection.m_allowsTransactions = true;
    const int result = sqlite3_exec(m_connection.handle(), statement, nullptr, nullptr, nullptr);
    m_connection.m_allowsTransactions = false;
    return result;
}
