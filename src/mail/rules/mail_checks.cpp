// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mail/rules/mail_checks.h"

#include "core/data/paths.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace {

// A bit of SMTPHostValidation. The other, 2, needs no check: connecting resolves the name anyway.
constexpr int ChecksForm = 1;

constexpr int LongestLocalPart = 64;
constexpr int LongestAddress = 254;

bool matchesWhole(const QString& text, const QString& pattern) {
    static const auto options = QRegularExpression::UseUnicodePropertiesOption;
    const QRegularExpression whole(QRegularExpression::anchoredPattern(pattern), options);
    return whole.match(text).hasMatch();
}

bool isHostName(const QString& host) {
    if (host.size() > 253) return false;
    const QStringList labels = host.split(QLatin1Char('.'));
    return std::all_of(labels.begin(), labels.end(), [](const QString& label) {
        return matchesWhole(label, QStringLiteral("[\\w](?:[\\w-]{0,61}[\\w])?"));
    });
}

bool holdsControl(const QString& text) { return std::any_of(text.begin(), text.end(), isControl); }

QString fileFault(const QString& path) {
    const QFileInfo file(resolvedPath(path));
    if (!file.exists()) return QStringLiteral("The attachment \"%1\" is missing.").arg(path);
    if (!file.isFile()) return QStringLiteral("The attachment \"%1\" is not a file.").arg(path);
    if (!file.isReadable())
        return QStringLiteral("The attachment \"%1\" cannot be read.").arg(path);
    return {};
}

}  // namespace

bool isControl(QChar c) {
    return c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
           c == QChar::ParagraphSeparator;
}

bool MailHost::isLoopback() const {
    static const QRegularExpression own(
        QStringLiteral("^(localhost|127(\\.\\d{1,3}){3}|\\[::1\\])$"),
        QRegularExpression::CaseInsensitiveOption);
    return own.match(host).hasMatch();
}

std::optional<MailHost> mailHostOf(const QString& text, const QString& plain, int plainPort,
                                   int encryptedPort, bool checksForm) {
    static const QRegularExpression form(QRegularExpression::anchoredPattern(QStringLiteral(
        "(?:(\\w+)://)?(\\[[0-9a-fA-F:.]+\\]|[^\\s:/@?#%\\\\\\[\\]]+)(?::(\\d{1,5}))?/?")));
    const QRegularExpressionMatch match = form.match(text.trimmed());
    if (!match.hasMatch() || holdsControl(text)) return std::nullopt;
    MailHost host{match.captured(1).toLower(), match.captured(2), match.captured(3).toInt()};
    if (host.scheme.isEmpty()) host.scheme = plain;
    if (host.scheme != plain && host.scheme != plain + QLatin1Char('s')) return std::nullopt;
    if (!match.hasCaptured(3)) host.port = host.isEncrypted() ? encryptedPort : plainPort;
    if (host.port < 1 || host.port > 65535) return std::nullopt;
    if (checksForm && !host.host.startsWith(QLatin1Char('[')) && !isHostName(host.host))
        return std::nullopt;
    return host;
}

bool isMailAddress(const QString& address, bool checksForm) {
    if (address.isEmpty() || holdsControl(address) ||
        address.contains(QRegularExpression(QStringLiteral("[\\s<>]"))))
        return false;
    if (!checksForm) return true;
    const qsizetype at = address.lastIndexOf(QLatin1Char('@'));
    if (at < 1 || at > LongestLocalPart || address.size() > LongestAddress) return false;
    const QString local = address.left(at);
    const QString domain = address.mid(at + 1);
    static const QString atom = QStringLiteral("[^\\x00-\\x20()<>\\[\\]:;@\\\\,.\"]+");
    if (!matchesWhole(local, atom + QStringLiteral("(?:\\.") + atom + QStringLiteral(")*")))
        return false;
    return isHostName(domain) ||
           matchesWhole(domain, QStringLiteral("\\[(?:IPv6:)?[0-9a-fA-F:.]+\\]"));
}

