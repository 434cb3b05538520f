// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The roster on paper.
#include "support/printed.h"
#include "team/rules/roster.h"
#include "team/schedule_test.h"

namespace {

const QStringList Heads{"First Name", "Last Name", "Address",      "City",   "State",
                        "Zip",        "Phone",     "Cell",         "e-Mail", "Role 1",
                        "Role 2",     "Role 3",    "Vacation Days"};

}  // namespace

class TestRoster : public ScheduleTest {
    Q_OBJECT

    // Adds a person with every field filled in.
    void addWhole(const QString& first, const QString& last) {
        world->sql(QStringLiteral(
                       "INSERT INTO personell (fName, lName, role, role2, role3, address, city, "
                       "state, zip, phone, cell, email, vDays, excludeScheduling) VALUES ('%1', "
                       "'%2', 'Piano', 'Flöte', 'Alto', '1 High St', 'Springdale', 'AR', '72764', "
                       "'555-0100', '555-0101', 'b@example.org', '12/25/26', '1')")
                       .arg(first, last));
    }

    QStringList printRoster(frmSchedule& w) {
        const PrintedFile file(world->path("printed.pdf"));
        click(w.cmdPrintRoster);
        m_pictures = pagePictures(file.path);
        return printedPages(file.path);
    }

    static QStringList rowOf(frmSchedule& w, int row) {
        QStringList texts;
        for (int col = 1; col <= w.fpTemp.MaxCols(); ++col) texts += w.fpTemp.GetText(col, row);
        return texts;
    }

    // The columns of pixels in which two pictures differ.
    struct Extent {
        int left;
        int right;
    };
    static Extent difference(const QImage& one, const QImage& other) {
        Extent extent{one.width(), -1};
        for (int y = 0; y < one.height(); ++y)
            for (int x = 0; x < one.width(); ++x)
                if (one.pixel(x, y) != other.pixel(x, y)) {
                    extent.left = std::min(extent.left, x);
                    extent.right = std::max(extent.right, x);
                }
        return extent;
    }

    QList<QImage> m_pictures;

private Q_SLOTS:
    // Deliberate: behaviour 114.
    void everyoneIsListedByLastNameOnALandscapePage() {
        addPerson({.first = "Zoë", .last = "Ångström", .role = "Drums"});
        addWhole("Bea", "Young");
        addPerson({.first = "Carl", .last = "Adams", .role = "Bass"});
        frmSchedule& w = open();
        const QStringList pages = printRoster(w);
        QCOMPARE(pages.size(), 1);
        QVERIFY(m_pictures[0].width() > m_pictures[0].height());
        qsizetype before = -1;
        for (int i = 0; i < w.cmbPersonell->count(); ++i) {
            const QString first = w.cmbPersonell->itemText(i).section(QLatin1Char(' '), 0, 0);
            const qsizetype place = pages[0].indexOf(first);
            QVERIFY2(place > before, qPrintable(first));
            before = place;
        }
        for (const QString& text : Heads) QVERIFY2(pages[0].contains(text), qPrintable(text));
        for (const QString& text :
             QStringList{"Young", "1 High St", "Springdale", "AR", "72764", "555-0100", "555-0101",
                         "b@example.org", "Piano", "Flöte", "Alto", "Ångström", "Page 1 Of 1"})
            QVERIFY2(pages[0].contains(text), qPrintable(text));
        // The vacation days are filled in by hand.
        QVERIFY(!pages[0].contains("12/25/26"));
    }

    void rosterRunsOneStatementPerPerson() {
        const int anna = addPerson({.first = "Anna", .last = "Berg", .role = "Piano"});
        const int bob = addPerson({.first = "Bob", .last = "Abel", .role = "Bass"});
        frmSchedule& w = open();
        world->statements.clear();
        printRoster(w);
        const QString query = QStringLiteral("SELECT * FROM personell WHERE ID = %1 [1]");
        QCOMPARE(world->statements, (QStringList{query.arg(bob), query.arg(anna)}));
    }

    void requiredFieldsAloneArePrintedWithBlanks() {
        addPerson({.first = "Anna", .last = "", .role = "Piano"});
        frmSchedule& w = open();
        const QStringList pages = printRoster(w);
        QStringList row;
        for (int col = 1; col <= RosterColumn::Last; ++col) row += QString();
        row[RosterColumn::FirstName - 1] = QStringLiteral("Anna");
        row[RosterColumn::Role1 - 1] = QStringLiteral("Piano");
        QCOMPARE(rowOf(w, 1), row);
        QVERIFY(pages[0].contains(QRegularExpression("Anna +Piano")));
    }

