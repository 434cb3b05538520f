// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The file format of a saved grid: UTF-8 JSON with a format name, a version and a checksum.
#pragma once

#include "core/grid/sheet_data.h"

#include <optional>

// A grid as the bytes of a file. With dataOnly true they hold only its sizes, texts and pictures.
// Empty if the grid is larger than the limits below allow.
QByteArray writeGridFile(const GridData& data, bool dataOnly);

// Reads the bytes of a file. Returns nothing if they are damaged, claim more than they hold or than
// the limits below allow, or come from a later version. A file without a checksum is accepted, so
// that a person can repair one in a text editor; one with a wrong checksum is not.
std::optional<GridData> readGridFile(const QByteArray& bytes);

// Limits of a file and of the memory that reading it takes.
constexpr qsizetype MaxGridFileSize = qsizetype(512) * 1024 * 1024;  // bytes
constexpr qint64 MaxFileRows = MaxGridRows + MaxSheets;
constexpr qint64 MaxFileCells = 8'000'000;
