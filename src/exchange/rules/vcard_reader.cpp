// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// vCard 2.1, 3.0 and 4.0.
#include "exchange/rules/form_readers.h"
#include "exchange/rules/plain_text.h"

using namespace Qt::Literals::StringLiterals;

namespace {

struct VCardLine {
    QByteArray name;
    // In upper case, as "TYPE=CELL" or "CELL".
    QByteArrayList parameters;
    QByteArray value;

    bool is(const char* word) const {
        for (const QByteArray& parameter : parameters) {
            const QByteArray types = parameter.startsWith("TYPE=") ? parameter.mid(5) : parameter;
            for (const QByteArray& type : types.split(','))
                if (type.trimmed() == word) return true;
        }
        return false;
    }

    QByteArray parameter(const char* name) const {
        const QByteArray start = QByteArray(name) + '=';
        for (const QByteArray& parameter : parameters)
            if (parameter.startsWith(start)) return parameter.mid(start.size());
        return {};
    }

    bool isQuotedPrintable() const {
        return is("QUOTED-PRINTABLE") || parameter("ENCODING") == "QUOTED-PRINTABLE";
    }
};

// Lines are unfolded as bytes: a fold may part the bytes of one character.
QByteArrayList unfoldedLines(QByteArray bytes) {
    bytes.replace("\r\n", "\n");
    bytes.replace('\r', '\n');
    QByteArrayList lines;
    QByteArray line;
    bool soft = false;
    for (const QByteArray& part : bytes.split('\n')) {
        const bool folded = !part.isEmpty() && (part[0] == ' ' || part[0] == '\t');
        if (soft) {
            line.chop(1);
            line += part;
        } else if (folded && !line.isEmpty()) {
            line += part.mid(1);
        } else {
            if (!line.isEmpty()) lines += line;
            line = part;
        }
        // A soft line end of quoted-printable; base64 ends with "=" too.
        soft = line.endsWith('=') &&
               line.left(line.indexOf(':')).toUpper().contains("QUOTED-PRINTABLE");
    }
    if (!line.isEmpty()) lines += line;
    return lines;
}

VCardLine parsedLine(const QByteArray& line) {
    VCardLine parsed;
    qsizetype colon = 0;
    bool quoted = false;
    for (; colon < line.size() && (quoted || line[colon] != ':'); ++colon)
        if (line[colon] == '"') quoted = !quoted;
    if (colon >= line.size()) colon = line.indexOf(':');
    if (colon < 0) return parsed;
    parsed.value = line.mid(colon + 1);
    QByteArrayList head = line.left(colon).toUpper().split(';');
    parsed.name = head.takeFirst().trimmed();
    // "item1.TEL" is the property TEL of a group.
    parsed.name = parsed.name.mid(parsed.name.lastIndexOf('.') + 1);
    for (QByteArray& parameter : head) parameter = parameter.replace('"', "").trimmed();
    parsed.parameters = head;
    return parsed;
}

QByteArray fromQuotedPrintable(const QByteArray& text) {
    QByteArray bytes;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == '=' && i + 2 < text.size()) {
            bool good = false;
            const int byte = text.mid(i + 1, 2).toInt(&good, 16);
            if (good) {
                bytes += char(byte);
                i += 2;
                continue;
            }
        }
        bytes += text[i];
    }
    return bytes;
}

QString decodedValue(const VCardLine& line) {
    const QByteArray bytes =
        line.isQuotedPrintable() ? fromQuotedPrintable(line.value) : line.value;
    return decodedPiece(bytes, line.parameter("CHARSET"));
}

// The parts of a value between semicolons, without the backslashes of escapes.
QStringList valueParts(const QString& value, QChar separator) {
    QStringList parts = {QString()};
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] == u'\\' && i + 1 < value.size()) {
            ++i;
            parts.last() += value[i] == u'n' || value[i] == u'N' ? QChar(u' ') : value[i];
        } else if (value[i] == separator) {
            parts += QString();
        } else {
            parts.last() += value[i];
        }
    }
    for (QString& part : parts) part = cleanField(part);
    return parts;
}

QString wholeValue(const VCardLine& line) {
    QString value = valueParts(decodedValue(line), QChar()).value(0);
    for (const QLatin1StringView scheme : {"tel:"_L1, "mailto:"_L1})
        if (value.startsWith(scheme, Qt::CaseInsensitive)) value.remove(0, scheme.size());
    return value;
}

