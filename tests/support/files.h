// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Files as another program reads them, and files that cannot be written.
#pragma once

#include <QByteArray>
#include <QString>

class Answers;

// The content of a file; empty if it cannot be read.
QByteArray bytesOf(const QString& path);

// Writes a file, and the folders above it. Fails the test if that is impossible.
void writeBytes(const QString& path, const QByteArray& content);

// Answers the next file dialog with a file in a new folder in `folder`, which is removed right
// after the choice, so that the file cannot be written.
void answerWithLostFolder(Answers& answers, const QString& folder, const QString& name);
