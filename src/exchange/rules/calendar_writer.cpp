// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/rules/plain_text.h"
#include "exchange/rules/writer.h"

#include <QHash>
#include <QUuid>

#include <libical/ical.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// A name for ever: the same service gets the same UID whenever it is written. A second service on a
// date is told apart by its place.
QByteArray eventUid(const QDate& date, int place, const QString& person) {
    static const QUuid names(u"{5c2f6b0e-0a54-4d8e-9f0b-6a1f3b1c9d42}"_s);
    QString key = date.toString(Qt::ISODate) + u'|' + person;
    if (place > 0) key += u'|' + QString::number(place);
    return QUuid::createUuidV5(names, key).toByteArray(QUuid::WithoutBraces) + "@lorvanite";
}

// Grows with every later writing. Minutes fit into the 31 bits that calendars keep for it.
int sequenceOf(const QDateTime& stamp) {
    const QDateTime start(QDate(2020, 1, 1), QTime(0, 0), Qt::UTC);
    return int(std::clamp<qint64>(start.secsTo(stamp) / 60, 0, 0x7FFFFFFF));
}

icaltimetype dayOf(const QDate& date) {
    icaltimetype day = icaltime_null_date();
    day.year = date.year();
    day.month = date.month();
    day.day = date.day();
    return day;
}

QStringList rolesOf(const ServiceDate& service, const QString& person) {
    QStringList roles;
    for (const ServiceDate::Assignment& one : service.team)
        if (one.person.compare(person, Qt::CaseInsensitive) == 0) roles += cleanField(one.role);
    roles.removeAll(QString());
    return roles;
}

bool serves(const ServiceDate& service, const QString& person) {
    for (const ServiceDate::Assignment& one : service.team)
        if (one.person.compare(person, Qt::CaseInsensitive) == 0) return true;
    return false;
}

QString description(const ServiceDate& service) {
    QStringList lines;
    for (const ServiceDate::Assignment& one : service.team) {
        const QString role = cleanField(one.role), name = cleanField(one.person);
        if (!name.isEmpty()) lines += role.isEmpty() ? name : role + u": "_s + name;
    }
    if (!service.songs.isEmpty()) {
        if (!lines.isEmpty()) lines += QString();
        lines += u"Songs:"_s;
        for (const QString& song : service.songs) lines += cleanField(song);
    }
    if (!service.notes.trimmed().isEmpty()) {
        if (!lines.isEmpty()) lines += QString();
        for (const QString& line : linesOfText(service.notes)) lines += cleanLine(line);
    }
    return lines.join(u'\n');
}

icalcomponent* eventOf(const ServiceDate& service, int place, const QDateTime& stamp,
                       const QString& person) {
    const icaltimetype written = icaltime_from_timet_with_zone(time_t(stamp.toSecsSinceEpoch()), 0,
                                                               icaltimezone_get_utc_timezone());
    const QString roles = rolesOf(service, person).join(u", "_s);
    const QString summary = person.isEmpty()  ? u"Worship service"_s
                            : roles.isEmpty() ? u"Worship service: serving"_s
                                              : u"Worship service: "_s + roles;
    icalcomponent* event = icalcomponent_new(ICAL_VEVENT_COMPONENT);
    const auto add = [&](icalproperty* property) { icalcomponent_add_property(event, property); };
    add(icalproperty_new_uid(eventUid(service.date, place, person).constData()));
    add(icalproperty_new_dtstamp(written));
    add(icalproperty_new_lastmodified(written));
    add(icalproperty_new_sequence(sequenceOf(stamp)));
    add(icalproperty_new_dtstart(dayOf(service.date)));
    add(icalproperty_new_dtend(dayOf(service.date.addDays(1))));
    add(icalproperty_new_summary(summary.toUtf8().constData()));
    const QString text = description(service);
    if (!text.isEmpty()) add(icalproperty_new_description(text.toUtf8().constData()));
    add(icalproperty_new_transp(ICAL_TRANSP_TRANSPARENT));
    return event;
}

}  // namespace

QByteArray writeCalendar(const QList<ServiceDate>& dates, const QDateTime& stamp,
                         const QString& person) {
    icalcomponent* calendar = icalcomponent_new(ICAL_VCALENDAR_COMPONENT);
    const auto add = [&](icalproperty* property) {
        icalcomponent_add_property(calendar, property);
    };
    add(icalproperty_new_version("2.0"));
    add(icalproperty_new_prodid("-//Lorvanite//Schedule//EN"));
    add(icalproperty_new_method(ICAL_METHOD_PUBLISH));
    QHash<QDate, int> places;
    for (const ServiceDate& service : dates) {
        // Four digits are all that a calendar has for a year.
        if (!service.date.isValid() || service.date.year() < 1 || service.date.year() > 9998)
            continue;
        const int place = places[service.date]++;
        if (!person.isEmpty() && !serves(service, person)) continue;
        icalcomponent_add_component(calendar, eventOf(service, place, stamp, person));
    }
    char* text = icalcomponent_as_ical_string_r(calendar);
    QByteArray bytes(text);
    icalmemory_free_buffer(text);
    icalcomponent_free(calendar);
    return bytes;
}
