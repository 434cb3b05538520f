// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/paper/rtf_writer.h"

#include "core/data/texts.h"

#include <QFont>
#include <QStringList>
#include <QTextBlock>
#include <QTextDocument>

#include <cmath>

namespace {

constexpr double PointsPerPixel = 0.75;

QByteArray sign(QChar c) {
    switch (c.unicode()) {
        case u'\\':
        case u'{':
        case u'}':
            return QByteArray("\\") + c.toLatin1();
        case u'\t':
            return "\\tab ";
        case QChar::LineSeparator:
            return "\\line ";
        case QChar::Nbsp:
            return "\\~";
        default:
            break;
    }
    if (c.unicode() < ' ' || c == QChar::ObjectReplacementCharacter) return {};
    if (c.unicode() < 0x7f) return QByteArray(1, c.toLatin1());
    if (const uchar byte = toCodePage1252(c)) return "\\'" + QByteArray(1, char(byte)).toHex();
    // Code units are signed in RTF. "?" is what a reader without Unicode shows. It is written as a
    // byte: behind a plain one, some readers lose the next letter.
    return "\\u" + QByteArray::number(qint16(c.unicode())) + "\\'3f";
}

QByteArray escaped(const QString& text) {
    QByteArray rtf;
    for (const QChar c : text) rtf += sign(c);
    return rtf;
}

class RtfWriter {
public:
    explicit RtfWriter(const QTextDocument& document) : m_document(document) {}

    QByteArray file() {
        QByteArray body;
        for (QTextBlock block = m_document.begin(); block.isValid(); block = block.next())
            body += paragraph(block);
        return "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1\r\n" + fontTable() + body + "}\r\n";
    }

private:
    static QByteArray alignment(const QTextBlock& block) {
        const Qt::Alignment align = block.blockFormat().alignment();
        if (align & Qt::AlignHCenter) return "\\qc";
        if (align & Qt::AlignRight) return "\\qr";
        if (align & Qt::AlignJustify) return "\\qj";
        return "\\ql";
    }

    // The complete character format.
    QByteArray letters(const QTextCharFormat& format) {
        const QFont font = format.font().resolve(m_document.defaultFont());
        const QString family = font.family();
        if (!m_fonts.contains(family)) m_fonts.append(family);
        const double points =
            font.pointSizeF() > 0 ? font.pointSizeF() : font.pixelSize() * PointsPerPixel;
        QByteArray rtf = "\\plain\\f" + QByteArray::number(m_fonts.indexOf(family)) + "\\fs" +
                         QByteArray::number(std::lround(points * 2));
        if (font.bold()) rtf += "\\b";
        if (font.italic()) rtf += "\\i";
        return rtf;
    }

    QByteArray paragraph(const QTextBlock& block) {
        QByteArray rtf = "\\pard" + alignment(block);
        if (block.length() == 1) rtf += letters(block.charFormat());
        for (auto run = block.begin(); !run.atEnd(); ++run)
            rtf += letters(run.fragment().charFormat()) + ' ' + escaped(run.fragment().text());
        return rtf + "\\par\r\n";
    }

    QByteArray fontTable() const {
        QByteArray rtf = "{\\fonttbl";
        for (qsizetype i = 0; i < m_fonts.size(); ++i) {
            QString name = m_fonts[i];
            rtf += "{\\f" + QByteArray::number(i) + "\\fnil " +
                   escaped(name.remove(QLatin1Char(';'))) + ";}";
        }
        return rtf + "}\r\n";
    }

    const QTextDocument& m_document;
    QStringList m_fonts;
};

}  // namespace

QByteArray rtfOf(const QTextDocument& document) { return RtfWriter(document).file(); }
