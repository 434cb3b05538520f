// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the tests of saved sets share.
#pragma once

#include "platform/desktop/folder_browser.h"
#include "sets/set_list_test.h"

#include <functional>

class SavedSetTest : public SetListTest {
    Q_OBJECT

protected:
    // Adds this many songs "Song 01", "Song 02", ... and returns their titles.
    QStringList addSongs(int count);

    // The rows of played_on: title, date and song ID.
    QStringList record();

    // The statements that record songs 1, 2, ... with these titles for a date.
    static QStringList recordStatements(const QString& date, const QStringList& titles);

    // Saves a set with these titles from row 2 to a file in the program folder.
    void makeSet(const QString& relative, const QString& date, const QStringList& titles);

    // Saves a set of `rows` rows whose last one has this title in a green cell.
    void makeGreenSet(const QString& relative, const QString& date, int rows, const QString& title);

    // The names in a list of files.
    static QStringList filesOf(const QListWidget* list);

    // Clicks the file of this name.
    static void clickFile(QListWidget* list, const QString& name, Qt::KeyboardModifiers keys = {});

    // Clicks a folder of the program folder in a browser's tree.
    void goTo(FolderBrowser* browser, const QString& relative);

    // Opens a window with the saved sets and chooses a drive that is no longer there.
    void checkUnavailableDrive(const std::function<FolderBrowser*()>& openWindow);
};
