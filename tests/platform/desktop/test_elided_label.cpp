// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Labels of one line.
#include "platform/desktop/elided_label.h"
#include "support/registry.h"

#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

class TestElidedLabel : public QObject {
    Q_OBJECT

    static QString toolTipOf(ElidedLabel& label) {
        QToolTip::hideText();
        const QPoint place = label.rect().center();
        QHelpEvent help(QEvent::ToolTip, place, label.mapToGlobal(place));
        QCoreApplication::sendEvent(&label, &help);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    }

private Q_SLOTS:
    void severalLinesAreShownAsOne() {
        ElidedLabel label;
        label.resize(600, 30);
        label.setText(QStringLiteral("Silent\nNight,\r\tHoly Night"));
        label.show();
        QVERIFY(QTest::qWaitForWindowExposed(&label));
        QCOMPARE(label.shownText(), QStringLiteral("Silent Night,  Holy Night"));
        QCOMPARE(toolTipOf(label), QString());
    }

    void longTextIsCutAndWholeInTheToolTip() {
        ElidedLabel label;
        label.resize(80, 30);
        const QString text = QStringLiteral("/home/ann/music/sheetmusic/Silent Night.stp");
        label.setText(text);
        label.show();
        QVERIFY(QTest::qWaitForWindowExposed(&label));
        QVERIFY(label.shownText().endsWith(QChar(0x2026)));
        QVERIFY2(toolTipOf(label).contains(text), qPrintable(toolTipOf(label)));
        label.setElideMode(Qt::ElideLeft);
        QVERIFY(label.shownText().startsWith(QChar(0x2026)));
        QVERIFY(label.shownText().endsWith(QStringLiteral(".stp")));
    }
};

LORVANITE_TEST(TestElidedLabel)
#include "test_elided_label.moc"
