// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/rules/reader.h"

#include "exchange/rules/form_readers.h"
#include "exchange/rules/plain_text.h"
#include "exchange/rules/verse_names.h"

#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

struct ForeignMark {
    const char* bytes;
    int size;
    const char* what;
};

constexpr ForeignMark ForeignMarks[] = {
    {"%PDF-", 5, "a PDF document"},
    {"{\\rtf", 5, "an RTF document"},
    {"PK\x03\x04", 4, "a ZIP archive or an office document"},
    {"PK\x05\x06", 4, "an empty ZIP archive"},
    {"\xD0\xCF\x11\xE0", 4, "an office document of an old form"},
    {"\x1F\x8B", 2, "a gzip archive"},
    {"7z\xBC\xAF\x27\x1C", 6, "a 7z archive"},
    {"Rar!", 4, "a RAR archive"},
    {"\x89PNG", 4, "a picture"},
    {"\xFF\xD8\xFF", 3, "a picture"},
    {"GIF8", 4, "a picture"},
    {"RIFF", 4, "a sound or a film"},
    {"OggS", 4, "a sound"},
    {"ID3", 3, "a sound"},
    {"MThd", 4, "a MIDI file"},
    {"\x7F"
     "ELF",
     4, "a program"},
    {"BEGIN:VCALENDAR", 15, "a calendar"},
    {"<!DOCTYPE html", 14, "a web page"},
    {"<html", 5, "a web page"},
};

QString foreignKind(const QByteArray& bytes) {
    for (const ForeignMark& mark : ForeignMarks)
        if (bytes.startsWith(QByteArrayView(mark.bytes, mark.size)))
            return u"The file is %1."_s.arg(QLatin1String(mark.what));
    return {};
}

// What the XML head or a declaration of the first lines claims.
QByteArray claimedEncoding(const QByteArray& bytes) {
    const QString head = QString::fromLatin1(bytes.left(400));
    static const QRegularExpression declared(
        u"^\\s*(?:\u00ef\u00bb\u00bf)?<\\?xml[^>]*encoding\\s*=\\s*[\"']([^\"']+)[\"']"_s);
    return declared.match(head).captured(1).toLatin1();
}

bool isSongEnding(const QString& fileName) {
    static const QStringList endings = {u"txt"_s,    u"text"_s, u"song"_s,  u"sng"_s,
                                        u"lyrics"_s, u"tab"_s,  u"chords"_s};
    return endings.contains(QFileInfo(fileName).suffix().toLower());
}

bool isChordProEnding(const QString& fileName) {
    static const QStringList endings = {u"cho"_s, u"crd"_s,   u"chordpro"_s, u"chopro"_s,
                                        u"pro"_s, u"chord"_s, u"onsong"_s,   u"cpm"_s};
    return endings.contains(QFileInfo(fileName).suffix().toLower());
}

ExchangeForm textForm(const QByteArray& bytes, const QString& text, const QString& fileName,
                      QString& reason) {
    const QString start = text.left(4096).trimmed();
    if (start.isEmpty() && text.trimmed().isEmpty()) {
        reason = u"The file is empty."_s;
        return ExchangeForm::Unknown;
    }
    if (start.startsWith(u'<')) return xmlFormOf(text, reason);
    if (start.startsWith("BEGIN:VCARD"_L1, Qt::CaseInsensitive)) return ExchangeForm::VCard;
    static const QRegularExpression usr(u"^\\[(?:File|S \\w+)\\]\\s*$"_s,
                                        QRegularExpression::MultilineOption);
    if (start.startsWith(u'[') && usr.match(start).hasMatch() && text.contains("Title="_L1))
        return ExchangeForm::SongSelectUsr;
    // Text has no zero bytes, except in UTF-16, where they are decoded by now.
    if (text.contains(QChar(0))) {
        reason = u"The file is not a text."_s;
        return ExchangeForm::Unknown;
    }
    const ExchangeForm csv = csvFormOf(text);
    if (csv != ExchangeForm::Unknown) return csv;
    if (looksLikeChordPro(text) || isChordProEnding(fileName)) return ExchangeForm::ChordPro;
    const ExchangeForm form = textFormOf(text);
    if (form != ExchangeForm::Unknown) return form;
    if (isSongEnding(fileName)) return ExchangeForm::PlainText;
    reason = foreignKind(bytes);
    if (reason.isEmpty()) reason = u"The file has none of the known forms."_s;
    return ExchangeForm::Unknown;
}

ExchangeForm formAndText(const QByteArray& bytes, const QString& fileName, QString& text,
                         QString& reason) {
    if (bytes.isEmpty()) {
        reason = u"The file is empty."_s;
        return ExchangeForm::Unknown;
    }
    if (bytes.startsWith("SQLite format 3")) {
        if (bytes.size() <= MaxDatabaseBytes) return ExchangeForm::SongDatabase;
        reason = u"The file is too large."_s;
        return ExchangeForm::Unknown;
    }
    reason = foreignKind(bytes);
    if (!reason.isEmpty()) return ExchangeForm::Unknown;
    if (bytes.size() > MaxTextBytes) {
        reason = u"The file is too large."_s;
        return ExchangeForm::Unknown;
    }
    text = decodedText(bytes, claimedEncoding(bytes));
    return textForm(bytes, text, fileName, reason);
}

// A title from the file's name for songs that have none.
void fillTitles(ExchangeContent& content, const QString& fileName) {
    QString name = fileName;
    name.replace(u'\\', u'/');
    name = cleanField(QFileInfo(name).completeBaseName().replace(u'_', u' '));
    for (Song& song : content.songs) {
        QStringList titles;
        for (const QString& title : song.titles) {
            const QString clean = cleanField(title);
            if (!clean.isEmpty() && !titles.contains(clean)) titles += clean;
        }
        song.titles = titles;
        if (song.titles.isEmpty() && !name.isEmpty()) song.titles = {name};
    }
    content.songs.removeIf([](const Song& song) {
        return song.titles.isEmpty() && song.verses.isEmpty() && song.ccli.isEmpty();
    });
}

}  // namespace

void addNote(QStringList& notes, const QString& note) {
    if (notes.size() < MaxExchangeNotes && !notes.contains(note)) notes += note;
}

ExchangeContent readExchangeFile(const QByteArray& bytes, const QString& fileName) {
    ExchangeContent content;
    QString text;
    content.form = formAndText(bytes, fileName, text, content.reason);
    switch (content.form) {
        case ExchangeForm::Unknown:
            return content;
        case ExchangeForm::OpenSong:
            readOpenSong(text, content);
            break;
        case ExchangeForm::OpenLyrics:
            readOpenLyrics(text, content);
            break;
        case ExchangeForm::ChordPro:
            readChordPro(text, content);
            break;
        case ExchangeForm::PlainText:
        case ExchangeForm::SongSelectText:
            readSongText(text, content);
            break;
        case ExchangeForm::SongSelectUsr:
            readSongSelectUsr(text, content);
            break;
        case ExchangeForm::SongDatabase:
            readSongDatabase(bytes, content);
            break;
        case ExchangeForm::SongsCsv:
        case ExchangeForm::PlayedCsv:
        case ExchangeForm::PeopleCsv:
            readCsv(text, content);
            break;
        case ExchangeForm::VCard:
            readVCards(bytes, content);
            break;
    }
    fillTitles(content, fileName);
    if (content.isEmpty() && content.reason.isEmpty())
        content.reason = u"The file holds no songs, people or dates."_s;
    return content;
}
