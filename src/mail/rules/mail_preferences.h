// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The mail settings in the table prefs. Each function raises what a failing statement raises.
#pragma once

#include <QString>

struct MailPreferences {
    bool useAuthentication = false;
    bool usePopAuthentication = false;
    bool rememberPassword = false;
    QString password;  // empty unless it is to be remembered
};

MailPreferences mailPreferences();

void storeUseAuthentication(bool on);
void storeUsePopAuthentication(bool on);

// Stores the password and that it is to be remembered.
void rememberPassword(const QString& password);

// Stores that the password is not to be remembered.
void forgetPassword();
