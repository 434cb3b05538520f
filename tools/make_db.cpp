// Creates the delivered database from its SQL text: lorvanite_make_db FROM.sql TO.mdb
// Writes the new file beside the target and renames it.
#include <QFile>
#include <QTextStream>

#include <cstdio>
#include <sqlite3.h>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: lorvanite_make_db FROM.sql TO.mdb\n", stderr);
        return 2;
    }
    const QString target = QFile::decodeName(argv[2]);
    const QString draft = target + QStringLiteral(".new");
    QFile source(QFile::decodeName(argv[1]));
    if (!source.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", argv[1]);
        return 1;
    }
    QFile::remove(draft);
    sqlite3* db = nullptr;
    char* message = nullptr;
    if (sqlite3_open(draft.toUtf8().constData(), &db) != SQLITE_OK ||
        sqlite3_exec(db, source.readAll().constData(), nullptr, nullptr, &message) != SQLITE_OK) {
        std::fprintf(stderr, "%s: %s\n", argv[1], message ? message : sqlite3_errmsg(db));
        sqlite3_free(message);
        sqlite3_close(db);
        return 1;
    }
    if (sqlite3_close(db) != SQLITE_OK) return 1;
    QFile::remove(target);
    return QFile::rename(draft, target) ? 0 : 1;
}
