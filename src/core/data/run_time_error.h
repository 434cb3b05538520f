// The error that a failing statement, conversion or file operation raises.
#pragma once

#include <QString>

#include <stdexcept>

// A failure with the platform's number. It travels as an exception from the place where it
// happens to the edge of the handler that a click has called, and no farther.
class RunTimeError : public std::runtime_error {
public:
    // Numbers that code raises or tests for; any other number may come from a statement.
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

    // Takes the description from the number.
    explicit RunTimeError(int number);
    RunTimeError(int number, const QString& description);

    int number() const { return m_number; }
    const QString& description() const { return m_description; }

private:
    int m_number;
    QString m_description;
};
