// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The folder of the saved sets.
#pragma once

#include <QString>

class FolderBrowser;

// "\saved sets" in the program's folder, without a separator at the end.
QString savedSetsFolder();

// Lets a browser list the sets in that folder. If the folder is missing, the browser stays empty.
void browseSavedSets(FolderBrowser& browser);