std::vector<Mailbox> recipientsOf(const MailMessage& message) {
    const QStringList addresses = message.Recipient.split(message.Delimiter);
    QStringList names = message.RecipientDisplayName.split(message.Delimiter);
    // A delimiter inside a cell shifts the names: no name is better than another person's.
    if (names.size() != addresses.size()) names.clear();
    std::vector<Mailbox> boxes;
    for (qsizetype i = 0; i < addresses.size(); ++i) {
        const Mailbox box{addresses[i].trimmed(), names.value(i)};
        if (!box.address.isEmpty() && std::find(boxes.begin(), boxes.end(), box) == boxes.end())
            boxes.push_back(box);
    }
    return boxes;
}

QString foreignAddressIn(const MailMessage& message) {
    const auto isForeign = [](const QString& address) {
        const QString local = address.section(QLatin1Char('@'), 0, -2);
        return std::any_of(local.begin(), local.end(), [](QChar c) { return c.unicode() > 0x7e; });
    };
    if (isForeign(message.From)) return message.From;
    for (const Mailbox& box : recipientsOf(message))
        if (isForeign(box.address)) return box.address;
    return {};
}

QStringList attachmentsOf(const MailMessage& message) {
    const QStringList pieces = message.Attachment.split(message.Delimiter);
    QStringList paths;
    for (qsizetype i = 0; i < pieces.size(); ++i) {
        QString path = pieces[i].trimmed();
        if (path.isEmpty()) continue;
        QString joined = pieces[i];
        for (qsizetype last = i; !QFileInfo::exists(resolvedPath(path)); ++last) {
            if (QFileInfo::exists(resolvedPath(joined.trimmed()))) {
                path = joined.trimmed();
                i = last;
                break;
            }
            if (last + 1 == pieces.size()) break;
            joined += message.Delimiter + pieces[last + 1];
        }
        paths.append(path);
    }
    return paths;
}

std::optional<MailHost> smtpHostOf(const MailMessage& message) {
    return mailHostOf(message.SMTPHost, QStringLiteral("smtp"),
                      message.UseAuthentication ? 587 : 25, 465,
                      message.SMTPHostValidation & ChecksForm);
}

std::optional<MailHost> popHostOf(const MailMessage& message) {
    return mailHostOf(message.POP3Host, QStringLiteral("pop3"), 110, 995,
                      message.SMTPHostValidation & ChecksForm);
}

QString faultsOf(const MailMessage& message) {
    QStringList faults;
    const bool checksForm = message.EmailAddressValidation != 0;
    if (!smtpHostOf(message))
        faults += QStringLiteral("\"%1\" is not a valid mail server name.").arg(message.SMTPHost);
    if (message.UsePopAuthentication && !popHostOf(message))
        faults += QStringLiteral("\"%1\" is not a valid POP3 server name.").arg(message.POP3Host);
    if ((message.UseAuthentication || message.UsePopAuthentication) && message.Username.isEmpty())
        faults += QStringLiteral("The login requires a user name.");
    if (holdsControl(message.Username) || holdsControl(message.Password))
        faults += QStringLiteral("The user name or the password contains a control character.");
    if (!isMailAddress(message.From, checksForm))
        faults += QStringLiteral("The sender's address \"%1\" is not valid.").arg(message.From);
    if (!message.ReplyToAddress.isEmpty() && message.ReplyToAddress != message.From &&
        !isMailAddress(message.ReplyToAddress, checksForm))
        faults +=
            QStringLiteral("The reply address \"%1\" is not valid.").arg(message.ReplyToAddress);
    const std::vector<Mailbox> boxes = recipientsOf(message);
    for (const Mailbox& box : boxes)
        if (!isMailAddress(box.address, checksForm))
            faults +=
                QStringLiteral("The address \"%1\" is not valid (%2).")
                    .arg(box.address, box.name.isEmpty() ? QStringLiteral("no name") : box.name);
    if (boxes.empty()) faults += QStringLiteral("None of the recipients has a mail address.");
    if (int(boxes.size()) > message.MaxRecipients)
        faults += QStringLiteral("There are %1 recipients; a message can have %2 at most.")
                      .arg(boxes.size())
                      .arg(message.MaxRecipients);
    if (message.EncodeType != 0) faults += QStringLiteral("The encoding is not supported.");
    for (const QString& path : attachmentsOf(message)) {
        const QString fault = fileFault(path);
        if (!fault.isEmpty()) faults += fault;
    }
    return faults.join(QStringLiteral("\r\n"));
}
