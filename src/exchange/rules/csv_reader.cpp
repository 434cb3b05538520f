// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Tables of songs, of played dates and of people, known by their heads.
#include "core/data/dates.h"
#include "exchange/rules/csv_table.h"
#include "exchange/rules/form_readers.h"
#include "exchange/rules/plain_text.h"
#include "exchange/rules/song_builder.h"

#include <QHash>
#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

enum class CsvField {
    None,
    Title,
    FurtherTitle,
    Artist,
    Key,
    Ccli,
    Category,
    Copyright,
    Tempo,
    Time,
    Capo,
    Lyrics,
    Comment,
    Book,
    Entry,
    Date,
    // A song's title or a person's name.
    Name,
    FirstName,
    LastName,
    Role,
    Address,
    City,
    State,
    Zip,
    Phone,
    Cell,
    Email,
};

const QHash<QString, CsvField>& csvHeads() {
    static const QHash<QString, CsvField> heads = [] {
        QHash<QString, CsvField> all;
        const auto add = [&](CsvField field, std::initializer_list<const char*> names) {
            for (const char* name : names) all.insert(QLatin1String(name), field);
        };
        add(CsvField::Title,
            {"title", "songtitle", "song", "songname", "titel", "liedtitel", "lied", "liedname",
             "titre", "titulo", "titolo", "hymn", "hymntitle"});
        add(CsvField::FurtherTitle, {"alternatetitle", "alternativetitle", "aka", "alttitle",
                                     "subtitle", "othertitle", "untertitel", "furthertitle"});
        add(CsvField::Artist, {"artist", "artists", "author", "authors", "writer", "writers",
                               "composer", "songwriter", "songwriters", "interpret", "kunstler",
                               "autor", "autoren", "auteur", "performer", "band", "by"});
        add(CsvField::Key, {"key", "defaultkey", "originalkey", "songkey", "musicalkey", "tonart",
                            "dakey", "tonalidad", "tonalite", "keys", "arrangement1keys"});
        add(CsvField::Ccli, {"ccli", "cclinumber", "cclisongnumber", "cclino", "cclinr", "cclisong",
                             "ccliid", "cclisongid", "cclisongno", "cclinummer", "cclisongnr",
                             "cclisongnum", "cclinum", "cclicode"});
        add(CsvField::Category,
            {"category",  "categories", "theme",     "themes",    "tag",       "tags",
             "topic",     "topics",     "keywords",  "keyword",   "kategorie", "kategorien",
             "cat",       "cat1",       "cat2",      "cat3",      "cat4",      "cat5",
             "category1", "category2",  "category3", "category4", "category5", "stichworte",
             "thema",     "themen",     "songtags",  "genre"});
        add(CsvField::Copyright, {"copyright", "copyrights", "rechte"});
        add(CsvField::Tempo, {"tempo", "bpm", "arrangement1bpm", "beatsperminute"});
        add(CsvField::Time, {"time", "timesignature", "meter", "takt", "timesig"});
        add(CsvField::Capo, {"capo"});
        add(CsvField::Lyrics, {"lyrics", "words", "text", "liedtext", "arrangement1lyrics",
                               "songtext", "chordchart", "arrangement1chordchart"});
        add(CsvField::Comment, {"notes", "note", "comment", "comments", "bemerkung", "remarks"});
        add(CsvField::Book, {"songbook", "hymnal", "book", "liederbuch", "songbooks"});
        add(CsvField::Entry, {"hymnnumber", "songnumber", "entry", "nummer"});
        add(CsvField::Date, {"date",
                             "dates",
                             "played",
                             "playeddate",
                             "dateplayed",
                             "datesplayed",
                             "playedon",
                             "lastplayed",
                             "lastused",
                             "lastscheduled",
                             "lastscheduleddate",
                             "servicedate",
                             "datum",
                             "used",
                             "usedon",
                             "dateused",
                             "plandate",
                             "lastdate",
                             "fecha",
                             "gespielt",
                             "gespieltam",
                             "scheduled",
                             "scheduleddate",
                             "day",
                             "playeddates"});
        add(CsvField::Name,
            {"name", "fullname", "person", "displayname", "member", "musician", "volunteer"});
        add(CsvField::FirstName, {"firstname", "first", "givenname", "vorname", "fname", "prenom",
                                  "forename", "nombre"});
        add(CsvField::LastName, {"lastname", "last", "surname", "familyname", "nachname", "lname",
                                 "nomdefamille", "apellido"});
        add(CsvField::Role,
            {"role", "roles", "role1", "role2", "role3", "position", "positions", "instrument",
             "instruments", "teampositions", "rolle", "rollen", "funktion", "ministry"});
        add(CsvField::Address,
            {"address", "street", "streetaddress", "address1", "addressline1", "homestreet",
             "homeaddressstreet", "homeaddress", "adresse", "strasse", "homeaddressstreetline1",
             "address1street", "mailingaddress"});
        add(CsvField::City, {"city", "town", "ort", "stadt", "homecity", "homeaddresscity",
                             "address1city", "ville", "wohnort"});
        add(CsvField::State, {"state", "province", "region", "homestate", "homeaddressstate",
                              "bundesland", "address1region", "county"});
        add(CsvField::Zip, {"zip", "zipcode", "postalcode", "postcode", "plz", "homepostalcode",
                            "homeaddresszipcode", "homezip", "address1postalcode"});
        add(CsvField::Phone,
            {"phone", "phonenumber", "homephone", "homephonenumber", "telephone", "tel", "telefon",
             "phone1value", "primaryphone", "telefonnummer", "workphone"});
        add(CsvField::Cell,
            {"cell", "mobile", "mobilephone", "cellphone", "handy", "mobil", "mobilenumber",
             "mobilephonenumber", "cellphonenumber", "mobiltelefon"});
        add(CsvField::Email, {"email", "emailaddress", "mail", "email1value", "homeemail",
                              "homeemailaddress", "emails", "primaryemail", "email1"});
        return all;
    }();
    return heads;
}

