// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A silent sound file.
#pragma once

#include <QString>

// Writes a wave file of silence.
void writeSilence(const QString& path, double seconds);
