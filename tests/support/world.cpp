// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/world.h"

#include "core/data/database.h"
#include "core/data/dates.h"
#include "core/data/file_copy.h"
#include "core/data/paths.h"
#include "platform/desktop/desktop.h"
#include "trees.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <sqlite3.h>

namespace {

void makeSample(const QString& folder) {
    QProcess maker;
    maker.start(QStringLiteral(BUILD_TREE "/lorvanite_make_sample"),
                {QStringLiteral(SOURCE_TREE "/sample"), QStringLiteral(PROGRAM_TREE), folder,
                 QStringLiteral("2026-11-21")});
    if (!maker.waitForFinished(120000) || maker.exitCode() != 0)
        QTest::qFail(maker.readAllStandardError().constData(), __FILE__, __LINE__);
}

// A connection like that of another tool.
class SideDoor {
public:
    explicit SideDoor(const QString& file) {
        sqlite3_open_v2(file.toUtf8().constData(), &m_db, SQLITE_OPEN_READWRITE, nullptr);
        sqlite3_busy_timeout(m_db, 2000);
    }
    ~SideDoor() { sqlite3_close(m_db); }

    QStringList run(const QString& statements) {
        QStringList rows;
        char* message = nullptr;
        sqlite3_exec(m_db, statements.toUtf8().constData(), &SideDoor::gather, &rows, &message);
        if (message)
            QTest::qFail(qPrintable(statements + QStringLiteral(": ") + QString::fromUtf8(message)),
                         __FILE__, __LINE__);
        sqlite3_free(message);
        return rows;
    }

private:
    static int gather(void* rows, int count, char** values, char**) {
        QStringList row;
        for (int i = 0; i < count; ++i) row.append(QString::fromUtf8(values[i]));
        static_cast<QStringList*>(rows)->append(row.join(QLatin1Char('|')));
        return 0;
    }

    sqlite3* m_db = nullptr;
};

}  // namespace

World::World(WorldTree tree, const QString& folder_)
    : m_folder(folder_.isEmpty() ? m_dir.filePath(QStringLiteral("program")) : folder_) {
    if (QFileInfo::exists(m_folder)) qFatal("%s exists", qPrintable(m_folder));
    QDir().mkpath(m_folder);
    if (tree == WorldTree::Sample)
        makeSample(folder());
    else
        copyFolder(QStringLiteral(PROGRAM_TREE), folder(), FolderCopy::FillIn);
    setProgramFolder(folder());
    setToday(QDate(2026, 11, 21));
    setEndOfProcess([this](int status) { endStatus = status; });
    dbConn.onStatement([this](const QString& source, CursorType, LockType lock) {
        statements.append(source + QStringLiteral(" [%1]").arg(int(lock)));
    });
}

World::~World() {
    stop();
    answers.verify();
    setEndOfProcess({});
    dbConn.onStatement({});
    setToday({});
    setProgramFolder({});
    QDir(m_folder).removeRecursively();
}

void World::start() {
    m_main = std::make_unique<frmMDI>();
    m_main->show();
    settle();
}

void World::stop() {
    if (m_main) {
        m_main->close();
        settle();
    }
    m_main.reset();
    dbConn.Close();
    setMousePointer(MousePointer::Arrow);
}

void World::sql(const QString& statements_) {
    SideDoor(path(QStringLiteral("db1.mdb"))).run(statements_);
}

QStringList World::rows(const QString& query) {
    return SideDoor(path(QStringLiteral("db1.mdb"))).run(query);
}

void World::move() {
    stop();
    endStatus = -1;
    const QString place = m_dir.filePath(QStringLiteral("elsewhere"));
    if (!QDir().rename(m_folder, place)) QTest::qFail("not moved", __FILE__, __LINE__);
    m_folder = place;
    setProgramFolder(place);
}

void settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

void click(QWidget* widget, Qt::MouseButton button) {
    QTest::mouseClick(widget, button, {}, widget->rect().center());
    settle();
}

bool pickMenuItem(QMenu& menu, QAction& item) {
    if (!menu.isVisible()) return false;
    const QRect place = menu.actionGeometry(&item);
    if (!place.isValid()) return false;
    QTest::mouseClick(&menu, Qt::LeftButton, {}, place.center());
    settle();
    return !menu.isVisible();
}
