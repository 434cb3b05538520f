// A sound file to play, and nothing to hear.
#pragma once

#include <QString>

// Writes a wave file of silence.
void writeSilence(const QString& path, double seconds);
