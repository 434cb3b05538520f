// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Categories: the panel that defines them, and the list that gives one to a song.
#include "catalogue/song_admin_hands.h"
#include "support/registry.h"

#include <QSignalSpy>

namespace {

const QString CategoriesStatement = QStringLiteral("Select * from categories [1]");

QStringList cascade(const QString& name, const QString& oldName) {
    QStringList statements;
    for (int i = 1; i <= 5; ++i)
        statements.append(QStringLiteral("UPDATE songs SET cat%1 = '%2' WHERE cat%1 = '%3' [4]")
                              .arg(QString::number(i), name, oldName));
    return statements;
}

}  // namespace

class TestCategories : public SongAdminTest {
    Q_OBJECT

    // Opens the window and the panel, and clears the statement log.
    frmSongAdmin& openPanel() {
        frmSongAdmin& w = open();
        click(w.cmdDefineCat);
        world->statements.clear();
        return w;
    }

    void pick(const QString& category) {
        const int row = int(columnOf(window().fpCat, CategoryColumn::Name).indexOf(category)) + 1;
        QVERIFY(row > 0);
        clickCell(window().fpCat, CategoryColumn::Name, row);
    }

    void store(const QString& name, const QString& description = {}) {
        window().txtName->setText(name);
        window().txtDesc->setText(description);
        click(window().cmdAddCat);
    }

    // Gives a category to a song with the list that a right click shows.
    void give(const QString& category, int songRow) {
        frmSongAdmin& w = window();
        clickCell(w.fpSongList2, SongListColumn::Title, songRow, Qt::RightButton);
        QVERIFY(w.txtCats->isVisible());
        const auto found = w.txtCats->findItems(category, Qt::MatchExactly);
        QCOMPARE(found.size(), 1);
        QTest::mouseClick(w.txtCats->viewport(), Qt::LeftButton, {},
                          w.txtCats->visualItemRect(found.first()).center());
        settle();
    }

private Q_SLOTS:
    void enterStoresACategoryAndTheNextOneCanBeTyped() {
        frmSongAdmin& w = openPanel();
        const auto type = [](const QString& text) {
            QTest::keyClicks(QApplication::focusWidget(), text);
        };
        for (const char* name : {"Praise", "Advent"}) {
            type(name);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            type("described");
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            settle();
            QVERIFY(w.txtName->hasFocus());
        }
        QCOMPARE(world->rows("SELECT name, description FROM categories ORDER BY ID"),
                 (QStringList{"Praise|described", "Advent|described"}));
        click(w.Command1);
        QVERIFY(w.txtName->hasFocus());
    }

    void escapeClosesThePanelButFirstTheSearchInIt() {
        frmSongAdmin& w = openPanel();
        w.fpCat->setFocus();
        QTest::keyClick(w.fpCat, Qt::Key_F, Qt::ControlModifier);
        QVERIFY(QApplication::focusWidget() != w.fpCat);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QVERIFY(w.frmCat->isVisible());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QVERIFY(!w.frmCat->isVisible());
        QVERIFY(w.songPane->isVisible());
    }

    void buttonOpensAndClosesThePanel() {
        world->sql(
            "INSERT INTO categories (ID, name, description) VALUES (3, 'Praise', 'loud'), "
            "(5, 'Lent', NULL)");
        frmSongAdmin& w = open();
        QVERIFY(w.frmCat->isHidden());
        click(w.cmdDefineCat);
        QVERIFY(w.frmCat->isVisible());
        QVERIFY(w.fpCat->isColHidden(1, CategoryColumn::ID));
        QCOMPARE(w.fpCat->GetText(CategoryColumn::Name, 0), QStringLiteral("Name"));
        QCOMPARE(w.fpCat->GetText(CategoryColumn::Description, 0), QStringLiteral("Description"));
        QCOMPARE(columnOf(w.fpCat, CategoryColumn::ID), (QStringList{"3", "5"}));
        QCOMPARE(columnOf(w.fpCat, CategoryColumn::Name), (QStringList{"Praise", "Lent"}));
        QCOMPARE(columnOf(w.fpCat, CategoryColumn::Description), (QStringList{"loud", ""}));
        click(w.cmdDefineCat);
        QVERIFY(w.frmCat->isHidden());
        QCOMPARE(world->statements, (QStringList{CategoriesStatement, CategoriesStatement}));
    }

