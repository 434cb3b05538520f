// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Texts of any length leave every window as it is.
#include "platform/desktop/pop_up_list.h"
#include "platform/grid_view/sheet_view.h"
#include "platform/theme/theme.h"
#include "reports/frm_history_chart.h"
#include "support/every_window.h"
#include "support/registry.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMap>
#include <QPlainTextEdit>

namespace {

using Places = QMap<QString, QRect>;  // window and control; the place inside the window

// Not lists that open at the mouse and the bars of a chart, whose size is their content.
bool isControl(const QWidget* widget, const QWidget* window) {
    if (!widget->isVisible() || widget->objectName().isEmpty() ||
        widget->objectName().startsWith(QLatin1String("qt_")) ||
        qobject_cast<const PopUpList*>(widget) || dynamic_cast<const HistoryBar*>(widget))
        return false;
    // The inner parts of grids and lists are theirs.
    for (const QWidget* outer = widget->parentWidget(); outer && outer != window;
         outer = outer->parentWidget())
        if (qobject_cast<const QAbstractScrollArea*>(outer) ||
            qobject_cast<const QComboBox*>(outer))
            return false;
    return true;
}

void addPlaces(const QString& name, QWidget* window, Places& places) {
    places.insert(name, QRect(QPoint(), window->size()));
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        if (!isControl(widget, window)) continue;
        places.insert(name + QStringLiteral(": ") + widget->objectName(),
                      QRect(widget->mapTo(window, QPoint()), widget->size()));
    }
}

// Puts a text into every field of a window.
void fillFields(QWidget* window, const QString& text) {
    for (QComboBox* box : window->findChildren<QComboBox*>()) {
        const QSignalBlocker quiet(box);
        box->addItem(text);
        if (box->isEditable()) box->setEditText(text);
    }
    for (QLineEdit* line : window->findChildren<QLineEdit*>()) {
        const QSignalBlocker quiet(line);
        if (!line->isReadOnly()) line->setText(text);
    }
    for (QPlainTextEdit* field : window->findChildren<QPlainTextEdit*>()) {
        const QSignalBlocker quiet(field);
        field->setPlainText(text);
    }
    settle();
}

void fillDatabase(World& world, QString text) {
    text.replace(QLatin1Char('\''), QLatin1String("''"));
    world.sql(QStringLiteral(
                  "UPDATE songs SET artist = '%1', dakey = '%1', CCLI = '%1';"
                  "UPDATE songs SET title = '%1' || ID WHERE title <> 'Amazing Grace';"
                  "UPDATE played_on SET title = '%1';"
                  "UPDATE categories SET description = '%1';"
                  "INSERT INTO categories (name, description) VALUES ('%1', '%1');"
                  "UPDATE notes SET notes = '%1';"
                  "UPDATE special_music SET song_name = '%1';"
                  "UPDATE personell SET fName = '%1', lName = '%1', role = '%1', role2 = '%1', "
                  "role3 = '%1', address = '%1', city = '%1', state = '%1', zip = '%1', "
                  "phone = '%1', cell = '%1', email = '%1@example.org'")
                  .arg(text));
}

}  // namespace

class TestLongTexts : public QObject {
    Q_OBJECT

    // Where all controls of all windows are. Every field and record holds the text, if it is not
    // empty.
    static Places placesWith(const QString& text) {
        World world(WorldTree::Sample);
        if (!text.isEmpty()) fillDatabase(world, text);
        world.answers.custom("reminder", [](QWidget* box) {
            QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::Ok),
                              Qt::LeftButton);
        });
        world.start();
        world.main().resize(1280, 800);
        settle();
        Places places;
        lookAtEveryWindow(world, [&](const QString& name, QWidget* window) {
            if (!text.isEmpty()) fillFields(window, text);
            addPlaces(name, window, places);
        });
        return places;
    }

private Q_SLOTS:
    void initTestCase() { applyTheme(*qApp); }

    void controlsKeepTheirPlaces_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("many words") << QStringLiteral("Überlänge ").repeated(20);
        QTest::newRow("one word") << QString(200, QLatin1Char('W'));
    }

    void controlsKeepTheirPlaces() {
        QFETCH(QString, text);
        const Places usual = placesWith({});
        const Places filled = placesWith(text);
        QVERIFY(usual.size() > 200);
        QStringList moved;
        for (auto it = usual.begin(); it != usual.end(); ++it) {
            const QRect now = filled.value(it.key());
            if (now == it.value()) continue;
            QString fault;
            QDebug(&fault) << it.key() << it.value() << now;
            moved.append(fault);
        }
        for (const QString& fault : moved) qWarning("%s", qPrintable(fault));
        QCOMPARE(moved.size(), 0);
    }
};

LORVANITE_TEST(TestLongTexts)
#include "test_long_texts.moc"
