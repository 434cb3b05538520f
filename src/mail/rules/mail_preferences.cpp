// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mail/rules/mail_preferences.h"

#include "core/data/database.h"

namespace {

QString flagText(bool on) { return on ? QStringLiteral("true") : QStringLiteral("false"); }

}  // namespace

MailPreferences mailPreferences() {
    MailPreferences found;
    Recordset rs = select(QStringLiteral("SELECT * FROM prefs"));
    for (; !rs.EOF_(); rs.MoveNext()) {
        const QString name = rs.Fields("var_name");
        const QString value = rs.Fields("var_value");
        const bool isOn = value == QLatin1String("true");
        if (name == QLatin1String("POPauthentication")) found.usePopAuthentication = isOn;
        if (name == QLatin1String("SMTPauthentication")) found.useAuthentication = isOn;
        if (name == QLatin1String("EmailPassRemember")) found.rememberPassword = isOn;
        // Deliberate: behaviour 171.
        if (name == QLatin1String("EmailPassword") && found.rememberPassword)
            found.password = value;
    }
    rs.Close();
    return found;
}

void storeUseAuthentication(bool on) {
    storePreference(QStringLiteral("SMTPauthentication"), flagText(on));
}

void storeUsePopAuthentication(bool on) {
    // Deliberate: behaviour 172.
    execute(QStringLiteral("UPDATE prefs SET var_value  = '") + flagText(on) +
            QStringLiteral("' WHERE var_name = 'POPauthentication'"));
}

void rememberPassword(const QString& password) {
    storePreference(QStringLiteral("EmailPassRemember"), flagText(true));
    // Deliberate: behaviours 168 and 173.
    storePreference(QStringLiteral("EmailPassword"), password);
}

void forgetPassword() {
    // Deliberate: behaviour 169.
    storePreference(QStringLiteral("EmailPassRemember"), flagText(false));
}
