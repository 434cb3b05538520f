// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checks.h"
#include "core/data/collation.h"
#include "core/data/database.h"
#include "core/data/run_time_error.h"
#include "trees.h"

#include <QFile>
#include <QStringList>

#include <sqlite3.h>

namespace {

constexpr int MostRows = 100;
constexpr int StepsBetweenLooks = 1000;
constexpr int MostLooks = 100;  // a statement that never ends is broken off

// The delivered database in memory, renewed after each change.
class Database {
public:
    Database() {
        QFile source(QStringLiteral(SOURCE_TREE "/program/db1.sql"));
        sqlite3_open(":memory:", &m_delivered);
        if (!source.open(QIODevice::ReadOnly) ||
            sqlite3_exec(m_delivered, source.readAll().constData(), nullptr, nullptr, nullptr))
            qFatal("no delivered database");
        connection.Open(QStringLiteral(":memory:"));
        sqlite3_limit(handle(), SQLITE_LIMIT_LENGTH, 1 << 20);
        sqlite3_progress_handler(handle(), StepsBetweenLooks, &Database::look, &m_looks);
        renew();
    }
    ~Database() { sqlite3_close(m_delivered); }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    sqlite3* handle() const { return connection.handle(); }

    void renew() {
        m_looks = 0;
        if (sqlite3_total_changes(handle()) == m_changes) return;
        sqlite3_backup* copy = sqlite3_backup_init(handle(), "main", m_delivered, "main");
        if (!copy) qFatal("%s", sqlite3_errmsg(handle()));
        sqlite3_backup_step(copy, -1);
        sqlite3_backup_finish(copy);
        m_changes = sqlite3_total_changes(handle());
    }

    // The first column of a query's rows.
    QStringList column(const QString& query) {
        m_looks = 0;
        Recordset rs;
        rs.Open(query, connection, CursorType::Dynamic, LockType::ReadOnly);
        QStringList values;
        for (; rs.isOpen() && !rs.EOF_(); rs.MoveNext()) values += rs.Fields("v");
        return values;
    }

    Connection connection;

private:
    static int look(void* looks) { return ++*static_cast<int*>(looks) > MostLooks; }

    sqlite3* m_delivered = nullptr;
    int m_changes = -1;
    int m_looks = 0;
};

QString tablesOf(Database& db) {
    return db
        .column(QStringLiteral("SELECT type || name || tbl_name || ifnull(sql, '') AS v "
                               "FROM sqlite_master"))
        .join(QLatin1Char('\n'));
}

void walk(Recordset& rs) {
    for (int row = 0; rs.isOpen() && !rs.EOF_() && row < MostRows; ++row) {
        rs.Fields("title");
        rs.MoveNext();
    }
    if (rs.isOpen()) rs.MoveFirst();
}

QString checkRun(Database& db, const QString& source) {
    Recordset rs;
    try {
        rs.Open(source, db.connection, CursorType::Dynamic, LockType::Optimistic);
        walk(rs);
    } catch (const RunTimeError& error) {
        if (error.number() != RunTimeError::StatementRefused &&
            error.number() != RunTimeError::NoSuchItem &&
            error.number() != RunTimeError::NoCurrentRecord)
            return QStringLiteral("error ") + QString::number(error.number());
        if (error.description().isEmpty()) return QStringLiteral("an error without a word");
    }
    rs.Close();
    if (!sqlite3_get_autocommit(db.handle())) return QStringLiteral("a transaction is left open");
    if (sqlite3_next_stmt(db.handle(), nullptr)) return QStringLiteral("a statement is left open");
    static const QString tables = [] { return tablesOf(*std::make_unique<Database>()); }();
    if (tablesOf(db) != tables) return QStringLiteral("the tables have changed");
    return {};
}

// A value that is joined into statements comes back as it was, and is found and deleted by itself.
QString checkValue(Database& db, QString value) {
    value.remove(QLatin1Char('\'')).remove(QChar(u'\0'));
    const QString quoted = QLatin1Char('\'') + value + QLatin1Char('\'');
    db.column(QStringLiteral("INSERT INTO categories (name, description) VALUES(") + quoted +
              QStringLiteral(", 'x')"));
    const QStringList found =
        db.column(QStringLiteral("SELECT name AS v FROM categories WHERE name = ") + quoted);
    if (found != QStringList{value}) return QStringLiteral("the value is stored otherwise");
    db.column(QStringLiteral("DELETE * FROM categories WHERE name = ") + quoted);
    if (!db.column(QStringLiteral("SELECT name AS v FROM categories")).isEmpty())
        return QStringLiteral("the value is not deleted");
    return {};
}

int sign(int order) { return (order > 0) - (order < 0); }

QString checkOrder(const QByteArray& bytes) {
    QList<QByteArray> texts = bytes.split('\n');
    texts.resize(3);
    const auto order = [&](int i, int k) {
        return sign(compareTexts({texts[i].constData(), size_t(texts[i].size())},
                                 {texts[k].constData(), size_t(texts[k].size())}));
    };
    for (int i = 0; i < 3; ++i) {
        if (order(i, i) != 0) return QStringLiteral("a text differs from itself");
        const int k = (i + 1) % 3;
        const int l = (i + 2) % 3;
        if (order(i, k) != -order(k, i)) return QStringLiteral("the order depends on the side");
        if (order(i, k) <= 0 && order(k, l) <= 0 && order(i, l) > 0)
            return QStringLiteral("the order goes in a circle");
    }
    return {};
}

}  // namespace

QString checkStatements(const QByteArray& bytes) {
    static Database db;
    const QString text = QString::fromUtf8(bytes);
    QString wrong = checkRun(db, text);
    db.renew();
    if (wrong.isEmpty()) wrong = checkValue(db, text);
    db.renew();
    return wrong.isEmpty() ? checkOrder(bytes) : wrong;
}
