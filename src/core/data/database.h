// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The one database connection and the running of statements on it.
#pragma once

#include <QString>

#include <functional>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

enum class CursorType { Dynamic = 2 };
enum class LockType { ReadOnly = 1, Optimistic = 3, BatchOptimistic = 4 };

// A connection to a database file. Every statement commits on its own, and is on the disk when its
// call returns. Comparisons and ORDER BY of texts ignore case for all of Unicode and follow the
// English alphabet. Statements may read and write rows; those that attach files, set pragmas, begin
// transactions or change the tables are refused; the class Transaction begins one. Deliberate:
// behaviour 6.
class Connection {
public:
    using StatementCallback =
        std::function<void(const QString& source, CursorType cursor, LockType lock)>;

    Connection() = default;
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // Opens an existing file. Raises RunTimeError::StoreFailed if it cannot be opened, is not a
    // database or is locked by another program, ObjectIsOpen if this connection is open already.
    void Open(const QString& path);

    // Closes the file; does nothing if it is closed.
    void Close();

    bool isOpen() const { return m_handle != nullptr; }

    // Sets a function that is called with each statement just before it runs, for a log.
    void onStatement(StatementCallback callback) { m_callback = std::move(callback); }

    // SQLite's handle, for the online backup; null if the connection is closed.
    sqlite3* handle() const { return m_handle; }

private:
    friend class Recordset;
    friend class Transaction;
    sqlite3* m_handle = nullptr;
    bool m_allowsTransactions = false;
    StatementCallback m_callback;
};

// The process's connection.
extern Connection dbConn;

// Upgrades the file "db1.mdb" in the program's folder to this program's version if necessary, and
// opens dbConn on it. Raises like upgradeDatabase and Connection::Open.
void openDatabase();

// One statement and the rows that it yields. After Open of a SELECT the first row is the current
// one, and the recordset is open until Close or its destruction. Any other statement has run to its
// end when Open returns, and leaves the recordset closed.
class Recordset {
public:
    Recordset() = default;
    ~Recordset();
    Recordset(Recordset&& other) noexcept;
    Recordset& operator=(Recordset&&) = delete;

    // Runs one statement. The cursor, the lock and the options are only logged. Raises
    // RunTimeError::ObjectIsOpen if this recordset is open, ObjectIsClosed if the connection is
    // closed, StatementRefused if the statement is refused or fails.
    void Open(const QString& source, Connection& connection, CursorType cursor, LockType lock,
              int options = -1);

    // Whether there is no current row. Raises RunTimeError::ObjectIsClosed if the recordset is
    // closed.
    bool EOF_() const;

    // A column of the current row as text; NULL is a null QString. Names ignore case. Raises
    // RunTimeError::NoCurrentRecord without a current row, NoSuchItem without such a column.
    QString Fields(const char* name) const { return Fields(columnOf(name)); }
    QString Fields(int column) const;

    // The same in UTF-8, until the next move.
    QByteArrayView Bytes(const char* name) const { return Bytes(columnOf(name)); }
    QByteArrayView Bytes(int column) const;

    // The same as a whole number; 0 for a text that is not one. Raises like Fields.
    qint64 Number(const char* name) const { return Number(columnOf(name)); }
    qint64 Number(int column) const;

    // The number of a column, from 0, with which the columns of many rows are read more quickly.
    // Needs no current row. Raises RunTimeError::NoSuchItem without such a column, ObjectIsClosed
    // if the recordset is closed.
    int Column(const char* name) const;

    // Moves to the next row. Raises RunTimeError::NoCurrentRecord without a current row.
    void MoveNext();

    // Runs the statement again and moves to its first row. Raises RunTimeError::NoCurrentRecord if
    // there is none.
    void MoveFirst();

    // Ends the statement; does nothing if the recordset is closed.
    void Close();

    bool isOpen() const { return m_statement != nullptr; }

private:
    void needRow() const;
    int columnOf(const char* name) const;
    void runToFirstRow();
    void step();

    sqlite3* m_handle = nullptr;
    sqlite3_stmt* m_statement = nullptr;
    std::vector<const char*> m_names;  // of the columns, as SQLite holds them
    bool m_onRow = false;
};

// Runs a SELECT on dbConn, read-only, and returns its open recordset. Raises like Recordset::Open.
[[nodiscard]] Recordset select(const QString& source);

// Runs an INSERT, UPDATE or DELETE on dbConn. Raises like Recordset::Open.
void execute(const QString& source, LockType lock = LockType::Optimistic);

// Whether a table has a row; false if it is missing. This is the program's own look at the store,
// and it is not logged.
bool hasRows(const char* table);

// Reads one value of the table prefs. Raises RunTimeError::NoCurrentRecord if the table has no row
// of that name.
QString preference(const QString& name);

// Writes one value of the table prefs. Does nothing if the table has no row of that name.
// Deliberate: behaviour 9.
void storePreference(const QString& name, const QString& value);
