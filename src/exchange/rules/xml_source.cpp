// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/rules/xml_source.h"

#include <QHash>
#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int MaxXmlDepth = 64;
constexpr int MaxAttributes = 64;

bool isAllowed(QChar c) {
    const char16_t unit = c.unicode();
    return unit >= 0x20 ? unit < 0xFFFE : unit == '\t' || unit == '\n' || unit == '\r';
}

// Whether "&" at a place begins an entity or a character's number.
bool startsEntity(QStringView text, qsizetype at) {
    qsizetype i = at + 1;
    if (i < text.size() && text[i] == u'#') ++i;
    const qsizetype start = i;
    while (i < text.size() && i - start < 32 && text[i].isLetterOrNumber()) ++i;
    return i > start && i < text.size() && text[i] == u';';
}

// The end of a tag that starts at a place, quoted values skipped; -1 where there is none.
qsizetype tagEnd(QStringView text, qsizetype at, int& attributes) {
    QChar quote;
    attributes = 0;
    for (qsizetype i = at; i < text.size(); ++i) {
        const QChar c = text[i];
        if (!quote.isNull()) {
            if (c == quote) quote = QChar();
        } else if (c == u'"' || c == u'\'') {
            quote = c;
        } else if (c == u'=') {
            ++attributes;
        } else if (c == u'>') {
            return i;
        }
    }
    return -1;
}

// The text as QXmlStreamReader takes it. Cuts it off at a tag of too many attributes, which that
// class compares each with each, and reports that.
QString preparedXml(const QString& source, QString& problem) {
    static const QRegularExpression head(u"^\\s*<\\?xml[^>]*\\?>"_s);
    QString text = source;
    text.remove(head);
    QString prepared;
    prepared.reserve(text.size() + 64);
    for (qsizetype i = 0; i < text.size();) {
        const QStringView rest = QStringView(text).sliced(i);
        const QChar c = text[i];
        if (c == u'<') {
            qsizetype length = 0;
            if (rest.startsWith(u"<![CDATA[")) {
                const qsizetype end = text.indexOf("]]>"_L1, i);
                length = (end < 0 ? text.size() : end + 3) - i;
            } else if (rest.startsWith(u"<!--")) {
                const qsizetype end = text.indexOf("-->"_L1, i + 4);
                length = (end < 0 ? text.size() : end + 3) - i;
                // A comment says nothing, and "--" in it would be an error.
                i += length;
                continue;
            } else if (rest.startsWith(u"<br>", Qt::CaseInsensitive)) {
                prepared += "<br/>"_L1;
                i += 4;
                continue;
            } else if (rest.startsWith(u"</br>", Qt::CaseInsensitive)) {
                i += 5;
                continue;
            } else if (rest.size() > 1 && (rest[1].isLetter() || rest[1] == u'_')) {
                int attributes = 0;
                const qsizetype end = tagEnd(text, i, attributes);
                length = (end < 0 ? text.size() : end + 1) - i;
                if (attributes > MaxAttributes) {
                    problem = u"A tag of the file has too many attributes."_s;
                    break;
                }
            } else if (rest.size() > 1 &&
                       (rest[1].isSpace() || rest[1].isDigit() || rest[1] == u'<')) {
                prepared += "&lt;"_L1;
                ++i;
                continue;
            } else {
                length = 1;
            }
            for (const QChar part : rest.first(length)) prepared += isAllowed(part) ? part : u' ';
            i += length;
        } else {
            if (c == u'&' && !startsEntity(text, i))
                prepared += "&amp;"_L1;
            else
                prepared += isAllowed(c) ? c : u' ';
            ++i;
        }
    }
    return prepared;
}

}  // namespace

// The entities of web pages that people write into song files.
class XmlSource::Entities : public QXmlStreamEntityResolver {
public:
    QString resolveUndeclaredEntity(const QString& name) override {
        static const QHash<QString, char16_t> known = {
            {u"nbsp"_s, 0xA0},    {u"copy"_s, 0xA9},     {u"reg"_s, 0xAE},     {u"ndash"_s, 0x2013},
            {u"mdash"_s, 0x2014}, {u"lsquo"_s, 0x2018},  {u"rsquo"_s, 0x2019}, {u"ldquo"_s, 0x201C},
            {u"rdquo"_s, 0x201D}, {u"hellip"_s, 0x2026}, {u"trade"_s, 0x2122}, {u"auml"_s, 0xE4},
            {u"ouml"_s, 0xF6},    {u"uuml"_s, 0xFC},     {u"Auml"_s, 0xC4},    {u"Ouml"_s, 0xD6},
            {u"Uuml"_s, 0xDC},    {u"szlig"_s, 0xDF},    {u"eacute"_s, 0xE9},  {u"egrave"_s, 0xE8},
            {u"agrave"_s, 0xE0},  {u"aacute"_s, 0xE1},   {u"iacute"_s, 0xED},  {u"oacute"_s, 0xF3},
            {u"uacute"_s, 0xFA},  {u"ntilde"_s, 0xF1},   {u"ccedil"_s, 0xE7},  {u"aring"_s, 0xE5},
            {u"oslash"_s, 0xF8},  {u"aelig"_s, 0xE6}};
        const auto found = known.constFind(name);
        return found == known.constEnd() ? u"?"_s : QString(QChar(*found));
    }
};

XmlSource::XmlSource(const QString& text) : m_entities(std::make_unique<Entities>()) {
    m_xml.addData(preparedXml(text, m_problem));
    m_xml.setEntityResolver(m_entities.get());
    m_xml.setEntityExpansionLimit(64);
}

XmlSource::~XmlSource() = default;

bool XmlSource::next() {
    if (m_xml.atEnd()) return false;
    if (m_xml.isEndElement()) --m_depth;
    const auto token = m_xml.readNext();
    if (token == QXmlStreamReader::StartElement && ++m_depth > MaxXmlDepth) {
        m_problem = u"The file nests too deeply."_s;
        m_xml.raiseError(m_problem);
        return false;
    }
    if (token == QXmlStreamReader::DTD &&
        (!m_xml.entityDeclarations().isEmpty() || m_xml.text().contains("<!ENTITY"_L1))) {
        m_problem = u"The file declares entities of its own, which are not read."_s;
        m_xml.raiseError(m_problem);
        return false;
    }
    if (token == QXmlStreamReader::Invalid) {
        if (m_problem.isEmpty())
            m_problem = u"The file is damaged at line %1: %2"_s.arg(m_xml.lineNumber())
                            .arg(m_xml.errorString().simplified());
        if (!m_problem.endsWith(u'.')) m_problem += u'.';
        return false;
    }
    return token != QXmlStreamReader::EndDocument;
}

QString XmlSource::attribute(QLatin1StringView name) const {
    for (const QXmlStreamAttribute& attribute : m_xml.attributes())
        if (attribute.name().compare(name, Qt::CaseInsensitive) == 0)
            return attribute.value().toString();
    return {};
}

QString XmlSource::elementText() {
    QString text;
    const int outer = m_depth;
    while (next()) {
        if (m_xml.isCharacters())
            text += m_xml.text();
        else if (m_xml.isEndElement() && m_depth == outer)
            break;
        else if (m_xml.isStartElement() && m_xml.name() == "br"_L1)
            text += u'\n';
    }
    return text;
}
