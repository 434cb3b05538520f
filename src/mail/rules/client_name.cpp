// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mail/rules/client_name.h"

#include <QRegularExpression>
#include <QSysInfo>

#include <chrono>
#include <future>
#include <netdb.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr std::chrono::seconds LookUpTime(2);

QString canonicalName(const std::string& name) {
    addrinfo hints{};
    hints.ai_flags = AI_CANONNAME;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (::getaddrinfo(name.c_str(), nullptr, &hints, &found) != 0) return {};
    const QString canonical = QString::fromLatin1(found->ai_canonname ? found->ai_canonname : "");
    ::freeaddrinfo(found);
    return canonical;
}

// The name service cannot be interrupted, so a separate thread asks it.
QString canonicalNameInTime(const QString& name) {
    std::packaged_task<QString()> task([host = name.toStdString()] { return canonicalName(host); });
    std::future<QString> answer = task.get_future();
    std::thread(std::move(task)).detach();
    return answer.wait_for(LookUpTime) == std::future_status::ready ? answer.get() : QString();
}

// The address from which this computer would reach another one, both as numbers; empty if there is
// no way. Connecting a datagram socket sends nothing.
QString addressTowards(const char* other) {
    addrinfo hints{};
    hints.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV;
    hints.ai_socktype = SOCK_DGRAM;
    addrinfo* target = nullptr;
    if (::getaddrinfo(other, "25", &hints, &target) != 0) return {};
    sockaddr_storage storage{};
    auto* own = reinterpret_cast<sockaddr*>(&storage);
    socklen_t size = sizeof storage;
    char text[NI_MAXHOST] = {};
    const int socket = ::socket(target->ai_family, target->ai_socktype, 0);
    if (socket >= 0) {
        if (::connect(socket, target->ai_addr, target->ai_addrlen) == 0 &&
            ::getsockname(socket, own, &size) == 0)
            ::getnameinfo(own, size, text, sizeof text, nullptr, 0, NI_NUMERICHOST);
        ::close(socket);
    }
    ::freeaddrinfo(target);
    return QString::fromLatin1(text);
}

// Both addresses are reserved for documentation; the way to them is the way to anywhere.
QString ownAddress() {
    for (const char* other : {"192.0.2.1", "2001:db8::1"}) {
        const QString address = addressTowards(other);
        if (!address.isEmpty()) return address;
    }
    return QStringLiteral("127.0.0.1");
}

}  // namespace

bool isFullHostName(const QString& name) {
    static const QRegularExpression full(
        QStringLiteral("^(?:[a-z0-9](?:[a-z0-9-]{0,61}[a-z0-9])?\\.)+"
                       "[a-z](?:[a-z0-9-]{0,61}[a-z0-9])?$"),
        QRegularExpression::CaseInsensitiveOption);
    return name.size() <= 253 && full.match(name).hasMatch() &&
           !name.startsWith(QLatin1String("localhost."), Qt::CaseInsensitive) &&
           !name.endsWith(QLatin1String(".localhost"), Qt::CaseInsensitive) &&
           !name.endsWith(QLatin1String(".localdomain"), Qt::CaseInsensitive);
}

QString addressLiteral(const QString& address) {
    return (address.contains(QLatin1Char(':')) ? QStringLiteral("[IPv6:%1]")
                                               : QStringLiteral("[%1]"))
        .arg(address);
}

QString clientName() {
    const QString name = QSysInfo::machineHostName();
    if (isFullHostName(name)) return name;
    const QString canonical = name.isEmpty() ? QString() : canonicalNameInTime(name);
    return isFullHostName(canonical) ? canonical : addressLiteral(ownAddress());
}
