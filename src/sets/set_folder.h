// The folder of saved sets, and the browser of the windows that show it.
#pragma once

#include <QString>

class FolderBrowser;

// "\saved sets" in the program's folder, without a trailing separator.
QString savedSetsFolder();

// Takes a browser of sets to that folder; where it is missing the browser stays empty.
void browseSavedSets(FolderBrowser& browser);