    void clickOnACategoryFillsTheBoxes() {
        world->sql("INSERT INTO categories (ID, name, description) VALUES (3, 'Praise', 'loud')");
        frmSongAdmin& w = openPanel();
        clickCell(w.fpCat, CategoryColumn::Description, 1);
        QCOMPARE(w.txtName->text(), QStringLiteral("Praise"));
        QCOMPARE(w.txtDesc->text(), QStringLiteral("loud"));
        QCOMPARE(w.lblID->text(), QStringLiteral("3"));
        QCOMPARE(w.lblOldName->text(), QStringLiteral("Praise"));
        clickCell(w.fpCat, CategoryColumn::Name, 0);
        QCOMPARE(w.txtName->text(), QStringLiteral("Praise"));
    }

    void newCategoryIsAdded() {
        frmSongAdmin& w = openPanel();
        store("Praise", "loud");
        QCOMPARE(world->statements,
                 (QStringList{"INSERT INTO categories (name, description) VALUES "
                              "('Praise', 'loud'); [3]",
                              CategoriesStatement}));
        QCOMPARE(world->rows("SELECT name, description FROM categories"),
                 QStringList{"Praise|loud"});
        QCOMPARE(columnOf(w.fpCat, CategoryColumn::Name), QStringList{"Praise"});
        QCOMPARE(w.txtName->text() + w.txtDesc->text() + w.lblID->text(), QString());
    }

    void categoryWithoutADescriptionCanBeAdded() {
        openPanel();
        store("Praise");
        QCOMPARE(world->rows("SELECT name, description, typeof(description) FROM categories"),
                 QStringList{"Praise||text"});
    }

    void renamingChangesEverySongWithTheOldNameAndNoOther() {
        world->sql(
            "INSERT INTO categories (ID, name) VALUES (1, 'Praise'), (2, 'Lent');"
            "INSERT INTO songs (title, cat1, cat2, cat3, cat4, cat5) VALUES "
            "('1', 'Praise', 'Lent', '', '', ''), ('2', 'Lent', 'praise', '', '', ''), "
            "('3', '', '', 'PRAISE', '', ''), ('4', '', '', '', 'Praise', ''), "
            "('5', '', '', '', '', 'Praise'), ('6', 'Praise and more', 'Lent', '', '', NULL), "
            "('Praise', 'Praise', 'Praise', '', '', '')");
        frmSongAdmin& w = openPanel();
        pick("Praise");
        w.txtName->setText("Joy");
        click(w.cmdAddCat);
        QCOMPARE(world->statements,
                 (QStringList{"UPDATE categories SET name = 'Joy', description = '' WHERE ID = 1 "
                              "[3]"} +
                  cascade("Joy", "Praise") + QStringList{CategoriesStatement}));
        QCOMPARE(world->rows("SELECT title, cat1, cat2, cat3, cat4, cat5 FROM songs"),
                 (QStringList{"1|Joy|Lent|||", "2|Lent|Joy|||", "3|||Joy||", "4||||Joy|",
                              "5|||||Joy", "6|Praise and more|Lent|||", "Praise|Joy|Joy|||"}));
        QCOMPARE(columnOf(w.fpCat, CategoryColumn::Name), (QStringList{"Joy", "Lent"}));
        QCOMPARE(w.lblID->text(), QString());
    }

