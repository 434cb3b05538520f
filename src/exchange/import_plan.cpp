// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/import_plan.h"

#include "catalogue/rules/categories.h"
#include "core/data/dates.h"
#include "exchange/chart_layout.h"
#include "exchange/rules/plain_text.h"
#include "exchange/rules/song_builder.h"
#include "team/rules/personnel.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype CategorySlots = 5;
constexpr qsizetype FirstRole = 2;  // in PersonFields
constexpr qsizetype RoleSlots = 3;
// The years that a date with two digits can say.
constexpr int FirstYear = 1930;
constexpr int LastYear = 2029;

// As the song form and the person form store a text.
QString stored(const QString& text) { return cleanField(QString(text).remove(u'\'')); }

QString column(QLatin1StringView name, qsizetype number) { return name + QString::number(number); }

class Planner {
public:
    Planner(const Catalogue& catalogue, const ImportChoices& choices)
        : m_catalogue(catalogue), m_choices(&choices) {
        for (qsizetype i = 0; i < m_catalogue.songs.size(); ++i) index(i);
        m_changeOf.fill(-1, m_catalogue.songs.size());
        for (qsizetype i = 0; i < m_catalogue.people.size(); ++i) indexPerson(i);
        m_personChangeOf.fill(-1, m_catalogue.people.size());
        for (const QString& name : m_catalogue.categories)
            m_categories.insert(comparableName(name), name);
        for (const QString& theme : choices.newCategories) m_wanted.insert(comparableName(theme));
    }

    void take(const ImportSource& source);
    void takeDates(const ImportSource& source);
    ImportPlan finished();

private:
    // Songs (import_plan.cpp).
    void takeSong(const Song& song, const QString& file);
    qsizetype find(const QString& title, const QString& ccli) const;
    void index(qsizetype song);
    void fillSong(qsizetype song, const Song& from, QStringList& filled);
    void fillText(qsizetype song, QString Catalogue::StoredSong::*field, const QString& column,
                  const QString& value, const QString& name, QStringList& filled);
    void fillCategories(qsizetype song, const QStringList& themes, QStringList& filled);
    QString categoryOf(const QString& theme);
    SongChange& changeOf(qsizetype song);

    // People and dates.
    void takePerson(const Contact& contact, const QString& file);
    void indexPerson(qsizetype person);
    void fillRoles(qsizetype person, const QStringList& roles, QStringList& filled);
    PersonChange& personChangeOf(qsizetype person);
    void takeDate(const PlayedDate& played, const QString& file);
    void add(ImportKind kind, ImportOutcome outcome, const QString& name, const QString& details,
             const QString& file) {
        m_plan.entries.append({kind, outcome, name, details, file});
    }

    Catalogue m_catalogue;  // with what this import adds
    const ImportChoices* m_choices;
    ImportPlan m_plan;
    QList<qsizetype> m_changeOf;  // by song, -1 for none
    QList<qsizetype> m_personChangeOf;
    QHash<QString, qsizetype> m_byCcli;
    QHash<QString, QList<qsizetype>> m_byTitle;
    QHash<QString, qsizetype> m_byName;
    QHash<QString, QString> m_categories;  // by the comparable name
    QSet<QString> m_wanted;
    QHash<QString, std::pair<int, QString>> m_themes;  // how often, and as it is written first
};

// --- Songs --------------------------------------------------------------------------------------

void Planner::index(qsizetype song) {
    const Catalogue::StoredSong& stored = m_catalogue.songs[song];
    const QString ccli = ccliDigits(stored.ccli);
    if (!ccli.isEmpty() && !m_byCcli.contains(ccli)) m_byCcli.insert(ccli, song);
    QList<qsizetype>& same = m_byTitle[comparableName(stored.title)];
    if (!same.contains(song)) same.append(song);
}

