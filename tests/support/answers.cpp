// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/answers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>
#include <QProgressDialog>
#include <QTest>

namespace {

constexpr int LookEvery = 5;  // milliseconds

QString lines(QString text) {
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}

QString describe(QWidget* modal) {
    if (const auto* box = qobject_cast<QMessageBox*>(modal))
        return QStringLiteral("box \"%1\": \"%2\" icon %3 buttons %4")
            .arg(box->windowTitle(), box->text())
            .arg(box->icon())
            .arg(int(box->standardButtons()));
    if (const auto* dialog = qobject_cast<QFileDialog*>(modal))
        return QStringLiteral("file dialog \"%1\" in %2")
            .arg(dialog->windowTitle(), dialog->directory().path());
    return QStringLiteral("%1 \"%2\"")
        .arg(QLatin1String(modal->metaObject()->className()), modal->windowTitle());
}

// Presses a button at the next turn: a timer does not fire inside its own slot when the click
// opens another box.
void pressLater(QMessageBox* box, QMessageBox::StandardButton which) {
    QTimer::singleShot(0, box, [box, which] {
        if (QAbstractButton* button = box->button(which))
            QTest::mouseClick(button, Qt::LeftButton);
        else
            box->reject();
    });
}

QString pressIn(QWidget* modal, QMessageBox::StandardButton press) {
    pressLater(static_cast<QMessageBox*>(modal), press);
    return {};
}

void enterName(QFileDialog* dialog, const QString& name) {
    dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(name);
    QMetaObject::invokeMethod(dialog, "accept");
}

}  // namespace

Answers::Answers() {
    connect(&m_timer, &QTimer::timeout, this, &Answers::look);
    m_timer.start(LookEvery);
}

void Answers::box(const QString& text, QMessageBox::Icon icon, const QString& title,
                  QMessageBox::StandardButtons buttons, QMessageBox::StandardButton press) {
    m_queue.push_back({QStringLiteral("box \"%1\"").arg(text), [=](QWidget* modal) -> QString {
                           auto* box = qobject_cast<QMessageBox*>(modal);
                           if (!box || box->windowTitle() != title || box->text() != lines(text) ||
                               box->icon() != icon || box->standardButtons() != buttons)
                               return describe(modal);
                           return pressIn(modal, press);
                       }});
}

void Answers::question(const QString& text, QMessageBox::StandardButton press,
                       const QString& title) {
    box(text, QMessageBox::NoIcon, title, QMessageBox::Yes | QMessageBox::No, press);
}

void Answers::runTimeError(int number, const QString& part) {
    const QString start = QStringLiteral("Run-time error '%1':\n\n").arg(number);
    m_queue.push_back({start + part, [=](QWidget* modal) -> QString {
                           auto* box = qobject_cast<QMessageBox*>(modal);
                           if (!box || box->windowTitle() != QLatin1String("Lorvanite") ||
                               !box->text().startsWith(start) || !box->text().contains(part) ||
                               box->icon() != QMessageBox::Critical ||
                               box->standardButtons() != QMessageBox::Ok)
                               return describe(modal);
                           return pressIn(modal, QMessageBox::Ok);
                       }});
}

void Answers::expectFile(const QString& what, std::function<void(QFileDialog*)> act,
                         const QString& folderTitle) {
    m_queue.push_back(
        {what, [this, act, folderTitle](QWidget* modal) -> QString {
             auto* dialog = qobject_cast<QFileDialog*>(modal);
             if (!dialog) return describe(modal);
             if (!folderTitle.isEmpty() && (dialog->windowTitle() != folderTitle ||
                                            dialog->fileMode() != QFileDialog::Directory))
                 return describe(modal);
             const auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
             m_fileDialogs.push_back(
                 {dialog->windowTitle(), dialog->directory().path(), edit->text(),
                  dialog->nameFilters(), dialog->acceptMode() == QFileDialog::AcceptSave,
                  dialog->fileMode() == QFileDialog::Directory,
                  dialog->labelText(QFileDialog::Accept).remove(QLatin1Char('&'))});
             QTimer::singleShot(0, dialog, [dialog, act] { act(dialog); });
             return {};
         }});
}

void Answers::file(const QString& path) {
    expectFile(QStringLiteral("file ") + path,
               [path](QFileDialog* dialog) { enterName(dialog, path); });
}

void Answers::folder(const QString& path, const QString& title) {
    expectFile(
        QStringLiteral("folder ") + path, [path](QFileDialog* dialog) { enterName(dialog, path); },
        title);
}

void Answers::fileAsProposed() {
    expectFile(QStringLiteral("file as proposed"),
               [](QFileDialog* dialog) { QMetaObject::invokeMethod(dialog, "accept"); });
}

void Answers::cancelFile() {
    expectFile(QStringLiteral("cancelled file dialog"),
               [](QFileDialog* dialog) { QMetaObject::invokeMethod(dialog, "reject"); });
}

void Answers::custom(const QString& what, std::function<void(QWidget*)> act) {
    m_queue.push_back({what, [act](QWidget* modal) -> QString {
                           QPointer<QWidget> alive(modal);
                           QTimer::singleShot(0, modal, [alive, act] {
                               if (alive) act(alive);
                           });
                           return {};
                       }});
}

void Answers::look() {
    QWidget* modal = QApplication::activeModalWidget();
    // Progress closes by itself.
    if (!modal || !modal->isVisible() || qobject_cast<QProgressDialog*>(modal)) {
        m_answered = m_seen = nullptr;
        return;
    }
    // A file dialog comes up a second time where its question about overwriting was denied.
    if (modal == m_answered) return;
    // A dialog that is about to close shows for a moment when the question over it has gone.
    if (modal != m_seen) {
        m_seen = modal;
        return;
    }
    m_answered = modal;
    if (m_look) m_look(modal);
    if (m_queue.empty() && m_otherwise) {
        m_otherwise(modal);
        return;
    }
    if (m_queue.empty()) {
        unexpected(modal, QStringLiteral("nothing"));
        return;
    }
    const Expected expected = m_queue.front();
    m_queue.erase(m_queue.begin());
    const QString wrong = expected.act(modal);
    if (!wrong.isEmpty()) unexpected(modal, expected.what);
}

void Answers::unexpected(QWidget* modal, const QString& why) {
    const QString text = QStringLiteral("came up: %1\nexpected: %2").arg(describe(modal), why);
    QTest::qFail(qPrintable(text), __FILE__, __LINE__);
    QTimer::singleShot(0, modal, [modal] {
        if (auto* dialog = qobject_cast<QDialog*>(modal))
            dialog->reject();
        else
            modal->close();
    });
}

void Answers::verify() {
    for (const Expected& expected : m_queue)
        QTest::qFail(qPrintable(QStringLiteral("never came up: ") + expected.what), __FILE__,
                     __LINE__);
    m_queue.clear();
}
