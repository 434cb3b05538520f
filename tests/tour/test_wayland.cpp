// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// All windows on Wayland, with a real keyboard and mouse: packaging/test_wayland runs a compositor
// in an X server, and xdotool moves its devices.
#include "core/shell/frm_splash.h"
#include "exchange/frm_exchange.h"
#include "maintenance/frm_notes.h"
#include "sets/frm_set_list.h"
#include "support/every_window.h"
#include "support/grid_hands.h"
#include "support/registry.h"
#include "support/world.h"

#include <QClipboard>
#include <QDeadlineTimer>
#include <QDrag>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QProcess>
#include <QScreen>
#include <QTabBar>
#include <QWindow>

namespace {

constexpr int Patience = 60000;  // milliseconds, on a busy machine

// Moves the devices of the X server.
void xdo(const QStringList& words) {
    QProcess tool;
    tool.start(QStringLiteral("xdotool"), words);
    QVERIFY(tool.waitForFinished(Patience));
    QCOMPARE(tool.exitCode(), 0);
}

// A file manager: pressing the mouse starts dragging files.
class FileManager : public QWidget {
public:
    FileManager(QWidget* parent, const QStringList& paths) : QWidget(parent), m_paths(paths) {
        setGeometry(0, 0, 60, 60);
        setAutoFillBackground(true);
        raise();
        show();
    }

    bool drags = false;

protected:
    void mousePressEvent(QMouseEvent*) override {
        auto* data = new QMimeData;
        QList<QUrl> urls;
        for (const QString& path : m_paths) urls += QUrl::fromLocalFile(path);
        data->setUrls(urls);
        auto* drag = new QDrag(this);
        drag->setMimeData(data);
        drags = true;
        drag->exec(Qt::CopyAction);
        drags = false;
    }

private:
    const QStringList m_paths;
};

// Whether a widget has seen a drag over it.
class DragWatch : public QObject {
public:
    explicit DragWatch(QWidget* widget) : QObject(widget) { widget->installEventFilter(this); }
    bool over = false;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        over = over || event->type() == QEvent::DragMove;
        return false;
    }
};

}  // namespace

class TestWayland : public QObject {
    Q_OBJECT

    std::unique_ptr<World> world;
    QPoint m_origin;  // of the program's global coordinates, on the X screen

    // Puts the mouse over the middle of a widget.
    void moveTo(QWidget* widget) {
        const QPoint place = m_origin + widget->mapToGlobal(widget->rect().center());
        xdo({QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y())});
    }

    void clickReally(QWidget* widget) {
        moveTo(widget);
        xdo({QStringLiteral("click"), QStringLiteral("1")});
    }

    void press(const char* key) { xdo({QStringLiteral("key"), QLatin1String(key)}); }

    // Wayland does not report to a window where it is: the mouse does. A window that is not up yet
    // misses the mouse, so it is moved until it is seen.
    void findOrigin() {
        for (const QPoint place : {QPoint(500, 400), QPoint(700, 600)}) {
            const QPoint before = QCursor::pos();
            const auto isSeen = [&] { return QCursor::pos() != before; };
            const QDeadlineTimer deadline(Patience);
            for (int step = 0; !isSeen() && !deadline.hasExpired(); ++step) {
                const QPoint to = place + QPoint(step % 2, 0);
                xdo({QStringLiteral("mousemove"), QString::number(to.x()),
                     QString::number(to.y())});
                if (QTest::qWaitFor(isSeen, 500)) m_origin = to - QCursor::pos();
            }
            QVERIFY(isSeen());
        }
    }

