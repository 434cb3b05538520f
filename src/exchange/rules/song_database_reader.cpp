// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The song database of OpenLP: an SQLite file, read from its bytes in memory.
#include "exchange/rules/form_readers.h"
#include "exchange/rules/plain_text.h"
#include "exchange/rules/song_builder.h"
#include "exchange/rules/verse_names.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include <functional>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// Steps of the database's engine before it is taken for endless; a song takes some hundred.
constexpr int StepsPerCall = 10'000;
constexpr qint64 MaxCalls = 20'000;

// Only reading, and nothing that the file brings along: no views, triggers, functions, pragmas.
int authorizeReading(void*, int action, const char*, const char*, const char*, const char*) {
    return action == SQLITE_SELECT || action == SQLITE_READ ? SQLITE_OK : SQLITE_DENY;
}

class MemoryDatabase {
public:
    explicit MemoryDatabase(const QByteArray& bytes) : m_bytesLeft(2 * bytes.size()) {
        // Both version bytes at 1: a file in WAL mode has no log here, so it is read without one.
        const auto size = sqlite3_int64(bytes.size());
        auto* copy = static_cast<unsigned char*>(sqlite3_malloc64(sqlite3_uint64(size)));
        if (!copy) return;
        std::copy_n(bytes.constData(), bytes.size(), copy);
        if (size > 19) copy[18] = copy[19] = 1;
        if (sqlite3_open_v2(":memory:", &m_handle, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
            sqlite3_free(copy);
            return;
        }
        sqlite3_db_config(m_handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
        sqlite3_db_config(m_handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
        sqlite3_db_config(m_handle, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
        sqlite3_db_config(m_handle, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
        sqlite3_exec(m_handle, "PRAGMA cell_size_check = ON", nullptr, nullptr, nullptr);
        sqlite3_limit(m_handle, SQLITE_LIMIT_LENGTH, 16 * 1024 * 1024);
        m_open = sqlite3_deserialize(
                     m_handle, "main", copy, size, size,
                     SQLITE_DESERIALIZE_READONLY | SQLITE_DESERIALIZE_FREEONCLOSE) == SQLITE_OK;
        sqlite3_set_authorizer(m_handle, authorizeReading, nullptr);
        sqlite3_progress_handler(
            m_handle, StepsPerCall,
            [](void* left) { return --*static_cast<qint64*>(left) < 0 ? 1 : 0; }, &m_callsLeft);
    }

    ~MemoryDatabase() { sqlite3_close(m_handle); }
    MemoryDatabase(const MemoryDatabase&) = delete;
    MemoryDatabase& operator=(const MemoryDatabase&) = delete;

    bool isOpen() const { return m_open; }
    QString problem() const { return m_problem; }

    // Hands each row to `take`. False where the statement fails. A damaged file may show the same
    // pages in many rows: more text than the file can hold counts as damage.
    bool rows(const QString& statement, const std::function<void(sqlite3_stmt*)>& take) {
        sqlite3_stmt* prepared = nullptr;
        int state =
            sqlite3_prepare_v2(m_handle, statement.toUtf8().constData(), -1, &prepared, nullptr);
        if (state == SQLITE_OK)
            while ((state = sqlite3_step(prepared)) == SQLITE_ROW && m_bytesLeft >= 0) {
                for (int i = 0; i < sqlite3_column_count(prepared); ++i)
                    m_bytesLeft -= sqlite3_column_bytes(prepared, i);
                if (m_bytesLeft >= 0) take(prepared);
            }
        sqlite3_finalize(prepared);
        if (state == SQLITE_DONE) return true;
        m_problem = state == SQLITE_INTERRUPT
                        ? u"The database is not read further: it goes on without end."_s
                        : u"The database is damaged."_s;
        return false;
    }

    // The columns of a table, in lower case; empty where there is no such table.
    QSet<QString> columns(const QString& table) {
        QSet<QString> names;
        sqlite3_stmt* prepared = nullptr;
        const QString statement = u"SELECT * FROM \"%1\" LIMIT 0"_s.arg(table);
        if (sqlite3_prepare_v2(m_handle, statement.toUtf8().constData(), -1, &prepared, nullptr) ==
            SQLITE_OK)
            for (int i = 0; i < sqlite3_column_count(prepared); ++i)
                names += QString::fromUtf8(sqlite3_column_name(prepared, i)).toLower();
        sqlite3_finalize(prepared);
        return names;
    }

private:
    sqlite3* m_handle = nullptr;
    bool m_open = false;
    qint64 m_callsLeft = MaxCalls;
    qint64 m_bytesLeft;
    QString m_problem;
};

QString columnText(sqlite3_stmt* row, int column) {
    const void* bytes = sqlite3_column_blob(row, column);
    const int size = sqlite3_column_bytes(row, column);
    if (!bytes || size <= 0) return {};
    return decodedPiece(QByteArray(static_cast<const char*>(bytes), size), {});
}

class DatabaseReader {
public:
    DatabaseReader(MemoryDatabase& database, ExchangeContent& content)
        : m_database(database), m_content(content) {}

    void read() {
        const QSet<QString> columns = m_database.columns(u"songs"_s);
        if (!columns.contains(u"title"_s) || !columns.contains(u"lyrics"_s)) {
            const bool sound =
                m_database.rows(u"SELECT name FROM sqlite_master"_s, [](sqlite3_stmt*) {});
            m_content.reason = sound ? u"The database holds no songs."_s : m_database.problem();
            return;
        }
        QStringList wanted = {u"id"_s};
        for (const QString& name :
             {u"title"_s, u"alternate_title"_s, u"lyrics"_s, u"verse_order"_s, u"copyright"_s,
              u"comments"_s, u"ccli_number"_s, u"song_number"_s, u"song_key"_s})
            if (columns.contains(name)) wanted += name;
        const bool whole = m_database.rows(
            u"SELECT %1 FROM songs"_s.arg(
                columns.contains(u"id"_s) ? wanted.join(u',') : u"rowid AS "_s + wanted.join(u',')),
            [&](sqlite3_stmt* row) { readSong(row, wanted); });
        if (!whole) m_content.reason = m_database.problem();
        readAuthors();
        readBooks();
        readTopics();
    }

private:
    Song* songOf(sqlite3_stmt* row, int column) {
        const auto found = m_places.constFind(sqlite3_column_int64(row, column));
        return found == m_places.constEnd() ? nullptr : &m_content.songs[*found];
    }

    void readSong(sqlite3_stmt* row, const QStringList& wanted) {
        Song song;
        QString order, lyrics;
        for (int i = 1; i < int(wanted.size()); ++i) {
            const QString text = columnText(row, i), value = cleanField(text);
            if (wanted[i] == "lyrics"_L1) lyrics = text;
            if (value.isEmpty()) continue;
            if (wanted[i] == "title"_L1)
                song.titles.prepend(value);
            else if (wanted[i] == "alternate_title"_L1)
                song.titles += value;
            else if (wanted[i] == "verse_order"_L1)
                order = value;
            else if (wanted[i] == "copyright"_L1)
                song.copyright = value;
            else if (wanted[i] == "comments"_L1)
                song.comments += value;
            else if (wanted[i] == "ccli_number"_L1)
                song.ccli = ccliDigits(value);
            else if (wanted[i] == "song_key"_L1)
                song.key = value;
        }
        readDatabaseLyrics(lyrics, song);
        setVerseOrder(song, order.split(u' ', Qt::SkipEmptyParts));
        m_places.insert(sqlite3_column_int64(row, 0), m_content.songs.size());
        m_content.songs += song;
    }

    void readAuthors() {
        const QSet<QString> names = m_database.columns(u"authors"_s);
        const QSet<QString> links = m_database.columns(u"authors_songs"_s);
        if (names.isEmpty() || links.isEmpty()) return;
        const QString name = names.contains(u"display_name"_s)
                                 ? u"a.display_name"_s
                                 : u"a.first_name || ' ' || a.last_name"_s;
        const QString type = links.contains(u"author_type"_s) ? u"l.author_type"_s : u"''"_s;
        m_database.rows(
            u"SELECT l.song_id, %1, %2 FROM authors_songs l, authors a "
            "WHERE a.id = l.author_id"_s.arg(name, type),
            [&](sqlite3_stmt* row) {
                Song* song = songOf(row, 0);
                if (!song) return;
                const SongAuthor author{cleanField(columnText(row, 1)), workOf(columnText(row, 2))};
                if (!author.name.isEmpty() && !song->authors.contains(author))
                    song->authors += author;
            });
    }

    static SongAuthor::Work workOf(const QString& type) {
        if (type == "words"_L1) return SongAuthor::Work::Words;
        if (type == "music"_L1) return SongAuthor::Work::Music;
        if (type == "translation"_L1) return SongAuthor::Work::Translation;
        return SongAuthor::Work::Any;
    }

    void readBooks() {
        if (m_database.columns(u"song_books"_s).isEmpty()) return;
        QString statement;
        if (!m_database.columns(u"songs_songbooks"_s).isEmpty())
            statement =
                u"SELECT l.song_id, b.name, l.entry FROM songs_songbooks l, song_books b "
                "WHERE b.id = l.songbook_id"_s;
        else if (m_database.columns(u"songs"_s).contains(u"song_book_id"_s))
            statement =
                u"SELECT s.id, b.name, s.song_number FROM songs s, song_books b "
                "WHERE b.id = s.song_book_id"_s;
        else
            return;
        m_database.rows(statement, [&](sqlite3_stmt* row) {
            const Songbook book{cleanField(columnText(row, 1)), cleanField(columnText(row, 2))};
            if (Song* song = songOf(row, 0); song && !book.name.isEmpty()) song->songbooks += book;
        });
    }

    void readTopics() {
        if (m_database.columns(u"topics"_s).isEmpty()) return;
        m_database.rows(
            u"SELECT l.song_id, t.name FROM songs_topics l, topics t WHERE t.id = l.topic_id"_s,
            [&](sqlite3_stmt* row) {
                const QString topic = cleanField(columnText(row, 1));
                Song* song = songOf(row, 0);
                if (song && !topic.isEmpty() && !song->themes.contains(topic))
                    song->themes += topic;
            });
    }

    MemoryDatabase& m_database;
    ExchangeContent& m_content;
    QHash<sqlite3_int64, qsizetype> m_places;
};

}  // namespace

void readSongDatabase(const QByteArray& bytes, ExchangeContent& content) {
    MemoryDatabase database(bytes);
    if (!database.isOpen()) {
        content.reason = u"The database is damaged."_s;
        return;
    }
    DatabaseReader(database, content).read();
    content.songs.removeIf(
        [](const Song& song) { return song.titles.isEmpty() && song.verses.isEmpty(); });
}