    void columnsHaveTheirHeadsAndWidths() {
        addTheLeast();
        frmSchedule& w = open();
        printRoster(w);
        QCOMPARE(rowOf(w, 0), Heads);
        const QList<double> widths{8, 8, 12, 10, 4, 8, 10, 10, 19, 10, 10, 10, 20};
        for (int col = 1; col <= RosterColumn::Last; ++col)
            QCOMPARE(w.fpTemp.ColWidth(col), widths[col - 1]);
        QVERIFY(w.fpTemp.AllowCellOverflow());
    }

    void availabilityWorksAfterTheRoster() {
        addTheLeast();
        addWhole("Bea", "Young");
        frmSchedule& w = makeSchedule("11/22/26", "1");
        printRoster(w);
        click(w.cmdRefresh);
        QCOMPARE(offersIn(dateRowOf(1)), QStringList{"Piano:Anna Berg"});
        QCOMPARE(w.fpTemp.MaxCols(), 13);
        // The roster works after the availability, too.
        QVERIFY(printRoster(w)[0].contains("b@example.org"));
        QCOMPARE(w.fpTemp.MaxRows(), 2);
    }

    void eachPageHasAllHeadsAndColumns() {
        for (int i = 0; i < 200; ++i) addWhole(QString("First%1").arg(i), "Last");
        frmSchedule& w = open();
        const QStringList pages = printRoster(w);
        QVERIFY(pages.size() > 3 && pages.size() < 20);
        for (int i = 0; i < pages.size(); ++i) {
            for (const QString& text : Heads) QVERIFY2(pages[i].contains(text), qPrintable(text));
            QVERIFY(
                pages[i].contains(QStringLiteral("Page %1 Of %2").arg(i + 1).arg(pages.size())));
        }
        const QString all = pages.join(QString());
        for (int i = 0; i < 200; ++i)
            QVERIFY(all.contains(QRegularExpression(QString("First%1\\b").arg(i))));
    }

    // Without a row there is no data to print, and no column of it.
    void emptyTeamPrintsAnEmptyPage() {
        frmSchedule& w = open();
        const QStringList pages = printRoster(w);
        QCOMPARE(pages.size(), 1);
        QCOMPARE(pages[0].simplified(), QStringLiteral("Page 1 Of 1"));
        QCOMPARE(w.fpTemp.MaxRows(), 0);
    }

    void missingPersonEndsTheProgram() {
        addTheLeast();
        addWhole("Bea", "Young");
        frmSchedule& w = open();
        world->sql("DELETE FROM personell WHERE fName = 'Anna'");
        world->answers.runTimeError(3021);
        QVERIFY(printRoster(w).isEmpty());
        QCOMPARE(world->endStatus, 1);
    }

    void rosterPrintsByItsSettings() {
        addTheLeast();
        frmSchedule& w = open();
        setWrongPrintSettings(w.fpTemp);
        w.fpTemp.PrintColHeaders(false);
        w.fpTemp.PrintGrid(false);
        w.fpTemp.PrintColor(true);
        w.fpTemp.PrintOrientation(PrintOrientations::Portrait);
        w.fpTemp.PrintScalingMethod(PrintScaling::AsItIs);
        w.fpTemp.PrintBestFitPagesWide(3);
        w.fpTemp.AllowCellOverflow(false);
        printRoster(w);
        compareCommonPrintSettings(w.fpTemp);
        QVERIFY(w.fpTemp.PrintColHeaders() && w.fpTemp.PrintGrid() && !w.fpTemp.PrintColor());
        QCOMPARE(w.fpTemp.PrintOrientation(), PrintOrientations::Landscape);
        QCOMPARE(w.fpTemp.PrintMarginTop(), 720);
        QCOMPARE(w.fpTemp.PrintMarginBottom(), 720);
        QCOMPARE(w.fpTemp.PrintScalingMethod(), PrintScaling::BestFit);
        QCOMPARE(w.fpTemp.PrintBestFitPagesWide(), 1);
        QVERIFY(w.fpTemp.AllowCellOverflow());
    }

    void longTextIsCutOffAtTheEdgeOfItsColumn() {
        addWhole("Bea", "Young");
        frmSchedule& w = open();
        printRoster(w);
        const QImage shortText = m_pictures[0];
        world->sql("UPDATE personell SET city = ''");
        printRoster(w);
        const Extent city = difference(shortText, m_pictures[0]);
        QVERIFY(city.left < city.right);
        world->sql("UPDATE personell SET city = 'Springdale', address = '" +
                   QString("Long ").repeated(40) + "'");
        const QString page = printRoster(w)[0];
        QVERIFY(page.contains("Springdale") && page.contains("Piano"));
        const Extent address = difference(shortText, m_pictures[0]);
        QVERIFY(address.left < address.right);
        QVERIFY2(address.right < city.left,
                 qPrintable(QStringLiteral("%1, %2").arg(address.right).arg(city.left)));
    }
};

LORVANITE_TEST(TestRoster)
#include "test_roster.moc"
