// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Damaged, boasting and foreign files give nothing and leave the grid as it was.
#include "core/grid/grid_difference.h"
#include "core/grid/grid_file.h"
#include "support/registry.h"
#include "trees.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

// A small grid with one of everything that a file can hold.
GridData smallGrid() {
    GridData data;
    SheetData& sheet = data.sheets[0];
    sheet.maxRows = 4;
    sheet.maxCols = 3;
    sheet.cellForWriting(1, 1).text = u"Ä"_s;
    sheet.cellForWriting(2, 1).text = u"b"_s;
    sheet.cellForWriting(3, 2).picture = sheet.internPicture("image");
    FormatPatch change;
    change.values.backColor = 77;
    change.values.left = {BorderStyle::Solid, 5};
    change.bits = BackColorBit | LeftBit;
    sheet.setInCells({1, 2, 2, 3}, change);
    sheet.setDefault(2, -1, change);
    sheet.rowSectionForWriting(2).size = 31.5;
    sheet.addSpan({1, 4, 3, 1});
    data.sheets.emplace_back();
    data.activeSheet = 2;
    data.sortKeys[0] = {2, SortOrder::Ascending};
    return data;
}

// A file without a check sum around a body.
QByteArray fileOf(const QByteArray& body) {
    return R"({"format":"lorvanite-grid","version":1,"grid":)" + body + '}';
}

QByteArray sheetFile(const QByteArray& members) {
    return fileOf(R"({"activeSheet":1,"formats":[{"bold":true}],"pictures":["aGk="],"sheets":[{)" +
                  members + "}]}");
}

}  // namespace

