// The one database connection and the running of statements on it.
#pragma once

#include <QAnyStringView>
#include <QString>

#include <functional>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

enum class CursorType { Dynamic = 2 };
enum class LockType { ReadOnly = 1, Optimistic = 3, BatchOptimistic = 4 };

// A connection to a database file. Every statement commits by itself, and a committed statement
// is on the disk when its call returns. Comparisons and ORDER BY of text ignore case for all of
// Unicode and order as a person would. Statements may neither attach files, nor set pragmas, nor
// begin transactions, nor change the tables.
class Connection {
public:
    using StatementCallback =
        std::function<void(const QString& source, CursorType cursor, LockType lock)>;

    Connection() = default;
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // Opens the file, which has to exist. Raises -2147467259 where it cannot be opened or is no
    // database, 3705 where the connection is open.
    void Open(const QString& path);

    // Closes the file. Nothing happens where it is closed.
    void Close();

    bool isOpen() const { return m_handle != nullptr; }

    // Is told each statement as it is run, for a log.
    void onStatement(StatementCallback callback) { m_callback = std::move(callback); }

    // SQLite's handle, for the online backup. Null where the connection is closed.
    sqlite3* handle() const { return m_handle; }

private:
    friend class Recordset;
    sqlite3* m_handle = nullptr;
    StatementCallback m_callback;
};

// The process's connection.
extern Connection dbConn;

// Opens dbConn on the file "db1.mdb" in the program's folder, which is brought up to this
// program's version first. Errors as of Connection::Open and upgradeDatabase.
void openDatabase();

// One statement and the rows it yields. A SELECT stands on its first row after Open and stays
// open until Close; any other statement has run to its end when Open returns, and leaves the
// recordset closed.
class Recordset {
public:
    Recordset() = default;
    ~Recordset();
    Recordset(Recordset&& other) noexcept;
    Recordset& operator=(Recordset&&) = delete;

    // Runs one statement. Raises 3705 where this recordset is open, 3704 where the connection is
    // closed, -2147217900 where the statement is refused or fails.
    void Open(const QString& source, Connection& connection, CursorType cursor, LockType lock,
              int options = -1);

    // True where there is no current row. Raises 3704 where the recordset is closed.
    bool EOF_() const;

    // The value of a column of the current row as text, NULL as the empty text, which is null then.
    // Names ignore case. Raises 3021 without a current row, 3265 without such a column.
    QString Fields(QAnyStringView name) const;

    // To the next row. Raises 3021 without a current row.
    void MoveNext();

    // Back to the first row, running the statement anew. Raises 3021 where there is no row at all.
    void MoveFirst();

    void Close();
    bool isOpen() const { return m_statement != nullptr; }

private:
    void step();

    sqlite3* m_handle = nullptr;
    sqlite3_stmt* m_statement = nullptr;
    std::vector<QString> m_names;
    bool m_onRow = false;
};

// Runs a SELECT on dbConn, read-only, and returns its open recordset. Raises like Recordset::Open.
[[nodiscard]] Recordset select(const QString& source);

// Runs an INSERT, UPDATE or DELETE on dbConn. Raises like Recordset::Open.
void execute(const QString& source, LockType lock = LockType::Optimistic);

// Reads one value of the table prefs. Raises RunTimeError::NoCurrentRecord if the table has no row
// of that name.
QString preference(const QString& name);

// Writes one value of the table prefs; does nothing if the table has no row of that name.
void storePreference(const QString& name, const QString& value);