// -1 if the song is not there. Deliberate: behaviour 200.
qsizetype Planner::find(const QString& title, const QString& ccli) const {
    const auto byNumber = m_byCcli.constFind(ccli);
    if (!ccli.isEmpty() && byNumber != m_byCcli.constEnd()) return *byNumber;
    const QString name = comparableName(title);
    if (name.isEmpty()) return -1;
    for (const qsizetype song : m_byTitle.value(name)) {
        const QString other = ccliDigits(m_catalogue.songs[song].ccli);
        if (ccli.isEmpty() || other.isEmpty()) return song;
    }
    return -1;
}

SongChange& Planner::changeOf(qsizetype song) {
    if (m_changeOf[song] < 0) {
        m_changeOf[song] = m_plan.songs.size();
        const Catalogue::StoredSong& stored = m_catalogue.songs[song];
        m_plan.songs.append({stored.id, stored.title, {}, {}});
    }
    return m_plan.songs[m_changeOf[song]];
}

void Planner::fillText(qsizetype song, QString Catalogue::StoredSong::*field, const QString& column,
                       const QString& value, const QString& name, QStringList& filled) {
    QString& there = m_catalogue.songs[song].*field;
    if (value.isEmpty() || !there.trimmed().isEmpty()) return;
    there = value;
    changeOf(song).values.insert(column, value);
    filled.append(name + u' ' + value);
}

// The category of a theme, or empty if it is none.
QString Planner::categoryOf(const QString& theme) {
    const QString name = stored(theme);
    const QString key = comparableName(name);
    if (name.isEmpty() || key.isEmpty()) return {};
    const auto known = m_categories.constFind(key);
    if (known != m_categories.constEnd()) return *known;
    auto& [count, written] = m_themes[key];
    if (++count == 1) written = name;
    if (!m_wanted.contains(key)) return {};
    // Deliberate: behaviour 201.
    if (!isReservedCategory(written)) m_plan.newCategories.append(written);
    const QString category = isReservedCategory(written) ? u"Hymns"_s : written;
    m_categories.insert(key, category);
    return category;
}

void Planner::fillCategories(qsizetype song, const QStringList& themes, QStringList& filled) {
    QStringList& there = m_catalogue.songs[song].categories;
    there.resize(CategorySlots);
    for (const QString& theme : themes) {
        const QString category = categoryOf(theme);
        if (category.isEmpty() || there.contains(category, Qt::CaseInsensitive)) continue;
        const qsizetype free = there.indexOf(QString());
        if (free < 0) return;
        there[free] = category;
        changeOf(song).values.insert(column("cat"_L1, free + 1), category);
        filled.append(u"category "_s + category);
    }
}

void Planner::fillSong(qsizetype song, const Song& from, QStringList& filled) {
    fillText(song, &Catalogue::StoredSong::artist, u"artist"_s, stored(authorNames(from)),
             u"artist"_s, filled);
    fillText(song, &Catalogue::StoredSong::key, u"dakey"_s, stored(from.key), u"key"_s, filled);
    fillText(song, &Catalogue::StoredSong::ccli, u"CCLI"_s, from.ccli, u"CCLI number"_s, filled);
    index(song);
    fillCategories(song, from.themes, filled);
    if (!m_choices->charts || m_catalogue.songs[song].hasChart || !hasLyrics(from)) return;
    m_catalogue.songs[song].hasChart = true;
    changeOf(song).chart = from;
    filled.append(u"chart"_s);
}

void Planner::takeSong(const Song& song, const QString& file) {
    const QString title = stored(song.title());
    if (title.isEmpty()) {
        add(ImportKind::Song, ImportOutcome::Refused, song.title(), u"The song has no title."_s,
            file);
        return;
    }
    qsizetype place = find(title, song.ccli);
    const bool isNew = place < 0;
    if (isNew) {
        place = m_catalogue.songs.size();
        Catalogue::StoredSong added;
        added.title = title;
        m_catalogue.songs.append(added);
        m_changeOf.append(-1);
        SongChange& change = changeOf(place);
        change.values.insert(u"title"_s, title);
        change.values.insert(u"playlist"_s, u"Current"_s);
    }
    QStringList details;
    fillSong(place, song, details);
    const Catalogue::StoredSong& there = m_catalogue.songs[place];
    if (isNew && !m_choices->category.isEmpty() && there.categories.value(0).isEmpty())
        fillCategories(place, {m_choices->category}, details);
    const ImportOutcome outcome = isNew               ? ImportOutcome::Added
                                  : details.isEmpty() ? ImportOutcome::AlreadyThere
                                                      : ImportOutcome::Filled;
    if (there.title.compare(title, Qt::CaseInsensitive) != 0)
        details.prepend(u"known as \"%1\""_s.arg(there.title));
    details += song.unread;
    add(ImportKind::Song, outcome, title, details.join(u", "_s), file);
}

