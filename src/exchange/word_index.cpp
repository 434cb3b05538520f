// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/word_index.h"

#include "charts/rules/chart_page.h"
#include "core/data/database.h"
#include "core/data/paths.h"
#include "core/grid/sheet_grid.h"
#include "exchange/rules/plain_text.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <sqlite3.h>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace {

// Changes whenever the tables or the folding of words do.
constexpr int IndexVersion = 1;
constexpr int MostCandidates = 300;  // that are looked at line by line
constexpr qsizetype MostWords = 30;

struct IndexFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Letters that are no letter with an accent.
QString plainLetter(QChar c) {
    static const QHash<QChar, QString> letters = {
        {QChar(0xDF), u"ss"_s},  {QChar(0xE6), u"ae"_s}, {QChar(0xF8), u"o"_s},
        {QChar(0x153), u"oe"_s}, {QChar(0x142), u"l"_s}, {QChar(0x111), u"d"_s},
        {QChar(0xF0), u"d"_s},   {QChar(0xFE), u"th"_s}, {QChar(0x131), u"i"_s}};
    return letters.value(c, QString(c));
}

bool isApostrophe(QChar c) {
    switch (c.unicode()) {
        case '\'':
        case '`':
        case 0xB4:
        case 0x2018:
        case 0x2019:
        case 0x201B:
        case 0x2BC:
            return true;
        default:
            return false;
    }
}

bool isHyphen(QChar c) { return c == u'-' || c == QChar(0x2010) || c == QChar(0x2011); }

// Scripts that are written without blanks: each character is a word.
bool isWholeWord(QChar c) {
    return c.script() == QChar::Script_Han || c.script() == QChar::Script_Hiragana ||
           c.script() == QChar::Script_Katakana;
}

// The text in small plain letters; hyphens stay, all else becomes blanks.
QString plainLetters(const QString& text) {
    QString plain;
    for (const QChar c : text.toLower().normalized(QString::NormalizationForm_KD)) {
        if (c.isMark() || isApostrophe(c)) continue;
        if (isWholeWord(c))
            plain += u' ' + QString(c) + u' ';
        else if (c.isLetterOrNumber() || c.isSurrogate())
            plain += plainLetter(c);
        else
            plain += isHyphen(c) ? u'-' : u' ';
    }
    return plain;
}

// "a - maz - ing" is "a-maz-ing".
QStringList joinedAtHyphens(const QString& plain) {
    QStringList joined;
    bool open = false;
    for (const QString& word : plain.simplified().split(u' ', Qt::SkipEmptyParts)) {
        if ((open || word.startsWith(u'-')) && !joined.isEmpty())
            joined.last() += word;
        else
            joined += word;
        open = word.endsWith(u'-');
    }
    return joined;
}

QStringList wordsToFind(const QString& text) {
    QStringList words;
    for (QString word : joinedAtHyphens(plainLetters(text))) {
        word.remove(u'-');
        if (!word.isEmpty() && words.size() < MostWords) words += word;
    }
    return words;
}

qint64 stampOf(const QFileInfo& file) { return file.lastModified().toMSecsSinceEpoch(); }

QString linesOfChart(const QString& path) {
    SheetGrid chart;
    if (!chart.LoadFromFile(path)) return {};
    QStringList lines;
    for (int sheet = 1; sheet <= chart.SheetCount(); ++sheet)
        for (int row = ChartRow::FirstLyric; row <= chart.dataRowsOf(sheet); row += 2) {
            const QString line = cleanField(chart.textAt(sheet, ChartColumn::Text, row));
            if (!line.isEmpty()) lines += line;
        }
    return lines.join(u'\n');
}

// How well a line has the words: how many of them, and whether one after the other.
struct LineScore {
    int words = 0;
    bool inOrder = false;

    auto operator<=>(const LineScore&) const = default;
};

LineScore scoreOf(const QString& line, const QStringList& words) {
    LineScore score;
    const QString padded = u' ' + line + u' ';
    for (qsizetype i = 0; i < words.size(); ++i) {
        const QString word = u' ' + words[i] + (i + 1 < words.size() ? u" "_s : QString());
        score.words += padded.contains(word);
    }
    score.inOrder = padded.contains(u' ' + words.join(u' '));
    return score;
}

}  // namespace

QString foldedWords(const QString& text) {
    QStringList words;
    for (const QString& word : joinedAtHyphens(plainLetters(text))) {
        const QStringList parts = word.split(u'-', Qt::SkipEmptyParts);
        if (parts.size() > 1) words += parts.join(QString());
        words += parts;
    }
    return words.join(u' ');
}

