// A fresh world for each test: a program folder of its own, a day, answers, a statement log.
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
    // Makes a temporary program folder, as delivered or with the sample; today is Saturday,
    // 11/21/2026.
    explicit World(WorldTree tree = WorldTree::Delivered);

    // Ends everything and fails the test for answers that were not used.
    ~World();

    // Starts the program: the main window comes up.
    void start();

    // Closes the main window, as at the end of the program.
    void stop();

    // Ends the program and moves its folder elsewhere.
    void move();

    bool isRunning() const { return m_main != nullptr; }
    frmMDI& main() { return *m_main; }

    QString folder() const { return m_folder; }
    QString path(const QString& relative) const { return folder() + QLatin1Char('/') + relative; }

    // Runs statements on the database file beside the program, over a connection of their own.
    void sql(const QString& statements);

    // The rows of a query, the values of a row joined by "|".
    QStringList rows(const QString& query);

    // The statements that the program has run since the last clear, each with its lock type
    // behind it in brackets: "SELECT * FROM notes [1]".
    QStringList statements;

    // The status with which the process would have ended, or -1.
    int endStatus = -1;

    Answers answers;

private:
    QTemporaryDir m_dir;
    QString m_folder;
    std::unique_ptr<frmMDI> m_main;
};

// The base of tests that drive windows: `world` is made anew for each test function.
class WindowTest : public QObject {
    Q_OBJECT

protected:
    std::unique_ptr<World> world;

private Q_SLOTS:
    void init() { world = std::make_unique<World>(); }
    void cleanup() { world.reset(); }
};

// One turn of the event loop and what was deferred to it.
void settle();

// Clicks a button, a label, anything, in its middle.
void click(QWidget* widget, Qt::MouseButton button = Qt::LeftButton);

// Picks an item of a menu that is open, by a click on it. False where it is not there.
bool pickMenuItem(QMenu& menu, QAction& item);
