// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Printing, exporting and mailing a set.
#include "mail/frm_email.h"
#include "sets/set_list_test.h"

#include <QDir>
#include <QFile>

class TestSetOutput : public SetListTest {
    Q_OBJECT

    // Exports to a file in the folder "saved sets". Returns what is in it.
    QByteArray exported(frmSetList& w, const QString& name) {
        const QString file = QStringLiteral("saved sets/") + name;
        world->answers.file(world->path(file));
        click(w.cmdExportText);
        return bytesOf(file);
    }

    QString mailed() {
        frmEmail& mail = frmEmail::instance();
        const QString body = mail.txtMsg->toPlainText();
        // The staging file is mailed without its line ends.
        const QString staged = QString::fromUtf8(bytesOf("config/email.html"));
        if (QString(staged).remove(QLatin1Char('\n')) != body)
            QTest::qFail("the body is not what was staged", __FILE__, __LINE__);
        return body;
    }

    static bool hasColour(const QImage& picture, QRgb colour) {
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (picture.pixel(x, y) == colour) return true;
        return false;
    }

private Q_SLOTS:
    void printShowsTheCurrentSet() {
        makeDefaultDesign({"Call to worship", "Offering"});
        frmSetList& w = openWith("11/22/26", {"Alpha", "Beta"});
        setUpSetWidths(*w.fpSet);
        paint(*w.fpSet, 3);
        w.fpSongList1->SetActiveCell(PickerColumn::Title, 1);
        w.fpSet->SetActiveCell(SetColumn::Title, 3);
        const QString pdf = printedBy(w.Command3);
        const QStringList pages = printedPages(pdf);
        QCOMPARE(pages.size(), 1);
        QCOMPARE(pages[0].simplified(),
                 QStringLiteral("Set List For: 11/22/26 Call to worship Alpha Offering Beta"));
        QVERIFY(hasColour(pagePictures(pdf)[0], qRgb(180, 255, 180)));
        QVERIFY(world->statements.isEmpty());
        QCOMPARE(w.fpSet->ActiveRow(), 0);
        QCOMPARE(w.fpSongList1->ActiveRow(), 0);
    }

    void printUsesTheSetPrintSettings() {
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        spoilPrintSettings(*w.fpSet);
        printedBy(w.Command3);
        seeSetPrintSettings(*w.fpSet);
    }

    void setWithoutADateIsPrinted() {
        frmSetList& w = openWith("", {"Alpha"});
        const QStringList pages = printedPages(printedBy(w.Command3));
        QCOMPARE(pages.size(), 1);
        QVERIFY(pages[0].contains(QStringLiteral("Alpha")));
    }

    void exportWritesOneLinePerRow() {
        makeDefaultDesign({"Call to worship", "Offering"});
        frmSetList& w = openWith("10/05/03", {"Title of a song"});
        paint(*w.fpSet, 2);
        w.fpSet->SetActiveCell(SetColumn::Title, 3);
        world->answers.file(world->path("saved sets/Set For 10_05_03"));
        click(w.cmdExportText);
        const auto& dialog = world->answers.fileDialogs().back();
        QCOMPARE(dialog.proposed, QStringLiteral("Set For 10_05_03"));
        QCOMPARE(dialog.filters, QStringList{"TXT Files (*.txt)"});
        QVERIFY(dialog.saves);
        QCOMPARE(bytesOf("saved sets/Set For 10_05_03.txt"),
                 QByteArray("Set List For:   10/05/03\r\n"
                            "Call to worship   Title of a song\r\n"
                            "Offering   \r\n"));
        QCOMPARE(w.fpSet->ActiveRow(), 0);
        QVERIFY(world->statements.isEmpty());
    }

    void emptyRowBetweenTwoFilledOnesGivesThreeBlanks() {
        frmSetList& w = openWith("10/05/03", {"Alpha", "", "Omega"});
        QCOMPARE(exported(w, "a.txt"), QByteArray("Set List For:   10/05/03\r\n   Alpha\r\n"
                                                  "   \r\n   Omega\r\n"));
    }

    void emptyGridWithADateExportsTheDateRowAlone() {
        frmSetList& w = open();
        click(w.Command9);
        fill(w, "10/05/03", {});
        QCOMPARE(exported(w, "a.txt"), QByteArray("   10/05/03\r\n"));
    }

    void exportWithoutADateIsRefused() {
        frmSetList& w = openWith("", {"Alpha"});
        world->answers.box("Please select a date for this set.");
        click(w.cmdExportText);
        QVERIFY(world->answers.fileDialogs().empty());
    }

    void setDatedWithTenCharactersIsExportedWithoutAProposedName() {
        // In this design the cell of the date is not a date cell.
        SheetGrid design;
        design.MaxCols(SetColumn::Title);
        design.MaxRows(25);
        QVERIFY(design.SaveToFile(makeDefaultDesign({}), false));
        frmSetList& w = openWith("11/22/2026", {"Alpha"});
        QCOMPARE(exported(w, "long.txt"), QByteArray("   11/22/2026\r\n   Alpha\r\n"));
        QCOMPARE(world->answers.fileDialogs().back().proposed, QString());
        typeInCell(w.fpSet, SetColumn::Title, SetRow::Date, "1/05/03");
        exported(w, "short.txt");
        QCOMPARE(world->answers.fileDialogs().back().proposed, QStringLiteral("Set For 1_05_03"));
    }

    void emptyRowsAtTheEndAreInNoOutput() {
        makeDefaultDesign({"Opening"});
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        w.fpSet->MaxRows(400);
        paint(*w.fpSet, 400);
        QCOMPARE(exported(w, "a.txt").count('\n'), 2);
        QCOMPARE(printedPages(printedBy(w.Command3)).size(), 1);
        click(w.cmdEmailSet);
        QCOMPARE(mailed().count(QStringLiteral("<TR")), 2);
    }

