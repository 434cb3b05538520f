// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mail/rules/staging_file.h"

#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "core/grid/sheet_grid.h"

QString mailStagingFile() { return programFolder() + QStringLiteral("\\config\\email.html"); }

void writeStagingFile(const QStringList& lines) {
    QByteArray content;
    for (const QString& line : lines) content += line.toUtf8() + "\r\n";
    if (!replaceFile(mailStagingFile(), content)) throw RunTimeError(RunTimeError::PathAccess);
}

void stageSetBlock(const SheetGrid& grid) {
    if (!grid.ExportRangeToHTML(1, 1, 2, grid.DataRowCnt(), mailStagingFile(), false,
                                QStringLiteral("lsl")))
        throw RunTimeError(RunTimeError::PathAccess);
}
