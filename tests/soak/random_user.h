// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A user without a plan.
#pragma once

#include "keeping/unsaved_store.h"
#include "soak/chance.h"
#include "support/world.h"

#include <QByteArray>
#include <QPointer>

#include <vector>

class QMdiSubWindow;
class SheetView;

// Does one command after the other with whatever is on the screen, and answers whatever comes up.
class RandomUser {
public:
    // `deafServer`: a host and port that take a connection and never say a word.
    RandomUser(World& world, quint64 seed, const QString& deafServer);

    // Does the n-th command. Where the program has ended by it, it is started again.
    void doCommand(int n);

    // How often the program has ended.
    int ends = 0;

    // What was not offered after a restart although it was on view and not saved; empty if all was.
    QString lost;

    // The run-time errors that were told, and how often each.
    QMap<QString, int> errorsTold;

private:
    struct Unsaved {
        UnsavedKind kind;
        QByteArray content;
    };
    std::vector<Unsaved> unsavedWork();
    void expectOffered(const std::vector<Unsaved>& works);
    void restart();
    void act();
    void actInPopup(QWidget* popup);
    void actMeanwhile();
    void openModule();
    void clickSomething();
    void clickGrid();
    void typeSomewhere();
    void pickFromList();
    void useKeys();
    void useMenuBar();
    void handleWindow();
    void drag();
    void changeLook();
    void changePrinter();
    void leave();

    void answer(QWidget* modal);
    void answerFileDialog(QWidget* modal);

    QWidget* someWindow();
    template <class T>
    QList<T*> shown(QWidget* in);
    void clickAt(QWidget* widget, const QPoint& place);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void typeText(const QString& text);
    void keepMailAtHome();
    QStringList mailServers() const;

    World& m_world;
    Chance m_chance;
    Chance m_answers;  // what comes up does not change what a command draws
    QString m_deafServer;
    QPointer<QWidget> m_popup;  // open when looked last
    int m_command = 0;
    int m_answered = 0;
    bool m_dark = false;
};