QList<IndexedChart> chartsToIndex() {
    QList<IndexedChart> charts;
    QSet<QString> tied;
    Recordset rs = select(u"SELECT ID, title, fileLoco FROM songs"_s);
    for (; !rs.EOF_(); rs.MoveNext()) {
        const QString path = rs.Fields("fileLoco");
        const QString file = path.isEmpty() ? QString() : resolvedPath(path);
        charts += {rs.Fields("ID").toInt(), cleanField(rs.Fields("title")), file};
        tied += QFileInfo(file).absoluteFilePath();
    }
    rs.Close();
    const QDir folder(programFolder() + u"/sheetmusic"_s);
    for (const QFileInfo& file : folder.entryInfoList({u"*.stp"_s}, QDir::Files, QDir::Name))
        if (!tied.contains(file.absoluteFilePath()))
            charts += {0, file.completeBaseName(), file.absoluteFilePath()};
    return charts;
}

// One statement of the index. Any failure raises IndexFailure.
class WordIndex::Statement {
public:
    Statement(sqlite3* handle, const char* text) : m_handle(handle) {
        if (sqlite3_prepare_v2(handle, text, -1, &m_statement, nullptr) != SQLITE_OK) fail();
    }
    ~Statement() { sqlite3_finalize(m_statement); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    Statement& bind(int place, qint64 number) {
        sqlite3_bind_int64(m_statement, place, number);
        return *this;
    }
    Statement& bind(int place, const QString& text) {
        const QByteArray bytes = text.toUtf8();
        sqlite3_bind_text(m_statement, place, bytes.constData(), int(bytes.size()),
                          SQLITE_TRANSIENT);
        return *this;
    }
    bool step() {
        const int state = sqlite3_step(m_statement);
        if (state != SQLITE_ROW && state != SQLITE_DONE) fail();
        return state == SQLITE_ROW;
    }
    // Runs a statement that has no rows, and makes it ready for the next values.
    void run() {
        step();
        sqlite3_reset(m_statement);
    }
    qint64 number(int column) const { return sqlite3_column_int64(m_statement, column); }
    QString text(int column) const {
        return QString::fromUtf8(
            reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column)),
            sqlite3_column_bytes(m_statement, column));
    }

private:
    [[noreturn]] void fail() const { throw IndexFailure(sqlite3_errmsg(m_handle)); }

    sqlite3* m_handle;
    sqlite3_stmt* m_statement = nullptr;
};

WordIndex::WordIndex(const QString& file) : m_file(file) {
    open();
    if (!isSound()) startAgain();
}

WordIndex::~WordIndex() { sqlite3_close(m_handle); }

void WordIndex::open() {
    const QByteArray name = m_file.toUtf8();
    constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    if (sqlite3_open_v2(name.constData(), &m_handle, flags, nullptr) == SQLITE_OK) {
        // What is lost in a crash is read again.
        run("PRAGMA journal_mode = MEMORY; PRAGMA synchronous = OFF");
        return;
    }
    sqlite3_close(m_handle);
    sqlite3_open_v2(":memory:", &m_handle, flags, nullptr);
}

void WordIndex::startAgain() {
    sqlite3_close(m_handle);
    QFile::remove(m_file);
    QFile::remove(m_file + u"-journal"_s);
    // A folder that cannot be written leaves the old file: the index is in memory then.
    if (QFile::exists(m_file)) m_file = u":memory:"_s;
    open();
    if (!makeTables()) startInMemory();
}

void WordIndex::startInMemory() {
    sqlite3_close(m_handle);
    QFile::remove(m_file);
    m_file = u":memory:"_s;
    open();
    makeTables();
}

bool WordIndex::makeTables() {
    return run("CREATE TABLE charts (id INTEGER PRIMARY KEY, song INTEGER, title TEXT, path TEXT, "
               "stamp INTEGER, size INTEGER, lines TEXT);"
               "CREATE VIRTUAL TABLE words USING fts5(title, lines, tokenize = 'unicode61');") &&
           run(qPrintable(u"PRAGMA user_version = %1"_s.arg(IndexVersion)));
}

bool WordIndex::run(const char* statements) {
    return sqlite3_exec(m_handle, statements, nullptr, nullptr, nullptr) == SQLITE_OK;
}

bool WordIndex::isSound() try {
    Statement version(m_handle, "PRAGMA user_version");
    if (!version.step() || version.number(0) != IndexVersion) return false;
    Statement check(m_handle, "PRAGMA quick_check(1)");
    if (!check.step() || check.text(0) != "ok"_L1) return false;
    return run("INSERT INTO words (words) VALUES ('integrity-check')");
} catch (const IndexFailure&) {
    return false;
}

int WordIndex::update(const QList<IndexedChart>& charts,
                      const std::function<void(int done, int all)>& progress) {
    m_charts = charts;
    try {
        return updateOnce(progress);
    } catch (const IndexFailure&) {
        startAgain();
    }
    try {
        return updateOnce(progress);
    } catch (const IndexFailure&) {
        // A new file has no room on the disk.
        startInMemory();
    }
    return updateOnce(progress);
}

