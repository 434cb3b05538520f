// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/rules/plain_text.h"

#include "core/data/texts.h"

#include <QRegularExpression>
#include <QStringDecoder>

#include <array>
#include <iconv.h>

using namespace Qt::Literals::StringLiterals;

namespace {

bool decodeAs(QStringConverter::Encoding encoding, QByteArrayView bytes, QString& text) {
    QStringDecoder decoder(encoding, QStringConverter::Flag::Stateless);
    text = decoder.decode(bytes);
    return !decoder.hasError();
}

// Every line by itself: UTF-8 where it is that, else Windows-1252.
QString decodedByLines(QByteArrayView bytes) {
    QString text;
    text.reserve(bytes.size());
    for (qsizetype start = 0; start < bytes.size();) {
        qsizetype end = start;
        while (end < bytes.size() && bytes[end] != '\n' && bytes[end] != '\r') ++end;
        if (end < bytes.size()) ++end;
        const QByteArrayView line = bytes.sliced(start, end - start);
        QString decoded;
        text += decodeAs(QStringConverter::Utf8, line, decoded) ? decoded : fromCodePage1252(line);
        start = end;
    }
    return text;
}

bool isWindows1252(const QByteArray& name) {
    static const QByteArrayList names = {"windows-1252", "cp1252",     "iso-8859-1", "iso8859-1",
                                         "latin1",       "iso_8859-1", "us-ascii",   "ascii"};
    return names.contains(name.toLower());
}

// By the C library, which knows some hundred encodings. False where it does not know the name, or
// the bytes are not of that encoding.
bool decodeByName(const QByteArray& name, const QByteArray& bytes, QString& text) {
    static const QRegularExpression plain(u"^[A-Za-z0-9][A-Za-z0-9_.:-]{1,30}$"_s);
    if (!plain.match(QString::fromLatin1(name)).hasMatch()) return false;
    const iconv_t converter = iconv_open("UTF-8", name.constData());
    if (converter == iconv_t(-1)) return false;
    QByteArray utf8;
    std::array<char, 4096> part;
    char* input = const_cast<char*>(bytes.constData());
    size_t left = size_t(bytes.size());
    bool good = true;
    while (left > 0 && good) {
        char* output = part.data();
        size_t room = part.size();
        const size_t done = iconv(converter, &input, &left, &output, &room);
        utf8.append(part.data(), qsizetype(part.size() - room));
        good = done != size_t(-1) || errno == E2BIG;
    }
    iconv_close(converter);
    if (good) text = QString::fromUtf8(utf8);
    return good;
}

// UTF-16 without a byte order mark shows by its zero bytes.
bool looksLikeUtf16(const QByteArray& bytes, QStringConverter::Encoding& encoding) {
    const qsizetype looked = std::min<qsizetype>(bytes.size() & ~qsizetype(1), 4096);
    qsizetype evenZeros = 0, oddZeros = 0;
    for (qsizetype i = 0; i < looked; i += 2) {
        evenZeros += bytes[i] == 0;
        oddZeros += bytes[i + 1] == 0;
    }
    encoding = evenZeros > oddZeros ? QStringConverter::Utf16BE : QStringConverter::Utf16LE;
    return std::max(evenZeros, oddZeros) * 10 > looked * 2 &&
           std::min(evenZeros, oddZeros) * 100 <= looked;
}

// UTF-8 that was made of Windows-1252 as if it were Latin-1 has C1 controls.
void mendC1Controls(QString& text) {
    for (QChar& c : text)
        if (c.unicode() >= 0x80 && c.unicode() < 0xA0)
            c = fromCodePage1252(QByteArray(1, char(c.unicode()))).front();
}

QString decoded(const QByteArray& bytes, const QByteArray& claimed) {
    QString text;
    if (const auto marked = QStringConverter::encodingForData(bytes)) {
        if (marked == QStringConverter::Utf8)
            return decodedByLines(QByteArrayView(bytes).sliced(3));
        decodeAs(*marked, bytes, text);
        return text;
    }
    QStringConverter::Encoding encoding;
    if (looksLikeUtf16(bytes, encoding)) {
        decodeAs(encoding, bytes, text);
        return text;
    }
    const QByteArray name = claimed.trimmed().toLower();
    // An ASCII file may use shifts (ISO-2022), so a name that is none of the usual comes first.
    const bool usual = name.isEmpty() || name.startsWith("utf") || isWindows1252(name);
    if (!usual && decodeByName(name, bytes, text)) return text;
    return decodedByLines(bytes);
}

}  // namespace

