// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mail/rules/typed_text.h"

#include <QRegularExpression>

namespace {

// What a "<" or a "&" has to begin to be left as it is. Elements whose names are common words, such
// as "mark", "time" or "main", are left out, and so are attributes without a value: people write
// "<a friend>".
QRegularExpression markup() {
    const QString elements = QStringLiteral(
        "a|abbr|b|big|blockquote|body|br|center|code|dd|del|div|dl|dt|em|font|h[1-6]|head|hr|html|"
        "i|img|ins|kbd|li|link|meta|ol|p|pre|q|s|small|span|strike|strong|style|sub|sup|table|"
        "tbody|td|tfoot|th|thead|title|tr|tt|u|ul");
    const QString attribute = QStringLiteral(
        "\\s+(?:[a-z][a-z0-9:-]*\\s*=\\s*(?:\"[^\"]*\"|'[^']*'|[^\\s\"'<>]+)|nowrap|noshade)");
    return QRegularExpression(
        QStringLiteral("<(?:%1)(?:%2)*+\\s*/?>|</(?:%1)\\s*>|<!--.*?-->|<!doctype\\s[^<>]*>|"
                       "&(?:[a-z][a-z0-9]*|#[0-9]{1,7}|#x[0-9a-f]{1,6});")
            .arg(elements, attribute),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
}

}  // namespace

bool isTypedText(const QString& message) {
    static const QRegularExpression page(QStringLiteral("<html[\\s>]"),
                                         QRegularExpression::CaseInsensitiveOption);
    return !page.match(message).hasMatch();
}

QString typedTextAsHtml(const QString& message) {
    static const QRegularExpression form = markup();
    QString html;
    for (qsizetype at = 0; at < message.size();) {
        const QChar c = message[at];
        if (c != QLatin1Char('<') && c != QLatin1Char('&')) {
            html += c;
            ++at;
            continue;
        }
        const QRegularExpressionMatch match =
            form.match(message, at, QRegularExpression::NormalMatch,
                       QRegularExpression::AnchorAtOffsetMatchOption);
        if (match.hasMatch()) {
            html += match.captured();
            at = match.capturedEnd();
        } else {
            html += c == QLatin1Char('<') ? QLatin1String("&lt;") : QLatin1String("&amp;");
            ++at;
        }
    }
    return html;
}

QString typedTextAsPlain(const QString& typed) {
    QString plain = typed;
    plain.replace(QLatin1String("<BR>\n"), QLatin1String("\n"));
    plain.replace(QChar::Nbsp, QLatin1Char(' '));
    if (!plain.endsWith(QLatin1Char('\n'))) plain += QLatin1Char('\n');
    return plain;
}