class TestGridFileDamage : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void smallGridComesBack() {
        const GridData data = smallGrid();
        const auto read = readGridFile(writeGridFile(data, false));
        QVERIFY(read);
        QCOMPARE(differenceOf(data, *read), QString());
    }

    void filesCutAtAnyLengthAreRefused() {
        const QByteArray whole = writeGridFile(smallGrid(), false);
        // The last byte is a line end, which a file can do without.
        for (qsizetype length = 0; length < whole.size() - 1; ++length)
            QVERIFY2(!readGridFile(whole.left(length)), QByteArray::number(length));
    }

    void filesWithAFlippedByteAreRefusedOrWhole() {
        const GridData data = smallGrid();
        const QByteArray whole = writeGridFile(data, false);
        int taken = 0;
        for (qsizetype at = 0; at < whole.size(); ++at) {
            for (const int mask : {0x01, 0x02, 0x10, 0x20, 0x80, 0xFF}) {
                QByteArray flipped = whole;
                flipped[at] = char(flipped[at] ^ mask);
                const auto read = readGridFile(flipped);
                if (!read) continue;
                QCOMPARE(differenceOf(data, *read), QString());
                ++taken;
            }
        }
        // Only the check sum's own name and the closing line end can be spoilt without a loss.
        QVERIFY2(taken <= 24, QByteArray::number(taken));
    }

    void filesWithAFlippedByteAndNoCheckSumNeverBreakTheReader() {
        QByteArray whole = writeGridFile(smallGrid(), false);
        const qsizetype sum = whole.indexOf("\"sum\"");
        whole.remove(sum, whole.indexOf("\"grid\"") - sum);
        QVERIFY(readGridFile(whole));
        for (qsizetype at = 0; at < whole.size(); ++at) {
            for (int value = 0; value < 256; value += 3) {
                QByteArray flipped = whole;
                flipped[at] = char(value);
                const auto read = readGridFile(flipped);
                if (!read) continue;
                const auto again = readGridFile(writeGridFile(*read, false));
                QVERIFY(again);
                QCOMPARE(differenceOf(*read, *again), QString());
            }
        }
    }

    void refused_data() {
        QTest::addColumn<QByteArray>("bytes");
        const auto row = [](const QByteArray& name, const QByteArray& bytes) {
            QTest::newRow(name.constData()) << bytes;
        };
        const auto sheet = [&](const QByteArray& name, const QByteArray& members) {
            row(name, sheetFile(members));
        };
        row("empty", "");
        row("text", "Dear team,");
        row("zeros", QByteArray(4096, '\0'));
        row("other json", "{\"a\":1}");
        row("array", "[]");
        row("deep", QByteArray(100'000, '['));
        row("other name", R"({"format":"other","version":1,"grid":{}})");
        row("later version", R"({"format":"lorvanite-grid","version":2,"grid":{}})");
        row("version text", R"({"format":"lorvanite-grid","version":"1","grid":{}})");
        row("no grid", R"({"format":"lorvanite-grid","version":1})");
        row("grid is a list", fileOf("[]"));
        row("no sheets", fileOf(R"({"activeSheet":1,"sheets":[]})"));
        row("sheets are no list", fileOf(R"({"activeSheet":1,"sheets":5})"));
        row("sheet is no object", fileOf(R"({"activeSheet":1,"sheets":[5]})"));
        row("active sheet beyond", fileOf(R"({"activeSheet":2,"sheets":[{"rows":1,"cols":1}]})"));
        row("no active sheet", fileOf(R"({"sheets":[{"rows":1,"cols":1}]})"));
        row("too many sheets", fileOf(R"({"activeSheet":1,"sheets":[)" +
                                      QByteArray(R"({"rows":1,"cols":1},)").repeated(4096) +
                                      R"({"rows":1,"cols":1}]})"));
        for (const char* number : {"2147483648", "-1", "1e300", "1.5", "\"3\"", "null", "true",
                                   "10000001", "-2147483649", "1e999", "[]"}) {
            const QByteArray n(number);
            sheet("rows " + n, "\"cols\":3,\"rows\":" + n);
            sheet("cols " + n, "\"rows\":3,\"cols\":" + n);
            const QByteArray size = R"("rows":3,"cols":3,)";
            sheet("text row " + n, size + "\"texts\":[[" + n + ",1,\"x\"]]");
            sheet("text col " + n, size + "\"texts\":[[1," + n + ",\"x\"]]");
            sheet("format rows " + n, size + "\"cellFormats\":[[1," + n + ",1,1,0]]");
            sheet("format cols " + n, size + "\"cellFormats\":[[1,1,1," + n + ",0]]");
            sheet("picture row " + n, size + "\"cellPictures\":[[" + n + ",1,0]]");
            sheet("span rows " + n, size + "\"spans\":[[1,1,1," + n + "]]");
            sheet("row " + n, size + "\"rowLines\":[[" + n + ",20,0,-1]]");
            sheet("sort order " + n,
                  R"("rows":3,"cols":3}],"sortKeys":[[1,)" + n + R"(]],"x":[{"y":1)");
        }
        const QByteArray size = R"("rows":3,"cols":3,)";
        for (const char* number : {"1", "-1", "2147483648", "0.5", "\"0\""}) {
            const QByteArray n(number);
            sheet("format " + n, size + "\"cellFormats\":[[1,1,1,1," + n + "]]");
            sheet("picture " + n, size + "\"cellPictures\":[[1,1," + n + "]]");
            sheet("default " + n, size + "\"default\":" + n);
        }
        sheet("text outside the row", size + R"("texts":[[1,2,"a","b","c"]])");
        sheet("text that is a number", size + R"("texts":[[1,2,7]])");
        sheet("text without text", size + R"("texts":[[1,2]])");
        sheet("texts are no list", size + R"("texts":{})");
        sheet("format below the last row", size + R"("cellFormats":[[2,3,1,1,0]])");
        sheet("spans meet", size + R"("spans":[[1,1,2,2],[2,2,2,2]])");
        sheet("span twice", size + R"("spans":[[1,1,2,2],[1,1,2,2]])");
        sheet("span of one cell", size + R"("spans":[[1,1,1,1]])");
        sheet("span of a head", size + R"("spans":[[0,1,2,2]])");
        sheet("span beyond", size + R"("spans":[[2,2,3,1]])");
        sheet("row twice", size + R"("rowLines":[[1,20,0,-1],[1,30,0,-1]])");
        sheet("row too high", size + R"("rowLines":[[1,1001,0,-1]])");
        sheet("row below nothing", size + R"("rowLines":[[1,-1,0,-1]])");
        sheet("row with odd flags", size + R"("rowLines":[[1,20,4,-1]])");
        sheet("plain row", size + R"("plainRow":[20])");
        const auto format = [&](const QByteArray& name, const QByteArray& object) {
            row(name, fileOf("{\"activeSheet\":1,\"formats\":[" + object +
                             "],\"sheets\":[{\"rows\":1,\"cols\":1}]}"));
        };
        format("format list", "[]");
        format("cell kind", R"({"kind":5})");
        format("colour", R"({"back":16777216})");
        format("colour text", R"({"fore":"red"})");
        format("bold", R"({"bold":1})");
        format("font", R"({"font":1})");
        format("font size", R"({"size":-1})");
        format("alignment", R"({"align":3})");
        format("border", R"({"top":[2,0]})");
        format("border count", R"({"top":[1]})");
        row("picture that is none",
            fileOf(R"({"activeSheet":1,"pictures":["*"],"sheets":[{"rows":1,"cols":1}]})"));
        row("flag", fileOf(R"({"activeSheet":1,"overflow":1,"sheets":[{"rows":1,"cols":1}]})"));
        row("tab strip",
            fileOf(R"({"activeSheet":1,"tabStrip":"a","sheets":[{"rows":1,"cols":1}]})"));
    }

    void refused() {
        QFETCH(QByteArray, bytes);
        QVERIFY(!readGridFile(bytes));
    }

    void countsThatWouldTakeGigabytesAreRefused() {
        QByteArray many;
        for (int i = 0; i < 5000; ++i) many += "[" + QByteArray::number(i) + ",16384,\"x\"],";
        QVERIFY(!readGridFile(
            sheetFile(R"("rows":10000000,"cols":16384,"texts":[)" + many + "[9999,16384,\"x\"]]")));
        QVERIFY(!readGridFile(
            sheetFile(R"("rows":10000000,"cols":16384,"cellFormats":[[1,10000000,1,16384,0]])")));
        const QByteArray run = "[1,2000,1,2000,0]";
        QVERIFY(!readGridFile(sheetFile(R"("rows":10000000,"cols":16384,"cellFormats":[)" + run +
                                        "," + run + "," + run + "]")));
        const QByteArray far = R"({"rows":10000000,"cols":2,"texts":[[9999999,1,"x"]]})";
        QVERIFY(readGridFile(fileOf(R"({"activeSheet":1,"sheets":[)" + far + "]}")));
        QVERIFY(!readGridFile(fileOf(R"({"activeSheet":1,"sheets":[)" + far + "," + far + "]}")));
    }

    void fileMendedByHandIsTakenWithoutItsSum() {
        QByteArray bytes = writeGridFile(smallGrid(), false);
        bytes.replace("\"b\"", "\"mended\"");
        QVERIFY(!readGridFile(bytes));
        bytes.replace("\"sum\":", "\"was\":");
        const auto read = readGridFile(bytes);
        QVERIFY(read);
        QCOMPARE(read->sheets[0].cell(2, 1)->text, u"mended"_s);
    }

    void refusedFileLeavesTheGridAsItWas() {
        QTemporaryDir folder;
        const QString good = folder.filePath(u"good.set"_s);
        const QString bad = folder.filePath(u"bad.set"_s);
        SheetGrid grid;
        grid.SetText(1, 1, u"kept"_s);
        grid.SheetCount(2);
        grid.ActiveSheet(2);
        grid.SetActiveCell(3, 4);
        QVERIFY(grid.SaveToFile(good, false));
        QFile whole(good);
        QVERIFY(whole.open(QIODevice::ReadOnly));
        const QByteArray bytes = whole.readAll();
        for (const qsizetype length : {qsizetype(0), bytes.size() / 2, bytes.size() - 2}) {
            QFile cut(bad);
            QVERIFY(cut.open(QIODevice::WriteOnly));
            cut.write(bytes.left(length));
            cut.close();
            QVERIFY(!grid.LoadFromFile(bad));
            QCOMPARE(grid.ActiveSheet(), 2);
            QCOMPARE(grid.ActiveRow(), 4);
            QCOMPARE(grid.textAt(1, 1, 1), u"kept"_s);
        }
    }

    void spansThatTouchAreApart() {
        QVERIFY(readGridFile(sheetFile(
            R"("rows":4,"cols":4,"spans":[[1,1,2,2],[3,1,2,1],[3,2,2,2],[1,3,2,1],[1,4,4,1]])")));
        QVERIFY(!readGridFile(sheetFile(R"("rows":4,"cols":4,"spans":[[2,1,1,4],[1,4,4,1]])")));
        QVERIFY(!readGridFile(sheetFile(R"("rows":4,"cols":4,"spans":[[1,2,4,1],[2,1,1,4]])")));
    }
};

LORVANITE_TEST(TestGridFileDamage)
#include "test_grid_file_damage.moc"