// --- People and dates ---------------------------------------------------------------------------

void Planner::indexPerson(qsizetype person) {
    const QStringList& fields = m_catalogue.people[person].fields;
    const QString name = comparableName(fields.value(0) + u' ' + fields.value(1));
    if (!m_byName.contains(name)) m_byName.insert(name, person);
}

PersonChange& Planner::personChangeOf(qsizetype person) {
    if (m_personChangeOf[person] < 0) {
        m_personChangeOf[person] = m_plan.people.size();
        m_plan.people.append(PersonChange{m_catalogue.people[person].id, {}});
    }
    return m_plan.people[m_personChangeOf[person]];
}

void Planner::fillRoles(qsizetype person, const QStringList& roles, QStringList& filled) {
    QStringList& fields = m_catalogue.people[person].fields;
    for (QString role : roles) {
        // A schedule's cells hold role and name with a colon between them.
        role = stored(role.replace(u':', u' '));
        const QStringList there = fields.mid(FirstRole, RoleSlots);
        if (role.isEmpty() || there.contains(role, Qt::CaseInsensitive)) continue;
        const qsizetype free = there.indexOf(QString());
        if (free < 0) return;
        const qsizetype field = FirstRole + free;
        fields[field] = role;
        personChangeOf(person).values.insert(QLatin1String(PersonFields[size_t(field)].column),
                                             role);
        filled.append(u"role "_s + role);
    }
}

void Planner::takePerson(const Contact& contact, const QString& file) {
    QString first = stored(contact.firstName);
    QString last = stored(contact.lastName);
    // The person form asks for a first name.
    if (first.isEmpty()) first = std::exchange(last, QString());
    const QString name = (first + u' ' + last).trimmed();
    QStringList roles = contact.roles;
    const qsizetype known = m_byName.value(comparableName(name), -1);
    const bool hasRole = known >= 0 && !m_catalogue.people[known].fields.value(FirstRole).isEmpty();
    if (roles.isEmpty() && !hasRole && !m_choices->role.isEmpty()) roles = {m_choices->role};
    if (first.isEmpty() || (roles.isEmpty() && !hasRole)) {
        add(ImportKind::Person, ImportOutcome::Refused, name,
            first.isEmpty() ? u"The person has no name."_s : u"The person has no role."_s, file);
        return;
    }
    const qsizetype place = known >= 0 ? known : m_catalogue.people.size();
    if (known < 0) {
        Catalogue::StoredPerson added;
        added.fields.resize(qsizetype(PersonFields.size()));
        m_catalogue.people.append(added);
        m_personChangeOf.append(-1);
    }
    QStringList details;
    const QStringList values = {first,
                                last,
                                {},
                                {},
                                {},
                                stored(contact.address),
                                stored(contact.city),
                                stored(contact.state),
                                stored(contact.zip),
                                stored(contact.phone),
                                stored(contact.cell),
                                stored(contact.email)};
    for (qsizetype i = 0; i < values.size(); ++i) {
        QString& there = m_catalogue.people[place].fields[i];
        if (values[i].isEmpty() || !there.isEmpty()) continue;
        there = values[i];
        personChangeOf(place).values.insert(QLatin1String(PersonFields[size_t(i)].column),
                                            values[i]);
        if (i > 1) details.append(values[i]);
    }
    fillRoles(place, roles, details);
    if (known < 0) indexPerson(place);
    const ImportOutcome outcome = known < 0            ? ImportOutcome::Added
                                  : !details.isEmpty() ? ImportOutcome::Filled
                                                       : ImportOutcome::AlreadyThere;
    add(ImportKind::Person, outcome, name, details.join(u", "_s), file);
}

