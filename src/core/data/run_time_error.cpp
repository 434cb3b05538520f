// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/data/run_time_error.h"

namespace {

QString usualDescription(int number) {
    switch (number) {
        case RunTimeError::InvalidCall:
            return QStringLiteral("Invalid procedure call or argument");
        case RunTimeError::Overflow:
            return QStringLiteral("Overflow");
        case RunTimeError::SubscriptOutOfRange:
            return QStringLiteral("Subscript out of range");
        case RunTimeError::TypeMismatch:
            return QStringLiteral("Type mismatch");
        case RunTimeError::FileNotFound:
            return QStringLiteral("File not found");
        case RunTimeError::PermissionDenied:
            return QStringLiteral("Permission denied");
        case RunTimeError::PathAccess:
            return QStringLiteral("Path/File access error");
        case RunTimeError::PathNotFound:
            return QStringLiteral("Path not found");
        case RunTimeError::NoCurrentRecord:
            return QStringLiteral("There is no current record: the table or the result is empty.");
        case RunTimeError::NoSuchItem:
            return QStringLiteral("The result has no field of that name.");
        case RunTimeError::ObjectIsOpen:
            return QStringLiteral("Operation is not allowed when the object is open.");
        case RunTimeError::ObjectIsClosed:
            return QStringLiteral("Operation is not allowed when the object is closed.");
        case RunTimeError::DialogCancelled:
            return QStringLiteral("Cancel was selected.");
        default:
            return QStringLiteral("Application-defined or object-defined error");
    }
}

}  // namespace

RunTimeError::RunTimeError(int number) : RunTimeError(number, usualDescription(number)) {}

RunTimeError::RunTimeError(int number, const QString& description)
    : std::runtime_error(description.toStdString()), m_number(number), m_description(description) {}
