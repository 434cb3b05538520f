#include "mail/po_send_mail_checks.h"

#include "core/data/paths.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace {

// Bits of SMTPHostValidation. That a name can be found (2) shows when the talk begins.
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

bool holdsLineEnd(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar c) {
        return c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
               c == QChar::ParagraphSeparator;
    });
}

QString fileFault(const QString& path) {
    const QFileInfo file(resolvedPath(path));
    if (!file.exists()) return QStringLiteral("The attachment \"%1\" is missing.").arg(path);
    if (!file.isFile()) return QStringLiteral("The attachment \"%1\" is not a file.").arg(path);
    if (!file.isReadable())
        return QStringLiteral("The attachment \"%1\" cannot be read.").arg(path);
    return {};
}

}  // namespace

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
    if (!match.hasMatch() || holdsLineEnd(text)) return std::nullopt;
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
    if (address.isEmpty() || holdsLineEnd(address) ||
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

std::vector<Mailbox> recipientsOf(const MailLetter& letter) {
    const QStringList addresses = letter.Recipient.split(letter.Delimiter);
    QStringList names = letter.RecipientDisplayName.split(letter.Delimiter);
    // A delimiter inside a cell shifts the names: none is better than another person's.
    if (names.size() != addresses.size()) names.clear();
    std::vector<Mailbox> boxes;
    for (qsizetype i = 0; i < addresses.size(); ++i) {
        const Mailbox box{addresses[i].trimmed(), names.value(i)};
        if (!box.address.isEmpty() && std::find(boxes.begin(), boxes.end(), box) == boxes.end())
            boxes.push_back(box);
    }
    return boxes;
}

QStringList attachmentsOf(const MailLetter& letter) {
    const QStringList pieces = letter.Attachment.split(letter.Delimiter);
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
            joined += letter.Delimiter + pieces[last + 1];
        }
        paths.append(path);
    }
    return paths;
}

std::optional<MailHost> smtpHostOf(const MailLetter& letter) {
    return mailHostOf(letter.SMTPHost, QStringLiteral("smtp"), letter.UseAuthentication ? 587 : 25,
                      465, letter.SMTPHostValidation & ChecksForm);
}

std::optional<MailHost> popHostOf(const MailLetter& letter) {
    return mailHostOf(letter.POP3Host, QStringLiteral("pop3"), 110, 995,
                      letter.SMTPHostValidation & ChecksForm);
}

QString faultsOf(const MailLetter& letter) {
    QStringList faults;
    const bool checksForm = letter.EmailAddressValidation != 0;
    if (!smtpHostOf(letter))
        faults += QStringLiteral("\"%1\" is not the name of a mail server.").arg(letter.SMTPHost);
    if (letter.UsePopAuthentication && !popHostOf(letter))
        faults += QStringLiteral("\"%1\" is not the name of a POP3 server.").arg(letter.POP3Host);
    if ((letter.UseAuthentication || letter.UsePopAuthentication) && letter.Username.isEmpty())
        faults += QStringLiteral("The login needs a user name.");
    if (holdsLineEnd(letter.Username) || holdsLineEnd(letter.Password))
        faults += QStringLiteral("The user name or the password holds a line end.");
    if (!isMailAddress(letter.From, checksForm))
        faults += QStringLiteral("\"%1\" is not a sender's mail address.").arg(letter.From);
    if (!letter.ReplyToAddress.isEmpty() && letter.ReplyToAddress != letter.From &&
        !isMailAddress(letter.ReplyToAddress, checksForm))
        faults +=
            QStringLiteral("\"%1\" is not a mail address to reply to.").arg(letter.ReplyToAddress);
    const std::vector<Mailbox> boxes = recipientsOf(letter);
    for (const Mailbox& box : boxes)
        if (!isMailAddress(box.address, checksForm))
            faults +=
                QStringLiteral("\"%1\" is not a mail address (%2).")
                    .arg(box.address, box.name.isEmpty() ? QStringLiteral("no name") : box.name);
    if (boxes.empty()) faults += QStringLiteral("None of the recipients has a mail address.");
    if (int(boxes.size()) > letter.MaxRecipients)
        faults += QStringLiteral("There are %1 recipients; a letter goes to %2 at most.")
                      .arg(boxes.size())
                      .arg(letter.MaxRecipients);
    if (letter.EncodeType != 0) faults += QStringLiteral("The encoding is not known.");
    for (const QString& path : attachmentsOf(letter)) {
        const QString fault = fileFault(path);
        if (!fault.isEmpty()) faults += fault;
    }
    return faults.join(QStringLiteral("\r\n"));
}