class VCardReader {
public:
    explicit VCardReader(ExchangeContent& content) : m_content(content) {}

    void read(const QByteArray& bytes) {
        for (const QByteArray& text : unfoldedLines(bytes)) {
            const VCardLine line = parsedLine(text);
            const QByteArray value = line.value.trimmed().toUpper();
            if (line.name == "BEGIN" && value == "VCARD") {
                // A card inside of a card is an agent's.
                if (m_depth++ == 0) start();
            } else if (line.name == "END" && value == "VCARD") {
                if (m_depth > 0 && --m_depth == 0) finish();
            } else if (m_depth == 1) {
                take(line);
            }
        }
        if (m_depth > 0) {
            finish();
            m_content.reason = u"The last card has no end."_s;
        }
    }

private:
    void start() {
        m_person = Contact();
        m_fullName.clear();
        m_isPerson = true;
        ++m_count;
    }

    void take(const VCardLine& line) {
        if (line.name == "N") {
            const QStringList parts = valueParts(decodedValue(line), u';');
            m_person.lastName = parts.value(0);
            m_person.firstName = cleanField(parts.value(1) + u' ' + parts.value(2));
        } else if (line.name == "FN") {
            m_fullName = wholeValue(line);
        } else if (line.name == "TEL") {
            takePhone(line);
        } else if (line.name == "EMAIL") {
            const QString email = wholeValue(line);
            if (m_person.email.isEmpty() || line.is("PREF")) m_person.email = email;
        } else if (line.name == "ADR") {
            takeAddress(line);
        } else if (line.name == "ROLE" || line.name == "CATEGORIES" || line.name == "TITLE") {
            for (const QString& role : valueParts(decodedValue(line), u','))
                if (!role.isEmpty() && !m_person.roles.contains(role)) m_person.roles += role;
        } else if (line.name == "KIND") {
            m_isPerson = line.value.trimmed().compare("individual", Qt::CaseInsensitive) == 0;
        }
    }

    void takePhone(const VCardLine& line) {
        if (line.is("FAX") || line.is("PAGER")) return;
        QString& target = line.is("CELL") ? m_person.cell : m_person.phone;
        if (target.isEmpty() || line.is("PREF")) target = wholeValue(line);
    }

    // Post office box; extended address; street; city; region; postal code; country.
    void takeAddress(const VCardLine& line) {
        if (!m_person.address.isEmpty() && !line.is("PREF") && !line.is("HOME")) return;
        const QStringList parts = valueParts(decodedValue(line), u';');
        QStringList street;
        for (const int i : {2, 1, 0})
            if (!parts.value(i).isEmpty()) street += parts.value(i);
        m_person.address = street.join(u", "_s);
        m_person.city = parts.value(3);
        m_person.state = parts.value(4);
        m_person.zip = parts.value(5);
    }

    void finish() {
        if (!m_isPerson) {
            addNote(m_content.unread, u"Card %1 is not a person's."_s.arg(m_count));
            return;
        }
        if (m_person.firstName.isEmpty() && m_person.lastName.isEmpty()) {
            const qsizetype blank = m_fullName.lastIndexOf(u' ');
            m_person.firstName = blank < 0 ? m_fullName : m_fullName.left(blank).trimmed();
            m_person.lastName = blank < 0 ? QString() : m_fullName.mid(blank + 1);
        }
        if (m_person.firstName.isEmpty() && m_person.lastName.isEmpty())
            addNote(m_content.unread, u"Card %1 has no name."_s.arg(m_count));
        else
            m_content.people += m_person;
    }

    ExchangeContent& m_content;
    Contact m_person;
    QString m_fullName;
    bool m_isPerson = true;
    int m_depth = 0;
    int m_count = 0;
};

}  // namespace

void readVCards(const QByteArray& bytes, ExchangeContent& content) {
    // UTF-16 and marks are taken off first; other bytes stay, since a property may have its own.
    const bool wide = bytes.contains('\0');
    VCardReader(content).read(wide                               ? decodedText(bytes).toUtf8()
                              : bytes.startsWith("\xEF\xBB\xBF") ? bytes.mid(3)
                                                                 : bytes);
}