QString decodedText(const QByteArray& bytes, const QByteArray& claimed) {
    QString text = withUnixLineEnds(decoded(bytes, claimed));
    if (text.startsWith(QChar(0xFEFF))) text.remove(0, 1);
    mendC1Controls(text);
    return text;
}

QString decodedPiece(const QByteArray& bytes, const QByteArray& charset) {
    QString text;
    const QByteArray name = charset.trimmed().toLower();
    if (isWindows1252(name) && !decodeAs(QStringConverter::Utf8, bytes, text))
        text = fromCodePage1252(bytes);
    else if (name.isEmpty() || name.startsWith("utf-8") || isWindows1252(name) ||
             !decodeByName(name, bytes, text))
        text = decodedByLines(bytes);
    text = withUnixLineEnds(text);
    mendC1Controls(text);
    return text;
}

QStringList linesOfText(const QString& text) {
    QString unix = text;
    for (QChar& c : unix) {
        const char16_t unit = c.unicode();
        if (unit == 0x0B || unit == 0x0C || unit == 0x85 || unit == 0x2028 || unit == 0x2029)
            c = u'\n';
    }
    return textLines(unix);
}

QString cleanLine(const QString& line, int tabWidth) {
    QString clean;
    clean.reserve(line.size());
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar c = line[i];
        const char16_t unit = c.unicode();
        if (unit == '\t') {
            do clean += u' ';
            while (clean.size() % tabWidth != 0);
        } else if (unit == 0xA0 || unit == 0x0B || unit == 0x0C || unit == '\n' || unit == '\r' ||
                   unit == 0x2028 || unit == 0x2029) {
            clean += u' ';
        } else if (unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || unit == 0xFEFF ||
                   unit >= 0xFFFE || (unit >= 0xFDD0 && unit <= 0xFDEF)) {
            continue;
        } else if (c.isHighSurrogate() && i + 1 < line.size() && line[i + 1].isLowSurrogate()) {
            clean += c;
            clean += line[++i];
        } else {
            clean += c.isSurrogate() ? QChar(0xFFFD) : c;
        }
    }
    qsizetype end = clean.size();
    while (end > 0 && clean[end - 1].isSpace()) --end;
    clean.truncate(end);
    return clean;
}

QString cleanField(const QString& text) { return cleanLine(text).simplified(); }

QString ccliDigits(const QString& written) {
    // Spreadsheets write thousands apart.
    static const QRegularExpression thousands(u"(?<=\\d),(?=\\d{3}(?!\\d))"_s);
    QString text = written;
    text.remove(thousands);
    qsizetype start = 0;
    const auto isDigit = [&](qsizetype i) { return text[i] >= u'0' && text[i] <= u'9'; };
    while (start < text.size() && !isDigit(start)) ++start;
    qsizetype end = start;
    while (end < text.size() && isDigit(end)) ++end;
    while (start < end && text[start] == u'0') ++start;
    return text.sliced(start, std::min<qsizetype>(end - start, 12));
}

QStringList splitList(const QString& text, QStringView separators) {
    QStringList list;
    qsizetype start = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        if (i < text.size() && !separators.contains(text[i])) continue;
        const QString entry = cleanField(text.sliced(start, i - start));
        if (!entry.isEmpty() && !list.contains(entry, Qt::CaseInsensitive)) list += entry;
        start = i + 1;
    }
    return list;
}
