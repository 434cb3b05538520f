// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The error that a failing statement, conversion or file operation raises.
#pragma once

#include <QString>

#include <stdexcept>

// A failure with a number and a description. It is thrown where it happens and caught where the
// event handler was called (atEdge in platform/desktop/form.h), if not before.
class RunTimeError : public std::runtime_error {
public:
    // The numbers that the program raises or checks for.
    enum Number {
        InvalidCall = 5,
        Overflow = 6,
        SubscriptOutOfRange = 9,
        TypeMismatch = 13,
        FileNotFound = 53,
        PermissionDenied = 70,
        PathAccess = 75,
        PathNotFound = 76,
        NoCurrentRecord = 3021,
        NoSuchItem = 3265,
        ObjectIsOpen = 3705,
        ObjectIsClosed = 3704,
        StatementRefused = -2147217900,
        StoreFailed = -2147467259,
        DialogCancelled = 32755,
    };

    // An error with the usual description of its number.
    explicit RunTimeError(int number);

    // An error with a description of its own.
    RunTimeError(int number, const QString& description);

    int number() const { return m_number; }
    const QString& description() const { return m_description; }

private:
    int m_number;
    QString m_description;
};
