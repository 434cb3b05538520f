// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The keys in a grid's file.
#pragma once

#include <QLatin1String>

namespace GridKey {

constexpr QLatin1String FormatName("lorvanite-grid");
constexpr int Version = 1;

// Around the body; the checksum is that of the body's bytes.
constexpr QLatin1String Format("format");
constexpr QLatin1String VersionKey("version");
constexpr QLatin1String Sum("sum");
constexpr QLatin1String Grid("grid");

// The grid.
constexpr QLatin1String ActiveSheet("activeSheet");
constexpr QLatin1String TabStrip("tabStrip");
constexpr QLatin1String ColHeaders("colHeaders");
constexpr QLatin1String RowHeaders("rowHeaders");
constexpr QLatin1String LinesHoriz("linesHoriz");
constexpr QLatin1String LinesVert("linesVert");
constexpr QLatin1String Overflow("overflow");
constexpr QLatin1String EditReplace("editReplace");
constexpr QLatin1String SortKeys("sortKeys");  // [column, order] each
constexpr QLatin1String Formats("formats");    // the sheets refer to them by index
constexpr QLatin1String Pictures("pictures");  // base64
constexpr QLatin1String Sheets("sheets");

// A sheet.
constexpr QLatin1String Rows("rows");
constexpr QLatin1String Cols("cols");
constexpr QLatin1String Default("default");            // format number
constexpr QLatin1String PlainRow("plainRow");          // [size, flags]
constexpr QLatin1String PlainCol("plainCol");          // [size, flags]
constexpr QLatin1String RowSections("rowLines");       // [number, size, flags, format] each
constexpr QLatin1String ColSections("colLines");       // [number, size, flags, format] each
constexpr QLatin1String Texts("texts");                // [row, column, text, next text...] each
constexpr QLatin1String CellFormats("cellFormats");    // [row, rows, column, columns, format] each
constexpr QLatin1String CellPictures("cellPictures");  // [row, column, picture] each
constexpr QLatin1String Spans("spans");                // [column, row, columns, rows] each
constexpr int HiddenFlag = 1;
constexpr int PageBreakFlag = 2;

// A format.
constexpr QLatin1String Kind("kind");
constexpr QLatin1String Back("back");
constexpr QLatin1String Fore("fore");  // null: colour of the theme
constexpr QLatin1String Font("font");
constexpr QLatin1String Size("size");
constexpr QLatin1String Bold("bold");
constexpr QLatin1String Align("align");
constexpr QLatin1String Century("century");
constexpr QLatin1String DateFormat("dateFormat");
constexpr QLatin1String Spin("spin");
constexpr QLatin1String List("list");
constexpr QLatin1String Drop("drop");
constexpr QLatin1String Left("left");  // [style, colour], like the other borders
constexpr QLatin1String Right("right");
constexpr QLatin1String Top("top");
constexpr QLatin1String Bottom("bottom");

}  // namespace GridKey
