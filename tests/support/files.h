// Files as another program finds them, and files that a dialog chooses in vain.
#pragma once

#include <QByteArray>
#include <QString>

class Answers;

// All of a file; empty where it cannot be read.
QByteArray bytesOf(const QString& path);

// Answers the next file dialog with a file in a new folder of `folder`, which goes away as the file
// is chosen: writing it fails.
void answerWithLostFolder(Answers& answers, const QString& folder, const QString& name);
