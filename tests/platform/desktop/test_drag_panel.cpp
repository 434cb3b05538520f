// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A panel that is dragged.
#include "platform/desktop/drag_panel.h"
#include "support/registry.h"

#include <QMouseEvent>
#include <QRubberBand>
#include <QSignalSpy>
#include <QTest>

namespace {

struct PanelInAWindow {
    QWidget window;
    DragPanel panel{&window};
    QSignalSpy drops{&panel, &DragPanel::dropped};

    PanelInAWindow() {
        window.resize(400, 300);
        panel.setGeometry(10, 10, 60, 40);
        window.show();
    }
};

}  // namespace

class TestDragPanel : public QObject {
    Q_OBJECT

    static void move(QWidget& panel, const QPoint& place, Qt::MouseButtons buttons) {
        QMouseEvent event(QEvent::MouseMove, place, panel.mapToGlobal(place), Qt::NoButton, buttons,
                          {});
        QCoreApplication::sendEvent(&panel, &event);
    }

private Q_SLOTS:
    void outlineFollowsTheMouseToTheDrop() {
        PanelInAWindow shown;
        auto& [window, panel, drops] = shown;
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const QPoint start(30, 20);
        QTest::mousePress(&panel, Qt::LeftButton, {}, start);
        move(panel, start + QPoint(2, 1), Qt::LeftButton);
        QVERIFY(!window.findChild<QRubberBand*>());
        for (const QPoint& by : {QPoint(60, 50), QPoint(150, 120)}) {
            move(panel, start + by, Qt::LeftButton);
            const auto* outline = window.findChild<QRubberBand*>();
            QVERIFY(outline && outline->isVisible());
            QCOMPARE(outline->size(), panel.size());
            const QPoint middle = panel.pos() + start + by;
            QVERIFY((outline->geometry().center() - middle).manhattanLength() <= 2);
        }
        QCOMPARE(drops.count(), 0);
        const QPoint end = start + QPoint(150, 120);
        QTest::mouseRelease(&panel, Qt::LeftButton, {}, end);
        QCOMPARE(drops.count(), 1);
        QCOMPARE(drops[0][0].toPoint(), panel.mapToGlobal(end));
        QVERIFY(!window.findChild<QRubberBand*>());
    }

    void clickAndTheRightButtonDropNothing() {
        PanelInAWindow shown;
        auto& [window, panel, drops] = shown;
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QTest::mouseClick(&panel, Qt::LeftButton, {}, QPoint(5, 5));
        QTest::mousePress(&panel, Qt::RightButton, {}, QPoint(5, 5));
        move(panel, QPoint(200, 200), Qt::RightButton);
        QVERIFY(!window.findChild<QRubberBand*>());
        QTest::mouseRelease(&panel, Qt::RightButton, {}, QPoint(200, 200));
        QCOMPARE(drops.count(), 0);
    }
};

LORVANITE_TEST(TestDragPanel)
#include "test_drag_panel.moc"
