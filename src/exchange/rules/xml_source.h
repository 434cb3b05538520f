// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// XML of unknown origin, read token by token.
#pragma once

#include <QXmlStreamReader>

#include <memory>

// Refuses documents that declare entities, nest without end or have tags of many attributes, and
// reads past what people often get wrong: bare ampersands, <br> without end, HTML's entities,
// control characters. Opens nothing but the text.
class XmlSource {
public:
    explicit XmlSource(const QString& text);
    ~XmlSource();

    // Goes to the next token. False at the end, and where the document cannot be read further.
    bool next();

    QXmlStreamReader::TokenType token() const { return m_xml.tokenType(); }
    bool isStart() const { return m_xml.isStartElement(); }
    bool isEnd() const { return m_xml.isEndElement(); }

    // The element's name without prefix, in lower case.
    QString name() const { return m_xml.name().toString().toLower(); }
    QString nameSpace() const { return m_xml.namespaceUri().toString(); }
    // An attribute by its name without prefix.
    QString attribute(QLatin1StringView name) const;
    QString text() const { return m_xml.text().toString(); }
    // The number of elements that are open; 1 at the root's start.
    int depth() const { return m_depth; }

    // The text up to the end of the element that has just started, that of its children included.
    QString elementText();

    // One sentence on why the document could not be read to its end. Empty where it was.
    QString problem() const { return m_problem; }

private:
    class Entities;

    std::unique_ptr<Entities> m_entities;
    QXmlStreamReader m_xml;
    int m_depth = 0;
    QString m_problem;
};
