// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Answers to the message boxes and dialogs of the program.
#pragma once

#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <functional>
#include <vector>

class QWidget;

// A queue of expected boxes and dialogs with their answers. Every box or dialog that opens is
// compared with the first in the queue and answered through its buttons, as a user would. An
// unexpected one fails the test and is closed; an answer that was not used fails the test at its
// end.
class Answers : public QObject {
    Q_OBJECT

public:
    Answers();

    // Expects a message box with exactly this text (with any line ends), icon, title and buttons,
    // and answers it with `press`.
    void box(const QString& text, QMessageBox::Icon icon = QMessageBox::NoIcon,
             const QString& title = QStringLiteral("Lorvanite"),
             QMessageBox::StandardButtons buttons = QMessageBox::Ok,
             QMessageBox::StandardButton press = QMessageBox::Ok);

    // Expects a question with Yes and No.
    void question(const QString& text, QMessageBox::StandardButton press,
                  const QString& title = QStringLiteral("Lorvanite"));

    // Expects the box of a run-time error whose description contains `part`.
    void runTimeError(int number, const QString& part = QString());

    // Expects a file dialog, types `path` and accepts. fileDialogs() has what the dialog proposed.
    void file(const QString& path);

    // Expects a folder dialog of this title, types `path` and accepts.
    void folder(const QString& path, const QString& title);

    // Expects a file dialog and accepts the proposed name.
    void fileAsProposed();

    // Expects a file dialog and cancels it.
    void cancelFile();

    // Expects any modal widget and hands it to `act`, which has to close it.
    void custom(const QString& what, std::function<void(QWidget*)> act);

    // What a file dialog showed when it opened.
    struct SeenFileDialog {
        QString title;
        QString folder;
        QString proposed;
        QStringList filters;
        bool saves = false;
        bool choosesFolder = false;
        QString button;  // the caption of the button that accepts, without "&"
    };
    const std::vector<SeenFileDialog>& fileDialogs() const { return m_fileDialogs; }

    // Hands every unexpected box or dialog to `act` instead of failing the test.
    void otherwise(std::function<void(QWidget*)> act) { m_otherwise = std::move(act); }

    // Sets a function that is called just before each answer, for screenshots.
    void beforeAnswer(std::function<void(QWidget*)> look) { m_look = std::move(look); }

    // Fails the running test for answers that were not used, and clears the queue.
    void verify();

    bool isEmpty() const { return m_queue.empty(); }

private:
    struct Expected {
        QString what;
        std::function<QString(QWidget*)> act;  // returns what was wrong; empty if nothing was
    };

    void expectFile(const QString& what, std::function<void(class QFileDialog*)> act,
                    const QString& folderTitle = QString());
    void look();
    void unexpected(QWidget* modal, const QString& why);

    std::vector<Expected> m_queue;
    std::vector<SeenFileDialog> m_fileDialogs;
    std::function<void(QWidget*)> m_look;
    std::function<void(QWidget*)> m_otherwise;
    QTimer m_timer;
    QPointer<QWidget> m_answered;  // weak: a later box may have the same address
    QPointer<QWidget> m_seen;
};
