// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The environment of a test: a program folder, the day, answers and a log of statements.
#pragma once

#include "core/shell/frm_mdi.h"
#include "support/answers.h"

#include <QDate>
#include <QObject>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

enum class WorldTree { Delivered, Sample };

class World {
public:
    // Creates a temporary program folder, as delivered or with the sample, or one of this path,
    // which must not exist. Today is Saturday, 11/21/2026.
    explicit World(WorldTree tree = WorldTree::Delivered, const QString& folder = QString());

    // Ends the program and fails the test for answers that were not used.
    ~World();

    // Starts the program and shows the main window.
    void start();

    // Ends the program by closing the main window.
    void stop();

    // Ends the program and moves its folder to another place.
    void move();

    bool isRunning() const { return m_main != nullptr; }
    frmMDI& main() { return *m_main; }

    QString folder() const { return m_folder; }
    QString path(const QString& relative) const { return folder() + QLatin1Char('/') + relative; }

    // Runs statements on the database file over a separate connection.
    void sql(const QString& statements);

    // The rows of a query, with "|" between the values of a row.
    QStringList rows(const QString& query);

    // The statements that the program has run, each with its lock type in brackets: "SELECT * FROM
    // notes [1]". A test may clear the list.
    QStringList statements;

    // The status with which the process would have ended; -1 if it would not.
    int endStatus = -1;

    Answers answers;

private:
    QTemporaryDir m_dir;
    QString m_folder;
    std::unique_ptr<frmMDI> m_main;
};

// The base of tests of windows. Each test function has another `world`.
class WindowTest : public QObject {
    Q_OBJECT

protected:
    std::unique_ptr<World> world;

private Q_SLOTS:
    void init() { world = std::make_unique<World>(); }
    void cleanup() { world.reset(); }
};

// Processes pending events and deferred deletions.
void settle();

// Clicks the middle of a widget.
void click(QWidget* widget, Qt::MouseButton button = Qt::LeftButton);

// Clicks an item of an open menu. Returns false if the item is not there.
bool pickMenuItem(QMenu& menu, QAction& item);