QString foldedHead(const QString& head) {
    QString folded;
    for (const QChar c : head.left(80).normalized(QString::NormalizationForm_D).toLower()) {
        if (c.unicode() == 0xDF) folded += "ss"_L1;
        if ((c.isLetter() && c.unicode() != 0xDF) || c.isDigit()) folded += c;
    }
    return folded;
}

struct CsvPlan {
    ExchangeForm form = ExchangeForm::Unknown;
    QList<CsvField> fields;
    bool headed = true;

    bool has(CsvField field) const { return fields.contains(field); }
    bool hasAny(std::initializer_list<CsvField> any) const {
        for (const CsvField field : any)
            if (has(field)) return true;
        return false;
    }
};

// Dates as tables have them. `dayFirst` reads 3/4/2026 as the 3rd of April.
std::optional<QDate> csvDate(const QString& source, bool dayFirst) {
    QString text = cleanField(source);
    static const QRegularExpression time(
        u"(?<=\\d)(?:T|,?\\s+)\\d{1,2}:\\d{2}(?::\\d{2}(?:\\.\\d+)?)?\\s*(?:[AaPp]\\.?[Mm]\\.?)?\\s*(?:Z|UTC|[+-]\\d{2}:?\\d{2})?$"_s);
    static const QRegularExpression numbers(
        u"^(\\d{1,2})([./-])\\s?(\\d{1,2})\\2\\s?(\\d{4}|\\d{2})$"_s);
    static const QRegularExpression whole(u"^(\\d{4})(\\d{2})(\\d{2})$"_s);
    text.remove(time);
    if (const auto match = whole.match(text); match.hasMatch()) {
        const QDate date(match.captured(1).toInt(), match.captured(2).toInt(),
                         match.captured(3).toInt());
        if (date.isValid()) return date;
        return {};
    }
    if (const auto match = numbers.match(text); match.hasMatch()) {
        int day = match.captured(3).toInt(), month = match.captured(1).toInt();
        if (match.captured(2) == "."_L1 || dayFirst) std::swap(day, month);
        if (month > 12 && day <= 12) std::swap(day, month);
        return parseDate(u"%1/%2/%3"_s.arg(month).arg(day).arg(match.captured(4)));
    }
    return parseDate(text);
}

// Whether a column of dates has the day before the month, as some of its dates tell.
bool isDayFirst(const QList<CsvRow>& rows, qsizetype column) {
    static const QRegularExpression slashes(u"^\\s*(\\d{1,2})[/-](\\d{1,2})[/-]\\d"_s);
    for (const CsvRow& row : rows) {
        const auto match = slashes.match(row.cells.value(column));
        if (!match.hasMatch()) continue;
        if (match.captured(1).toInt() > 12) return true;
        if (match.captured(2).toInt() > 12) return false;
    }
    return false;
}

// Title and date in rows without heads.
CsvPlan headlessPlan(const QList<CsvRow>& rows) {
    CsvPlan plan;
    const qsizetype width = rows.value(0).cells.size();
    if (width < 2 || width > 4) return plan;
    for (qsizetype dates = 0; dates < width; ++dates) {
        bool all = true;
        for (qsizetype i = 0; i < std::min<qsizetype>(rows.size(), 20) && all; ++i)
            all = csvDate(rows[i].cells.value(dates), false).has_value();
        if (!all) continue;
        plan.form = ExchangeForm::PlayedCsv;
        plan.headed = false;
        plan.fields = QList<CsvField>(width, CsvField::None);
        plan.fields[dates] = CsvField::Date;
        for (qsizetype i = 0; i < width; ++i) {
            static const QRegularExpression number(u"^\\s*\\d+\\s*$"_s);
            if (i == dates) continue;
            const CsvField field =
                number.match(rows[0].cells[i]).hasMatch() ? CsvField::Ccli : CsvField::Title;
            if (!plan.has(field)) plan.fields[i] = field;
        }
        return plan;
    }
    return plan;
}