    void existingFileIsReplacedAfterConfirmation() {
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        QFile old(world->path("saved sets/a.txt"));
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write(QByteArray(5000, 'x'));
        old.close();
        world->answers.file(old.fileName());
        world->answers.custom("overwrite question", [](QWidget* box) {
            QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::Yes),
                              Qt::LeftButton);
        });
        click(w.cmdExportText);
        QCOMPARE(bytesOf("saved sets/a.txt"),
                 QByteArray("Set List For:   11/22/26\r\n   Alpha\r\n"));
    }

    void cancelledExportWritesNothing() {
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        world->answers.cancelFile();
        click(w.cmdExportText);
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 2), QStringLiteral("Alpha"));
        QVERIFY(QDir(world->path("saved sets")).entryList({"*.txt"}).isEmpty());
    }

    // Deliberate: behaviour 71.
    void exportThatCannotBeWrittenFailsSilently() {
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        world->answers.file(QStringLiteral("/proc/set.txt"));
        click(w.cmdExportText);
        QVERIFY(!QFile::exists(QStringLiteral("/proc/set.txt")));
        QCOMPARE(world->endStatus, -1);
        QVERIFY(w.isVisible());
    }

    void exportStartsInTheFolderOfTheLastDialog() {
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        world->answers.cancelFile();
        click(w.Command13);
        world->answers.cancelFile();
        click(w.cmdExportText);
        QCOMPARE(world->answers.fileDialogs().back().folder, world->path("saved sets"));
    }

    void textsOfEveryScriptAreExportedAndMailed() {
        const QString title = QString::fromUtf8("주 하나님 — Ευλόγει <b>&");
        frmSetList& w = openWith("11/22/26", {title});
        QCOMPARE(exported(w, "a.txt"),
                 QString("Set List For:   11/22/26\r\n   %1\r\n").arg(title).toUtf8());
        click(w.cmdEmailSet);
        QVERIFY(mailed().contains(title.toHtmlEscaped()));
    }

    void mailContainsBothColumnsInRowOrder() {
        makeDefaultDesign({"Opening", "Offering"});
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        paint(*w.fpSet, 2);
        click(w.cmdEmailSet);
        QVERIFY(frmEmail::instance().isVisible());
        QVERIFY(frmEmail::instance().cmdAddNote->isVisible());
        const QString html = mailed();
        QCOMPARE(html.count(QStringLiteral("<TABLE")), 1);
        QCOMPARE(html.count(QStringLiteral("<TR")), 3);
        QVERIFY(html.contains(QStringLiteral("#b4ffb4")));
        qsizetype last = html.indexOf(QStringLiteral("<TABLE"));
        for (const char* text : {"Set List For:", "11/22/26", "Opening", "Alpha", "Offering"}) {
            const qsizetype at = html.indexOf(QLatin1String(text), last);
            QVERIFY2(at > last, text);
            last = at;
        }
        QVERIFY(world->statements.filter(QStringLiteral("fileLoco")).isEmpty());
    }

    void setWithoutADateIsMailed() {
        frmSetList& w = openWith("", {});
        click(w.cmdEmailSet);
        QVERIFY(frmEmail::instance().isVisible());
        const QString html = mailed();
        QCOMPARE(html.count(QStringLiteral("<TR")), 1);
        QVERIFY(html.contains(QStringLiteral(">Set List For:</TD><TD")));
        QVERIFY(html.contains(QStringLiteral(">&nbsp;</TD></TR>")));
    }

    void secondMailReplacesTheFirst() {
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        click(w.cmdEmailSet);
        QVERIFY(mailed().contains(QStringLiteral("Alpha")));
        w.fpSet->SetText(SetColumn::Title, 2, QStringLiteral("Omega"));
        click(w.cmdEmailSet);
        QVERIFY(mailed().contains(QStringLiteral("Omega")));
        QVERIFY(!mailed().contains(QStringLiteral("Alpha")));
    }

    void mailThatCannotBeStagedEndsTheCommand() {
        frmSetList& w = openWith("11/22/26", {"Alpha"});
        QVERIFY(QDir().rename(world->path("config"), world->path("gone")));
        world->answers.runTimeError(RunTimeError::PathAccess);
        click(w.cmdEmailSet);
        QVERIFY(!frmEmail::isLoaded());
        QCOMPARE(world->endStatus, -1);
        QCOMPARE(w.fpSet->GetText(SetColumn::Title, 2), QStringLiteral("Alpha"));
    }

    void longSetIsPrintedCompletelyOnSeveralPages() {
        frmSetList& w = openWith("11/22/26", {});
        w.fpSet->MaxRows(300);
        for (int row = 2; row <= 300; ++row)
            w.fpSet->SetText(SetColumn::Title, row, QStringLiteral("Song %1").arg(row));
        const QStringList pages = printedPages(printedBy(w.Command3));
        QVERIFY(pages.size() > 3);
        const QString text = pages.join(QString()).simplified() + QLatin1Char(' ');
        for (int row = 2; row <= 300; ++row)
            QCOMPARE(text.count(QStringLiteral("Song %1 ").arg(row)), 1);
    }

    void buttonsAreReachedByTheKeyboardInReadingOrder() {
        frmSetList& w = open();
        w.Command3->setFocus();
        for (QPushButton* button : {w.cmdExportText, w.cmdEmailSet, w.cmdCollectSongs}) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), button);
        }
        QCOMPARE(w.cmdCollectSongs->toolTip(),
                 QStringLiteral("Email or print songs that are highlighted in the list."));
    }
};

LORVANITE_TEST(TestSetOutput)
#include "test_set_output.moc"