private Q_SLOTS:
    void init() {
        QVERIFY2(QGuiApplication::platformName().startsWith(QLatin1String("wayland")),
                 qPrintable(QGuiApplication::platformName()));
        world = std::make_unique<World>(WorldTree::Sample);
        world->answers.custom(QStringLiteral("reminder"), [](QWidget* box) { box->close(); });
        world->start();
        world->main().showMaximized();
        QTRY_VERIFY_WITH_TIMEOUT(world->main().isActiveWindow(), Patience);
        QTRY_VERIFY_WITH_TIMEOUT(!world->main().splash, Patience);
    }
    void cleanup() { world.reset(); }

    void windowsFitTheScreen() {
        const QSize screen = world->main().screen()->availableSize();
        int seen = 0;
        lookAtEveryWindow(*world, [&](const QString& name, QWidget* window) {
            ++seen;
            QVERIFY2(window->isVisible(), qPrintable(name));
            QWidget* top = window->window();
            QVERIFY2(top->width() <= screen.width() && top->height() <= screen.height(),
                     qPrintable(name));
            // Module windows are inside the main window, with their whole title.
            auto* frame = qobject_cast<QMdiSubWindow*>(window->parentWidget());
            if (!frame) return;
            const QRect area = world->main().mdiArea->viewport()->rect();
            QVERIFY2(area.contains(frame->geometry().topLeft()) &&
                         area.contains(frame->geometry().topRight()),
                     qPrintable(name));
        });
        QVERIFY(seen > 25);
    }

    void dialogsAreAboveTheMainWindow() {
        QWindow* main = world->main().windowHandle();
        int seen = 0;
        world->answers.beforeAnswer([&](QWidget* dialog) {
            ++seen;
            QVERIFY(dialog->windowHandle());
            QCOMPARE(dialog->windowHandle()->transientParent(), main);
            QTRY_VERIFY_WITH_TIMEOUT(dialog->isActiveWindow(), Patience);
        });
        click(world->main().cmdSetList);
        frmSetList& w = frmSetList::instance();
        world->answers.box(QStringLiteral("Please select a date for this set."));
        click(w.cmdSaveSetList);
        world->answers.cancelFile();
        click(w.Command13);
        QCOMPARE(seen, 2);
        QTRY_VERIFY_WITH_TIMEOUT(world->main().isActiveWindow(), Patience);
    }

    void cellsAreCopiedFromWindowToWindow() {
        findOrigin();
        click(world->main().cmdSetList);
        frmSetList& set = frmSetList::instance();
        typeInCell(set.fpSet, 2, 2, QStringLiteral("Größe"));
        set.fpSet->SetActiveCell(2, 2);
        press("ctrl+c");
        QTRY_COMPARE_WITH_TIMEOUT(QGuiApplication::clipboard()->text(), QStringLiteral("Größe"),
                                  Patience);
        click(world->main().Command1);
        frmNotes& notes = frmNotes::instance();
        clickReally(notes.txtNote);
        QTRY_VERIFY_WITH_TIMEOUT(notes.txtNote->hasFocus(), Patience);
        press("ctrl+v");
        QTRY_COMPARE_WITH_TIMEOUT(notes.txtNote->toPlainText(), QStringLiteral("Größe"), Patience);
        notes.Unload();
        set.fpSet->activateWindow();
        set.fpSet->setFocus();
        set.fpSet->SetActiveCell(2, 4);
        press("ctrl+v");
        QTRY_COMPARE_WITH_TIMEOUT(set.fpSet->GetText(2, 4), QStringLiteral("Größe"), Patience);
    }

    void filesAreDroppedOnTheExchangeWindow() {
        findOrigin();
        const QString file = world->path(QStringLiteral("songs of Zoë.csv"));
        QFile songs(file);
        QVERIFY(songs.open(QIODevice::WriteOnly));
        songs.write("Title,Key\nDropped,G\n");
        songs.close();
        world->main().mnuExchange.trigger();
        settle();
        BringInPage* page = frmExchange::instance().pageBringIn;
        FileManager manager(&world->main(), {file});
        const DragWatch watch(page);
        // The drag runs a nested event loop, in which the mouse goes on.
        QTimer hand;
        bool moved = false;
        hand.callOnTimeout([&] {
            if (watch.over) {
                hand.stop();
                xdo({QStringLiteral("mouseup"), QStringLiteral("1")});
            } else if (manager.drags) {
                // Each time a little farther, as a hand does.
                moveTo(moved ? static_cast<QWidget*>(page) : page->window());
                moved = !moved;
            }
        });
        hand.start(50);
        moveTo(&manager);
        xdo({QStringLiteral("mousedown"), QStringLiteral("1")});
        QTRY_COMPARE_WITH_TIMEOUT(columnOf(page->fpPreview, 2),
                                  QStringList{QStringLiteral("Dropped")}, Patience);
    }
};

LORVANITE_TEST(TestWayland)
#include "test_wayland.moc"