int WordIndex::updateOnce(const std::function<void(int done, int all)>& progress) {
    struct Known {
        qint64 id, stamp, size;
        QString title;
    };
    QHash<QString, Known> known;
    const auto keyOf = [](qint64 song, const QString& path) {
        return QString::number(song) + u'|' + path;
    };
    {
        Statement all(m_handle, "SELECT id, song, title, path, stamp, size FROM charts");
        while (all.step())
            known.insert(keyOf(all.number(1), all.text(3)),
                         {all.number(0), all.number(4), all.number(5), all.text(2)});
    }
    Statement begin(m_handle, "BEGIN");
    begin.run();
    Statement addChart(m_handle,
                       "INSERT INTO charts (song, title, path, stamp, size, lines) VALUES (?1, ?2, "
                       "?3, ?4, ?5, ?6)");
    Statement addWords(m_handle, "INSERT INTO words (rowid, title, lines) VALUES (?1, ?2, ?3)");
    Statement dropChart(m_handle, "DELETE FROM charts WHERE id = ?1");
    Statement dropWords(m_handle, "DELETE FROM words WHERE rowid = ?1");
    const auto drop = [&](qint64 id) {
        dropChart.bind(1, id).run();
        dropWords.bind(1, id).run();
    };
    int read = 0, done = 0;
    for (const IndexedChart& chart : std::as_const(m_charts)) {
        if (progress) progress(++done, int(m_charts.size()));
        const QFileInfo file(chart.path);
        const bool exists = !chart.path.isEmpty() && file.isFile();
        const qint64 stamp = exists ? stampOf(file) : 0, size = exists ? file.size() : 0;
        const auto there = known.constFind(keyOf(chart.songID, chart.path));
        if (there != known.cend()) {
            const Known entry = *there;
            known.erase(there);
            if (entry.stamp == stamp && entry.size == size && entry.title == chart.title) continue;
            drop(entry.id);
        }
        const QString lines = exists ? linesOfChart(chart.path) : QString();
        read += exists;
        addChart.bind(1, chart.songID).bind(2, chart.title).bind(3, chart.path);
        addChart.bind(4, stamp).bind(5, size).bind(6, lines).run();
        QStringList folded;
        for (const QString& line : lines.split(u'\n')) folded += foldedWords(line);
        addWords.bind(1, sqlite3_last_insert_rowid(m_handle));
        addWords.bind(2, foldedWords(chart.title)).bind(3, folded.join(u'\n')).run();
    }
    for (const Known& entry : std::as_const(known)) drop(entry.id);
    Statement commit(m_handle, "COMMIT");
    commit.run();
    return read;
}

QList<FoundLine> WordIndex::find(const QString& text, int most) {
    const QStringList words = wordsToFind(text);
    if (words.isEmpty()) return {};
    try {
        return findBest(words, most);
    } catch (const IndexFailure&) {
        // Another process has damaged the file.
        startAgain();
        update(m_charts);
    }
    return findBest(words, most);
}

QList<FoundLine> WordIndex::findBest(const QStringList& words, int most) {
    const QList<FoundLine> found = findOnce(words, true, most);
    return found.isEmpty() && words.size() > 1 ? findOnce(words, false, most) : found;
}

QList<FoundLine> WordIndex::findOnce(const QStringList& words, bool all, int most) {
    QStringList terms;
    for (const QString& word : words) terms += u'"' + word + u'"';
    terms.last() += u'*';
    Statement query(m_handle,
                    "SELECT charts.song, charts.title, charts.path, charts.lines, words.lines, "
                    "words.title FROM words JOIN charts ON charts.id = words.rowid WHERE words "
                    "MATCH ?1 ORDER BY bm25(words, 2.0, 1.0) LIMIT ?2");
    query.bind(1, terms.join(all ? u" AND "_s : u" OR "_s)).bind(2, MostCandidates);
    struct Candidate {
        FoundLine found;
        LineScore score;
    };
    std::vector<Candidate> candidates;
    while (query.step()) {
        Candidate one;
        one.found.chart = {int(query.number(0)), query.text(1), query.text(2)};
        one.score = scoreOf(query.text(5), words);
        const QStringList lines = query.text(3).split(u'\n');
        const QStringList folded = query.text(4).split(u'\n');
        LineScore best;
        for (qsizetype i = 0; i < std::min(lines.size(), folded.size()); ++i) {
            const LineScore score = scoreOf(folded[i], words);
            if (score <= best) continue;
            best = score;
            one.found.line = lines[i];
        }
        one.score = std::max(one.score, best);
        candidates.push_back(one);
    }
    std::stable_sort(candidates.begin(), candidates.end(),
                     [](const Candidate& a, const Candidate& b) { return a.score > b.score; });
    QList<FoundLine> found;
    for (const Candidate& one : candidates) {
        if (found.size() == most) break;
        found += one.found;
    }
    return found;
}