CsvPlan csvPlan(const QList<CsvRow>& rows) {
    CsvPlan plan;
    if (rows.isEmpty() || rows[0].cells.size() < 2) return plan;
    int known = 0;
    for (const QString& head : rows[0].cells) {
        const CsvField field = csvHeads().value(foldedHead(head), CsvField::None);
        known += field != CsvField::None;
        plan.fields += field;
    }
    if (known < 2) return headlessPlan(rows);
    using enum CsvField;
    const bool reached = plan.hasAny({Email, Phone, Cell, Address, Zip, Role, LastName});
    if (plan.hasAny({FirstName, LastName}) || (plan.has(Name) && reached)) {
        if (!plan.has(Title)) plan.form = ExchangeForm::PeopleCsv;
    }
    if (plan.form != ExchangeForm::Unknown) return plan;
    if (!plan.has(Title))
        for (CsvField& field : plan.fields)
            if (field == Name) field = Title;
    if (!plan.hasAny({Title, Ccli})) return headlessPlan(rows);
    const bool songs = plan.has(Title) && plan.hasAny({Artist, Key, Category, Copyright, Tempo,
                                                       Lyrics, FurtherTitle, Time, Book});
    if (songs || !plan.has(Date))
        plan.form = plan.has(Title) ? ExchangeForm::SongsCsv : ExchangeForm::Unknown;
    else
        plan.form = ExchangeForm::PlayedCsv;
    return plan;
}

class CsvRowReader {
public:
    CsvRowReader(const CsvPlan& plan, const QList<CsvRow>& rows, ExchangeContent& content)
        : m_plan(plan), m_content(content) {
        for (qsizetype i = 0; i < plan.fields.size(); ++i)
            m_dayFirst += plan.fields[i] == CsvField::Date && isDayFirst(rows, i);
    }

    void readSong(const CsvRow& row) {
        Song song;
        QString lyrics;
        Songbook book;
        each(row, [&](CsvField field, const QString& cell) {
            setSong(song, field, cell, lyrics, book);
        });
        if (!book.name.isEmpty() || !book.entry.isEmpty()) song.songbooks += book;
        if (song.titles.isEmpty()) {
            addNote(m_content.unread, u"Row %1 has no title."_s.arg(row.line));
            return;
        }
        if (!lyrics.isEmpty()) addLyrics(song, lyrics);
        song.themes.removeDuplicates();
        m_content.songs += song;
        readPlayed(row, song.title(), song.ccli);
    }

    void readPlayed(const CsvRow& row, QString title = {}, QString ccli = {}) {
        each(row, [&](CsvField field, const QString& cell) {
            if (field == CsvField::Title && title.isEmpty()) title = cleanField(cell);
            if (field == CsvField::Ccli && ccli.isEmpty()) ccli = ccliDigits(cell);
        });
        for (qsizetype i = 0; i < m_plan.fields.size(); ++i) {
            if (m_plan.fields[i] != CsvField::Date) continue;
            // A comma may stand between dates and in "Nov 22, 2026".
            const QString cell = row.cells.value(i);
            const auto one = csvDate(cell, m_dayFirst[i]);
            const QStringList dates = one ? QStringList{cell} : splitList(cell, u";|,\n");
            for (const QString& text : dates) {
                const auto date = csvDate(text, m_dayFirst[i]);
                if (date && !(title.isEmpty() && ccli.isEmpty()))
                    m_content.played += {title, ccli, *date};
                else if (!date)
                    addNote(m_content.unread,
                            u"Row %1: \"%2\" is not a date."_s.arg(row.line).arg(text.left(40)));
                else
                    addNote(m_content.unread,
                            u"Row %1 has neither title nor CCLI number."_s.arg(row.line));
            }
        }
    }

