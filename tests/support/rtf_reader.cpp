// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/rtf_reader.h"

#include "core/data/texts.h"

#include <QMap>

#include <algorithm>

namespace {

class Reader {
public:
    explicit Reader(const QByteArray& rtf) : m_rtf(rtf) {}

    std::vector<RtfParagraph> read() {
        if (!m_rtf.startsWith("{\\rtf1")) return {};
        while (m_place < m_rtf.size()) {
            const char c = m_rtf[m_place++];
            if (c == '{') {
                m_groups.push_back(m_state);
            } else if (c == '}') {
                if (m_groups.empty()) return {};
                m_state = m_groups.back();
                m_groups.pop_back();
            } else if (c == '\\') {
                control();
            } else if (c != '\r' && c != '\n') {
                add(QLatin1Char(c));
            }
        }
        return m_groups.empty() && m_open.runs.empty() ? m_paragraphs : std::vector<RtfParagraph>();
    }

private:
    struct State {
        int font = 0;
        RtfRun look;
        bool inFontTable = false;
    };

    void add(QChar c) {
        if (m_skip > 0) {
            --m_skip;
            return;
        }
        if (m_state.inFontTable) {
            if (c != QLatin1Char(';')) m_fonts[m_state.font] += c;
            return;
        }
        RtfRun look = m_state.look;
        look.font = m_fonts.value(m_state.font);
        if (m_open.runs.empty() || !sameLook(m_open.runs.back(), look)) m_open.runs.push_back(look);
        m_open.runs.back().text += c;
    }

    static bool sameLook(RtfRun one, const RtfRun& other) {
        one.text = other.text;
        return one == other;
    }

    void control() {
        const char first = m_rtf[m_place];
        if (!QChar(QLatin1Char(first)).isLetter()) {
            ++m_place;
            if (first == '\'') {
                add(fromCodePage1252(QByteArray::fromHex(m_rtf.mid(m_place, 2))).at(0));
                m_place += 2;
                return;
            }
            add(first == '~' ? QChar(QChar::Nbsp) : QChar(QLatin1Char(first)));
            return;
        }
        QByteArray word;
        while (m_place < m_rtf.size() && std::islower(m_rtf[m_place])) word += m_rtf[m_place++];
        QByteArray number;
        while (m_place < m_rtf.size() &&
               (std::isdigit(m_rtf[m_place]) || (number.isEmpty() && m_rtf[m_place] == '-')))
            number += m_rtf[m_place++];
        if (m_place < m_rtf.size() && m_rtf[m_place] == ' ') ++m_place;
        obey(word, number.isEmpty() ? 1 : number.toInt());
    }

    void obey(const QByteArray& word, int number) {
        if (word == "par") {
            m_open.end = m_state.look;
            m_open.end.font = m_fonts.value(m_state.font);
            m_paragraphs.push_back(m_open);
            m_open.runs.clear();
        } else if (word == "u") {
            add(QChar(char16_t(qint16(number))));
            m_skip = 1;
        } else if (word == "fonttbl") {
            m_state.inFontTable = true;
        } else if (word == "f") {
            m_state.font = number;
        } else if (word == "fs") {
            m_state.look.points = number / 2.0;
        } else if (word == "b") {
            m_state.look.bold = number != 0;
        } else if (word == "i") {
            m_state.look.italic = number != 0;
        } else if (word == "plain") {
            m_state.look = {};
        } else if (word == "tab") {
            add(QLatin1Char('\t'));
        } else if (word == "line") {
            add(QChar::LineSeparator);
        } else if (QByteArrayList{"ql", "qc", "qr", "qj"}.contains(word)) {
            m_open.align = QString::fromLatin1(word);
        } else if (word == "pard") {
            m_open.align = QStringLiteral("ql");
        }
    }

    const QByteArray m_rtf;
    qsizetype m_place = 0;
    int m_skip = 0;  // signs for readers that know no other units
    State m_state;
    std::vector<State> m_groups;
    QMap<int, QString> m_fonts;
    RtfParagraph m_open;
    std::vector<RtfParagraph> m_paragraphs;
};

}  // namespace

QString RtfParagraph::text() const {
    QString text;
    for (const RtfRun& run : runs) text += run.text;
    return text;
}

std::vector<RtfParagraph> rtfParagraphs(const QByteArray& rtf) { return Reader(rtf).read(); }

QStringList rtfLines(const QByteArray& rtf) {
    QStringList lines;
    for (const RtfParagraph& paragraph : rtfParagraphs(rtf)) lines.append(paragraph.text());
    return lines;
}