    // Deliberate: behaviour 40.
    void changedDescriptionAloneUpdatesTheSongsToo() {
        world->sql(
            "INSERT INTO categories (ID, name) VALUES (1, 'Praise');"
            "INSERT INTO songs (title, cat1) VALUES ('1', 'Praise')");
        frmSongAdmin& w = openPanel();
        pick("Praise");
        w.txtDesc->setText("loud");
        click(w.cmdAddCat);
        QCOMPARE(world->statements.mid(1, 5), cascade("Praise", "Praise"));
        QCOMPARE(world->rows("SELECT cat1 FROM songs"), QStringList{"Praise"});
        QCOMPARE(columnOf(w.fpCat, CategoryColumn::Description), QStringList{"loud"});
    }

    void apostrophesAreRemovedFromCategorySongsAndBox() {
        world->sql(
            "INSERT INTO categories (ID, name) VALUES (1, 'Praise');"
            "INSERT INTO songs (title, cat2) VALUES ('1', 'Praise')");
        frmSongAdmin& w = openPanel();
        pick("Praise");
        w.txtName->setText("Men's 'own'");
        w.txtDesc->setText("'it's'");
        QSignalSpy name(w.txtName, &QLineEdit::textChanged);
        QSignalSpy description(w.txtDesc, &QLineEdit::textChanged);
        click(w.cmdAddCat);
        QCOMPARE(name.value(0).value(0).toString(), QStringLiteral("Mens own"));
        QCOMPARE(description.value(0).value(0).toString(), QStringLiteral("its"));
        QCOMPARE(world->rows("SELECT name, description FROM categories"),
                 QStringList{"Mens own|its"});
        QCOMPARE(world->rows("SELECT cat2 FROM songs"), QStringList{"Mens own"});
    }

    void renamingIgnoresCaseInEveryScript() {
        world->sql(QString::fromUtf8(
            "INSERT INTO categories (ID, name) VALUES (1, 'Ψαλμός');"
            "INSERT INTO songs (title, cat1) VALUES ('1', 'ψαλμός'), ('2', '찬양')"));
        frmSongAdmin& w = openPanel();
        clickCell(w.fpCat, CategoryColumn::Name, 1);
        const QString name = QString::fromUtf8("Lobgesänge 찬송");
        w.txtName->setText(name);
        click(w.cmdAddCat);
        QCOMPARE(world->rows("SELECT name FROM categories"), QStringList{name});
        QCOMPARE(world->rows("SELECT cat1 FROM songs"),
                 (QStringList{name, QString::fromUtf8("찬양")}));
    }

    void hymnsIsReservedInTwoSpellings_data() {
        QTest::addColumn<QString>("name");
        QTest::newRow("hymns") << "hymns";
        QTest::newRow("Hymns") << "Hymns";
    }
    // Deliberate: behaviour 39.
    void hymnsIsReservedInTwoSpellings() {
        QFETCH(QString, name);
        frmSongAdmin& w = openPanel();
        world->answers.box("Hymns is a reserved category, you can not add it.");
        store(name);
        QCOMPARE(w.txtName->text(), name);
        world->answers.box("Hymns is a reserved category, you can not delete it.");
        click(w.cmdDelCat);
        QVERIFY(world->statements.isEmpty());
        QCOMPARE(world->rows("SELECT * FROM categories"), QStringList());
    }

    // Deliberate: behaviour 39.
    void hymnsInCapitalsIsAccepted() {
        openPanel();
        store("HYMNS");
        QCOMPARE(world->rows("SELECT name FROM categories"), QStringList{"HYMNS"});
    }

    void nameIsRequired() {
        frmSongAdmin& w = openPanel();
        w.txtDesc->setText("loud");
        world->answers.box("Provide a name for the category.");
        click(w.cmdAddCat);
        world->answers.box("Provide a name for the category.");
        click(w.cmdDelCat);
        QVERIFY(world->statements.isEmpty());
    }