    void readPerson(const CsvRow& row) {
        Contact person;
        QString name;
        each(row, [&](CsvField field, const QString& cell) {
            setPerson(person, name, field, cleanField(cell));
        });
        if (person.firstName.isEmpty() && person.lastName.isEmpty()) {
            const QStringList parts = name.split(u',');
            if (parts.size() == 2) {
                person.firstName = parts[1].trimmed();
                person.lastName = parts[0].trimmed();
            } else {
                const qsizetype blank = name.lastIndexOf(u' ');
                person.firstName = blank < 0 ? name : name.left(blank).trimmed();
                person.lastName = blank < 0 ? QString() : name.mid(blank + 1);
            }
        }
        if (person.firstName.isEmpty() && person.lastName.isEmpty())
            addNote(m_content.unread, u"Row %1 has no name."_s.arg(row.line));
        else
            m_content.people += person;
    }

private:
    template <class Take>
    void each(const CsvRow& row, Take take) {
        for (qsizetype i = 0; i < std::min(row.cells.size(), m_plan.fields.size()); ++i)
            if (!row.cells[i].trimmed().isEmpty()) take(m_plan.fields[i], row.cells[i]);
    }

    static void setSong(Song& song, CsvField field, const QString& cell, QString& lyrics,
                        Songbook& book) {
        const QString value = cleanField(cell);
        switch (field) {
            case CsvField::Title:
                if (song.titles.isEmpty()) song.titles += value;
                break;
            case CsvField::FurtherTitle:
                for (const QString& title : splitList(cell, u";\n"))
                    (song.titles.isEmpty() ? song.comments : song.titles) += title;
                break;
            case CsvField::Artist:
                addAuthors(song, cell);
                break;
            case CsvField::Key:
                if (song.key.isEmpty()) song.key = value;
                break;
            case CsvField::Ccli:
                if (song.ccli.isEmpty()) song.ccli = ccliDigits(value);
                break;
            case CsvField::Category:
                song.themes += splitList(cell, cell.contains(u';') ? u";\n" : u",|\n");
                break;
            case CsvField::Copyright:
                song.copyright = value;
                break;
            case CsvField::Tempo:
                song.tempo = value;
                break;
            case CsvField::Time:
                song.time = value;
                break;
            case CsvField::Capo:
                song.capo = value;
                break;
            case CsvField::Lyrics:
                lyrics = cell;
                break;
            case CsvField::Comment:
                song.comments += value;
                break;
            case CsvField::Book:
                book.name = value;
                break;
            case CsvField::Entry:
                book.entry = value;
                break;
            default:
                break;
        }
    }

    // Lyrics in a cell are ChordPro or plain text, without a head of their own.
    static void addLyrics(Song& song, const QString& lyrics) {
        ExchangeContent read;
        // The song's own title might be taken for a label or a credit, or close the braces.
        if (looksLikeChordPro(lyrics))
            readChordPro(u"{title: Lyrics}\n"_s + lyrics, read);
        else
            readSongText(u"Lyrics\n\n\n"_s + lyrics, read);
        if (read.songs.isEmpty()) return;
        song.verses = read.songs[0].verses;
        song.verseOrder = read.songs[0].verseOrder;
    }

    static void setPerson(Contact& person, QString& name, CsvField field, const QString& value) {
        const auto fill = [&](QString& target) {
            if (target.isEmpty()) target = value;
        };
        switch (field) {
            case CsvField::Name:
                fill(name);
                break;
            case CsvField::FirstName:
                fill(person.firstName);
                break;
            case CsvField::LastName:
                fill(person.lastName);
                break;
            case CsvField::Role:
                for (const QString& role : splitList(value, u";,|"))
                    if (!person.roles.contains(role)) person.roles += role;
                break;
            case CsvField::Address:
                fill(person.address);
                break;
            case CsvField::City:
                fill(person.city);
                break;
            case CsvField::State:
                fill(person.state);
                break;
            case CsvField::Zip:
                fill(person.zip);
                break;
            case CsvField::Phone:
                fill(person.phone);
                break;
            case CsvField::Cell:
                fill(person.cell);
                break;
            case CsvField::Email:
                fill(person.email);
                break;
            default:
                break;
        }
    }

    const CsvPlan& m_plan;
    ExchangeContent& m_content;
    QList<bool> m_dayFirst;
};

}  // namespace

ExchangeForm csvFormOf(const QString& text) {
    // The first rows tell.
    return csvPlan(csvRows(text.left(64'000))).form;
}

void readCsv(const QString& text, ExchangeContent& content) {
    QList<CsvRow> rows = csvRows(text);
    const CsvPlan plan = csvPlan(rows);
    if (plan.headed && !rows.isEmpty()) rows.removeFirst();
    CsvRowReader reader(plan, rows, content);
    for (const CsvRow& row : rows) {
        if (plan.form == ExchangeForm::SongsCsv)
            reader.readSong(row);
        else if (plan.form == ExchangeForm::PlayedCsv)
            reader.readPlayed(row);
        else if (plan.form == ExchangeForm::PeopleCsv)
            reader.readPerson(row);
    }
}
