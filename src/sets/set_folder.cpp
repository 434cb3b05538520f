// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sets/set_folder.h"

#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "platform/desktop/folder_browser.h"

QString savedSetsFolder() { return programFolder() + QStringLiteral("\\saved sets"); }

void browseSavedSets(FolderBrowser& browser) {
    browser.Pattern(QStringLiteral("*.set"));
    try {
        browser.Path(savedSetsFolder());
    } catch (const RunTimeError&) {
        // Deliberate: behaviour 75.
    }
}
