// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/database.h"

#include "core/data/collation.h"
#include "core/data/database_handle.h"
#include "core/data/database_upgrade.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"

#include <QStringDecoder>

#include <cstring>
#include <utility>

Connection dbConn;

namespace {

int collate(void*, int sizeA, const void* a, int sizeB, const void* b) {
    return compareTexts({static_cast<const char*>(a), static_cast<size_t>(sizeA)},
                        {static_cast<const char*>(b), static_cast<size_t>(sizeB)});
}

// Statements may read and write rows and do nothing else. `allowsTransactions` is the connection's.
int authorize(void* allowsTransactions, int action, const char*, const char*, const char*,
              const char*) {
    switch (action) {
        case SQLITE_TRANSACTION:
            return *static_cast<const bool*>(allowsTransactions) ? SQLITE_OK : SQLITE_DENY;
        case SQLITE_SELECT:
        case SQLITE_READ:
        case SQLITE_INSERT:
        case SQLITE_UPDATE:
        case SQLITE_DELETE:
        case SQLITE_FUNCTION:
        case SQLITE_RECURSIVE:
            return SQLITE_OK;
        default:
            return SQLITE_DENY;
    }
}

[[noreturn]] void refuse(sqlite3* handle) {
    throw RunTimeError(RunTimeError::StatementRefused, QString::fromUtf8(sqlite3_errmsg(handle)));
}

// Converts a stored text with everything in it: a plain conversion would drop a byte order mark at
// its start.
QString storedText(QByteArrayView bytes) {
    if (!bytes.startsWith("\xef\xbb\xbf")) return QString::fromUtf8(bytes);
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return decoder(bytes);
}

bool isBlank(const char* text) {
    for (; *text; ++text)
        if (!std::strchr(" \t\r\n;", *text)) return false;
    return true;
}

// The statement in SQLite's dialect: "DELETE * FROM songs" becomes "DELETE FROM songs".
QByteArray inStoreDialect(const QString& source) {
    QByteArray text = source.toUtf8();
    qsizetype at = 0;
    const auto skipBlanks = [&] {
        while (at < text.size() && std::strchr(" \t\r\n", text[at])) ++at;
    };
    skipBlanks();
    if (qstrnicmp(text.constData() + at, "delete", 6) != 0) return text;
    at += 6;
    skipBlanks();
    if (at < text.size() && text[at] == '*') text[at] = ' ';
    return text;
}

// Whether a statement holds a comment outside its quoted parts. No statement of the program does: a
// text in it has ended early, and the comment would hide the rest, the condition included.
bool hasComment(const QByteArray& text) {
    if (!text.contains("--") && !text.contains("/*")) return false;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (std::strchr("'\"`[", c)) {
            at = text.indexOf(c == '[' ? ']' : c, at + 1);
            if (at < 0) return false;
        } else if ((c == '-' || c == '/') && at + 1 < text.size() &&
                   text[at + 1] == (c == '-' ? '-' : '*')) {
            return true;
        }
    }
    return false;
}

void check(sqlite3* handle, int result) {
    if (result != SQLITE_OK) failStore(handle);
}

void setUp(sqlite3* handle, bool& allowsTransactions) {
    check(handle, sqlite3_busy_timeout(handle, LockWait));
    check(handle,
          sqlite3_create_collation_v2(handle, "NOCASE", SQLITE_UTF8, nullptr, collate, nullptr));
    makeDurable(handle);
    // The lists visit the rows of played_on song by song, that is all over the file.
    runInStore(handle, "PRAGMA cache_size = -65536");  // KiB, at most
    // Opening reads nothing yet: this shows whether the file is a database.
    runInStore(handle, "SELECT count(*) FROM sqlite_master");
    check(handle, sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr));
    // A text between double quotes is no text, but a name that does not exist.
    check(handle, sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr));
    check(handle, sqlite3_set_authorizer(handle, authorize, &allowsTransactions));
}

}  // namespace

Connection::~Connection() { Close(); }

