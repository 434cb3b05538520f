// The byte form of a saved grid: UTF-8 JSON with a format name, a version and a check sum.
#pragma once

#include "core/grid/sheet_grid_data.h"

#include <optional>

// The bytes of a grid; with dataOnly true its sizes, texts and pictures alone. Empty where the
// grid holds more than a file may (8 million cells).
QByteArray writeGridFile(const GridData& data, bool dataOnly);

// The grid that the bytes stand for. Nothing where they are damaged, claim more than they hold or
// than a grid may have, or are of a later version. A file without a check sum is taken, so that a
// person can mend one in a text editor; one whose check sum is wrong is not.
std::optional<GridData> readGridFile(const QByteArray& bytes);

// Bounds of a file and of what it makes the reader keep.
constexpr qsizetype MaxGridFileSize = 512 * 1024 * 1024;
constexpr qint64 MaxFileRows = MaxGridRows + MaxSheetDatas;
constexpr qint64 MaxFileCells = 8'000'000;