    // Deliberate: behaviour 41.
    void deletingLeavesTheNameInTheSongs() {
        world->sql(
            "INSERT INTO categories (ID, name) VALUES (1, 'Praise'), (2, 'Lent');"
            "INSERT INTO songs (title, cat1, cat5) VALUES ('1', 'Praise', 'Praise')");
        frmSongAdmin& w = openPanel();
        pick("Praise");
        click(w.cmdDelCat);
        QCOMPARE(world->statements,
                 (QStringList{"DELETE FROM categories WHERE ID = 1 [3]", CategoriesStatement}));
        QCOMPARE(world->rows("SELECT name FROM categories"), QStringList{"Lent"});
        QCOMPARE(world->rows("SELECT cat1, cat5 FROM songs"), QStringList{"Praise|Praise"});
        QCOMPARE(w.fpCat->GetText(CategoryColumn::Name, 1), QStringLiteral("Lent"));
        QCOMPARE(w.fpCat->DataRowCnt(), 1);
        QCOMPARE(w.txtName->text() + w.lblID->text() + w.lblOldName->text(), QString());
        click(w.Command4);
        QCOMPARE(w.txtCats->count(), 1);
        QCOMPARE(w.txtCats->item(0)->text(), QStringLiteral("Lent"));
        QCOMPARE(w.fpSMsong->formatAt(1, SongFormColumn::Value, SongRow::Category1).comboList,
                 QStringLiteral("Lent\t"));
    }

    void deletingWithoutASelectionIsRefused() {
        world->sql("INSERT INTO categories (name) VALUES ('Praise')");
        frmSongAdmin& w = openPanel();
        w.txtName->setText("Praise");
        world->answers.box("Select a category to delete first.");
        click(w.cmdDelCat);
        QVERIFY(world->statements.isEmpty());
    }

    void clearEmptiesTheBoxesAndTheSelection() {
        world->sql("INSERT INTO categories (name, description) VALUES ('Praise', 'loud')");
        frmSongAdmin& w = openPanel();
        pick("Praise");
        click(w.Command1);
        QCOMPARE(w.txtName->text() + w.txtDesc->text() + w.lblID->text() + w.lblOldName->text(),
                 QString());
        store("Praise");
        QCOMPARE(world->rows("SELECT ID, name FROM categories"),
                 (QStringList{"1|Praise", "2|Praise"}));
    }

    void closingThePanelUpdatesTheLists() {
        world->sql("INSERT INTO songs (title) VALUES ('Song')");
        frmSongAdmin& w = openPanel();
        store("Praise");
        store("Lent");
        QCOMPARE(w.txtCats->count(), 0);
        world->statements.clear();
        click(w.Command4);
        QVERIFY(w.frmCat->isHidden());
        QCOMPARE(world->statements,
                 (QStringList{"SELECT name FROM categories [1]",
                              "SELECT * FROM songs ORDER BY title [1]",
                              "SELECT played_date FROM played_on WHERE (songID = 1) [1]"}));
        for (int row = SongRow::Category1; row <= SongRow::Category5; ++row)
            QCOMPARE(w.fpSMsong->formatAt(1, SongFormColumn::Value, row).comboList,
                     QStringLiteral("Praise\tLent\t"));
        QCOMPARE(w.txtCats->count(), 2);
    }

    void rightClickShowsTheListAtTheMouse() {
        world->sql(
            "INSERT INTO categories (name) VALUES ('Praise');"
            "INSERT INTO songs (title) VALUES ('a'), ('b'), ('c')");
        frmSongAdmin& w = open();
        clickCell(w.fpSongList2, SongListColumn::Title, 3, Qt::RightButton);
        QVERIFY(w.txtCats->isVisible());
        QCOMPARE(w.fpSongList2->ActiveRow(), 3);
        const QRect cell = w.fpSongList2->cellRect(SongListColumn::Title, 3);
        QCOMPARE(w.txtCats->pos(),
                 w.fpSongList2->pos() + QPoint(cell.left() + 4, cell.center().y()));
        showSong("b");
        QVERIFY(w.txtCats->isHidden());
    }