void Planner::takeDate(const PlayedDate& played, const QString& file) {
    const QString written = played.date.isValid() ? formatDate(played.date) : u"no date"_s;
    const qsizetype song = find(played.title, played.ccli);
    const QString title = song >= 0                ? m_catalogue.songs[song].title
                          : played.title.isEmpty() ? u"CCLI number "_s + played.ccli
                                                   : stored(played.title);
    const QString name = title + u", "_s + written;
    const auto refuse = [&](const QString& why) {
        add(ImportKind::Date, ImportOutcome::Refused, name, why, file);
    };
    if (song < 0) return refuse(u"There is no such song."_s);
    if (!played.date.isValid()) return refuse(u"The date cannot be read."_s);
    if (played.date.year() < FirstYear || played.date.year() > LastYear)
        return refuse(u"The date is not in the years %1 to %2."_s.arg(FirstYear).arg(LastYear));
    const int id = m_catalogue.songs[song].id;
    const std::pair key(id != 0 ? id : -1 - int(song), played.date);
    if (m_catalogue.played.contains(key)) {
        add(ImportKind::Date, ImportOutcome::AlreadyThere, name, {}, file);
        return;
    }
    m_catalogue.played.insert(key);
    m_plan.dates.append({id, id == 0 ? m_changeOf[song] : -1, title, played.date});
    add(ImportKind::Date, ImportOutcome::Added, name, {}, file);
}

// --- All
// ------------------------------------------------------------------------------------------

void Planner::take(const ImportSource& source) {
    const ExchangeContent& content = source.content;
    if (!content.reason.isEmpty())
        add(ImportKind::File, ImportOutcome::Refused, {}, content.reason, source.file);
    for (const QString& note : content.unread)
        add(ImportKind::File, ImportOutcome::Refused, {}, note, source.file);
    for (const Song& song : content.songs) takeSong(song, source.file);
    for (const Contact& contact : content.people) takePerson(contact, source.file);
}

void Planner::takeDates(const ImportSource& source) {
    for (const PlayedDate& played : source.content.played) takeDate(played, source.file);
}

ImportPlan Planner::finished() {
    QList<std::pair<int, QString>> themes = m_themes.values();
    std::sort(themes.begin(), themes.end(), [](const auto& a, const auto& b) {
        return a.first != b.first ? a.first > b.first
                                  : a.second.compare(b.second, Qt::CaseInsensitive) < 0;
    });
    for (const auto& theme : themes) m_plan.themes.append(theme.second);
    return m_plan;
}

}  // namespace

QString comparableName(const QString& name) {
    QString plain;
    const QString folded = name.normalized(QString::NormalizationForm_C).toCaseFolded();
    for (const char32_t c : folded.toUcs4())
        if (!QChar::isSpace(c) && !QChar::isPunct(c) && c != U'`' && c != U'\u00b4')
            plain += QString::fromUcs4(&c, 1);
    // A name of nothing but signs is compared as it stands.
    return plain.isEmpty() ? folded.trimmed() : plain;
}

int ImportPlan::count(ImportKind kind, ImportOutcome outcome) const {
    return int(std::count_if(entries.begin(), entries.end(), [&](const ImportEntry& entry) {
        return entry.kind == kind && entry.outcome == outcome;
    }));
}

ImportPlan planImport(const Catalogue& catalogue, const QList<ImportSource>& sources,
                      const ImportChoices& choices) {
    Planner planner(catalogue, choices);
    for (const ImportSource& source : sources) planner.take(source);
    // Dates may be of songs in any of the files.
    for (const ImportSource& source : sources) planner.takeDates(source);
    return planner.finished();
}