void Connection::Open(const QString& path) {
    if (m_handle) throw RunTimeError(RunTimeError::ObjectIsOpen);
    const QString file = resolvedPath(path);
    try {
        // One thread alone uses the connection.
        StoreHandle handle =
            openStore(file.toUtf8().constData(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX);
        setUp(handle.get(), m_allowsTransactions);
        m_handle = handle.release();
    } catch (const RunTimeError& error) {
        failToOpen(file, error.description());
    }
}

void Connection::Close() {
    sqlite3_close_v2(m_handle);
    m_handle = nullptr;
}

void openDatabase() {
    const QString file = programFolder() + QStringLiteral("\\db1.mdb");
    upgradeDatabase(file);
    dbConn.Open(file);
}

Recordset::Recordset(Recordset&& other) noexcept
    : m_handle(other.m_handle),
      m_statement(std::exchange(other.m_statement, nullptr)),
      m_names(std::move(other.m_names)),
      m_onRow(std::exchange(other.m_onRow, false)) {}

Recordset::~Recordset() { Close(); }

void Recordset::Open(const QString& source, Connection& connection, CursorType cursor,
                     LockType lock, int options) {
    Q_UNUSED(options)
    if (m_statement) throw RunTimeError(RunTimeError::ObjectIsOpen);
    if (!connection.m_handle) throw RunTimeError(RunTimeError::ObjectIsClosed);
    m_handle = connection.m_handle;
    if (connection.m_callback) connection.m_callback(source, cursor, lock);
    const QByteArray text = inStoreDialect(source);
    const char* rest = nullptr;
    // SQLite reads up to the first NUL and would silently ignore what follows.
    if (text.contains('\0'))
        throw RunTimeError(RunTimeError::StatementRefused,
                           QStringLiteral("The statement contains a NUL character."));
    if (hasComment(text))
        throw RunTimeError(RunTimeError::StatementRefused,
                           QStringLiteral("The statement contains a comment."));
    if (sqlite3_prepare_v2(m_handle, text.constData(), int(text.size()) + 1, &m_statement, &rest) !=
        SQLITE_OK)
        refuse(m_handle);
    if (!m_statement || !isBlank(rest)) {
        Close();
        throw RunTimeError(RunTimeError::StatementRefused,
                           QStringLiteral("The text has to be exactly one statement."));
    }
    runToFirstRow();
    if (m_names.empty()) Close();
}

// The first step may compile the statement again, which frees the names read before.
void Recordset::runToFirstRow() {
    step();
    m_names.resize(size_t(sqlite3_column_count(m_statement)));
    for (size_t i = 0; i < m_names.size(); ++i)
        m_names[i] = sqlite3_column_name(m_statement, int(i));
}

void Recordset::step() {
    const int result = sqlite3_step(m_statement);
    m_onRow = result == SQLITE_ROW;
    if (m_onRow || result == SQLITE_DONE) return;
    const RunTimeError error(RunTimeError::StatementRefused,
                             QString::fromUtf8(sqlite3_errmsg(m_handle)));
    Close();
    throw error;
}

bool Recordset::EOF_() const {
    if (!m_statement) throw RunTimeError(RunTimeError::ObjectIsClosed);
    return !m_onRow;
}

void Recordset::needRow() const {
    if (EOF_()) throw RunTimeError(RunTimeError::NoCurrentRecord);
}

int Recordset::columnOf(const char* name) const {
    needRow();
    return Column(name);
}

int Recordset::Column(const char* name) const {
    if (!m_statement) throw RunTimeError(RunTimeError::ObjectIsClosed);
    for (size_t i = 0; i < m_names.size(); ++i)
        if (sqlite3_stricmp(m_names[i], name) == 0) return int(i);
    throw RunTimeError(
        RunTimeError::NoSuchItem,
        QStringLiteral("The result has no field \"%1\".").arg(QString::fromUtf8(name)));
}

QString Recordset::Fields(int column) const { return storedText(Bytes(column)); }

QByteArrayView Recordset::Bytes(int column) const {
    needRow();
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column));
    return {text, sqlite3_column_bytes(m_statement, column)};
}

qint64 Recordset::Number(int column) const {
    needRow();
    return sqlite3_column_int64(m_statement, column);
}

void Recordset::MoveNext() {
    needRow();
    step();
}

void Recordset::MoveFirst() {
    if (!m_statement) throw RunTimeError(RunTimeError::ObjectIsClosed);
    sqlite3_reset(m_statement);
    runToFirstRow();
    if (!m_onRow) throw RunTimeError(RunTimeError::NoCurrentRecord);
}

void Recordset::Close() {
    sqlite3_finalize(m_statement);
    m_statement = nullptr;
    m_onRow = false;
}

Recordset select(const QString& source) {
    Recordset rows;
    rows.Open(source, dbConn, CursorType::Dynamic, LockType::ReadOnly);
    return rows;
}

void execute(const QString& source, LockType lock) {
    Recordset().Open(source, dbConn, CursorType::Dynamic, lock);
}

bool hasRows(const char* table) {
    sqlite3_stmt* statement = nullptr;
    const QByteArray source = QByteArrayLiteral("SELECT 1 FROM ") + table + " LIMIT 1";
    sqlite3_prepare_v2(dbConn.handle(), source.constData(), -1, &statement, nullptr);
    const bool found = sqlite3_step(statement) == SQLITE_ROW;
    sqlite3_finalize(statement);
    return found;
}

QString preference(const QString& name) {
    return select(QStringLiteral("SELECT * FROM prefs WHERE var_name = '") + name +
                  QLatin1Char('\''))
        .Fields("var_value");
}

void storePreference(const QString& name, const QString& value) {
    execute(QStringLiteral("UPDATE prefs SET var_value = '") + value +
            QStringLiteral("' WHERE var_name = '") + name + QLatin1Char('\''));
}