    void rightClickOnAHeadShowsNoList() {
        world->sql("INSERT INTO categories (name) VALUES ('Praise')");
        frmSongAdmin& w = open();
        clickCell(w.fpSongList2, SongListColumn::Title, 0, Qt::RightButton);
        QVERIFY(w.txtCats->isHidden());
    }

    void listStaysInsideTheWindow() {
        QString names;
        for (int i = 0; i < 40; ++i)
            names += QStringLiteral("INSERT INTO categories (name) VALUES ('Category %1');").arg(i);
        names += QStringLiteral("INSERT INTO songs (title) VALUES ('a')");
        for (int i = 0; i < 12; ++i) names += QStringLiteral(", ('s')");
        world->sql(names);
        frmSongAdmin& w = open();
        clickCell(w.fpSongList2, SongListColumn::LastPlayed, 12, Qt::RightButton);
        QVERIFY(w.txtCats->isVisible());
        QVERIFY(w.rect().contains(w.txtCats->geometry()));
    }

    void pickedCategoryFillsTheFirstFreeSlot_data() {
        QTest::addColumn<QString>("filled");
        QTest::addColumn<int>("slot");
        QTest::newRow("none") << "'', NULL, '', ''" << 1;
        QTest::newRow("one") << "'a', NULL, '', ''" << 2;
        QTest::newRow("a gap") << "'a', 'b', '', 'd'" << 3;
        QTest::newRow("three") << "'a', 'b', 'c', NULL" << 4;
    }
    void pickedCategoryFillsTheFirstFreeSlot() {
        QFETCH(QString, filled);
        QFETCH(int, slot);
        world->sql(QStringLiteral("INSERT INTO categories (name) VALUES ('Lent'), ('Praise');"
                                  "INSERT INTO songs (ID, title) VALUES (1, 'a');"
                                  "INSERT INTO songs (ID, title, cat1, cat2, cat3, cat4) VALUES "
                                  "(8, 'Song', %1)")
                       .arg(filled));
        frmSongAdmin& w = open();
        give("Praise", 2);
        QCOMPARE(world->statements,
                 (QStringList{
                     "SELECT * FROM songs WHERE ID = 8 [1]",
                     QStringLiteral("UPDATE songs SET cat%1 = 'Praise' WHERE ID = 8 [3]").arg(slot),
                     "SELECT * FROM songs WHERE ID = 8 [1]",
                     "SELECT * FROM played_on WHERE songID = 8 [1]"}));
        QVERIFY(w.txtCats->isHidden());
        QVERIFY(w.txtCats->selectedItems().isEmpty());
        QCOMPARE(songValue(SongRow::ID), QStringLiteral("8"));
        QCOMPARE(songValue(SongRow::Category1 + slot - 1), QStringLiteral("Praise"));
        QCOMPARE(world->rows("SELECT cat1, cat2, cat3, cat4 FROM songs WHERE ID = 1"),
                 QStringList{"|||"});
    }

    // Deliberate: behaviour 42.
    void songWithFourCategoriesRefusesAFifthFromTheList() {
        world->sql(
            "INSERT INTO categories (name) VALUES ('Praise');"
            "INSERT INTO songs (title, cat1, cat2, cat3, cat4, cat5) VALUES "
            "('Song', 'a', 'b', 'c', 'd', '')");
        frmSongAdmin& w = open();
        world->answers.box("Selected song has 5 categories assigned.  Edit on the left to change.",
                           QMessageBox::Information, "Lorvanit");
        give("Praise", 1);
        QCOMPARE(world->rows("SELECT cat1, cat2, cat3, cat4, cat5 FROM songs"),
                 QStringList{"a|b|c|d|"});
        QVERIFY(w.txtCats->isHidden());
        QCOMPARE(songValue(SongRow::Title), QStringLiteral("Song"));
    }

