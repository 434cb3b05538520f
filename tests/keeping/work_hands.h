// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Work of every kind, as a user does it in the windows.
#pragma once

#include <QString>

#include <vector>

class FormBase;
class frmMDI;
class UnsavedStrip;

struct WorkHands {
    const char* name;              // as the strip names it
    void (*open)(frmMDI& main);    // opens the window by its button
    void (*type)(const QString&);  // types a word, by keys
    QString (*onView)();           // the word that is on view
    FormBase& (*window)();
};

// The eight kinds.
const std::vector<WorkHands>& worksOfAllKinds();
const WorkHands& workOf(const QString& name);

// The strip of a window that offers work of this kind; null if none is shown.
UnsavedStrip* stripOf(const WorkHands& work);

// What the commands of the schedule need in the database. The database has to be open.
void addPersonAndPlayedSong();

// Opens all windows and types a word into each. The word goes by the kind.
void workEverywhere(frmMDI& main);
QString wordOf(const WorkHands& work);
