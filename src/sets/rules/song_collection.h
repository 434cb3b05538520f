// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the set window hands over to Export Music: the charts of a set's songs as one text.
#pragma once

#include <QString>
#include <QStringList>

// The paths of the charts of these titles in their order, each with a "|" behind it. Raises
// RunTimeError::NoCurrentRecord if a title is not in the catalogue,
// RunTimeError::StatementRefused if it has an apostrophe.
QString joinedChartPaths(const QStringList& titles);

// The paths in such a text.
QStringList chartPathsOf(const QString& joined);

// The file names in such a text, one on each line. The empty text behind the last "|" counts as a
// name, so the last line is empty.
QString chartNamesOf(const QString& joined);
