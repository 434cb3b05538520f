// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Carries an import out: all of it or nothing.
#pragma once

#include "exchange/import_plan.h"

#include <functional>

// Called before each song with the numbers done and in all; false ends the import.
using ImportProgress = std::function<bool(int done, int all)>;

// Sets a copy of everything aside, and stores the plan in one transaction with its charts in the
// folder "sheetmusic". Returns false if the import was ended: everything is as before then, charts
// included, and so it is if the import raises what a failing statement raises, setAside() raises,
// or RunTimeError::PermissionDenied because a chart cannot be written. A plan that changes nothing
// makes no copy.
[[nodiscard]] bool runImport(const ImportPlan& plan, const ImportProgress& progress = {});

// Removes the charts of an import that was killed before its end. Does nothing otherwise. Every
// import begins with it, and so does the window.
void cleanUpAfterKilledImport();

// Why charts cannot be tied to songs in the program's folder; empty if they can.
QString chartsNotPossible();