    void listCanBeUsedWithTheKeyboard() {
        world->sql(
            "INSERT INTO categories (name) VALUES ('Lent'), ('Praise');"
            "INSERT INTO songs (title) VALUES ('Song')");
        frmSongAdmin& w = open();
        clickCell(w.fpSongList2, SongListColumn::Title, 1, Qt::RightButton);
        QCOMPARE(QApplication::focusWidget(), w.txtCats);
        QTest::keyClick(w.txtCats, Qt::Key_Escape);
        QVERIFY(w.txtCats->isHidden());
        QCOMPARE(QApplication::focusWidget(), w.fpSongList2);
        QVERIFY(world->statements.isEmpty());
        clickCell(w.fpSongList2, SongListColumn::Title, 1, Qt::RightButton);
        QTest::keyClick(w.txtCats, Qt::Key_Down);
        QTest::keyClick(w.txtCats, Qt::Key_Down);
        QTest::keyClick(w.txtCats, Qt::Key_Return);
        settle();
        QCOMPARE(world->rows("SELECT cat1 FROM songs"), QStringList{"Praise"});
        QVERIFY(w.txtCats->isHidden());
        QCOMPARE(QApplication::focusWidget(), w.fpSongList2);
    }

    void clickBesideTheNamesHidesTheList() {
        world->sql("INSERT INTO songs (title) VALUES ('Song')");
        frmSongAdmin& w = open();
        clickCell(w.fpSongList2, SongListColumn::Title, 1, Qt::RightButton);
        QVERIFY(w.txtCats->isVisible());
        click(w.txtCats->viewport());
        QVERIFY(w.txtCats->isHidden());
        QVERIFY(world->statements.isEmpty());
    }

    void emptyNameInTheListHidesIt() {
        world->sql(
            "INSERT INTO categories (name) VALUES (NULL);"
            "INSERT INTO songs (title) VALUES ('Song')");
        frmSongAdmin& w = open();
        give("", 1);
        QVERIFY(w.txtCats->isHidden());
        QVERIFY(world->statements.isEmpty());
    }

    void listHidesWhenItLosesTheKeyboardFocus() {
        world->sql(
            "INSERT INTO categories (name) VALUES ('Praise');"
            "INSERT INTO songs (title) VALUES ('Song')");
        frmSongAdmin& w = open();
        clickCell(w.fpSongList2, SongListColumn::Title, 1, Qt::RightButton);
        w.cmdAdd->setFocus();
        QVERIFY(w.txtCats->isHidden());
    }

    void lockedFileEndsTheProgram() {
        frmSongAdmin& w = openPanel();
        w.txtName->setText("Praise");
        {
            const FileHeld held(world->path("db1.mdb"));
            world->answers.runTimeError(RunTimeError::StatementRefused, "locked");
            click(w.cmdAddCat);
        }
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(world->rows("SELECT * FROM categories"), QStringList());
    }

    // Deliberate: behaviour 40.
    void renamingThatFailsHalfwayKeepsWhatWasStored() {
        world->sql(
            "INSERT INTO categories (ID, name) VALUES (1, 'Men''s');"
            "INSERT INTO songs (title, cat1) VALUES ('1', 'Men''s')");
        frmSongAdmin& w = openPanel();
        pick("Men's");
        w.txtName->setText("Men");
        world->answers.runTimeError(RunTimeError::StatementRefused);
        click(w.cmdAddCat);
        QCOMPARE(world->endStatus, 1);
        QCOMPARE(world->rows("SELECT name FROM categories"), QStringList{"Men"});
        QCOMPARE(world->rows("SELECT cat1 FROM songs"), QStringList{"Men's"});
    }
};

LORVANITE_TEST(TestCategories)
#include "test_categories.moc"
