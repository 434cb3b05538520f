// What the tests of saved sets share.
#pragma once

#include "platform/desktop/folder_browser.h"
#include "sets/set_list_test.h"

#include <functional>

class SavedSetTest : public SetListTest {
    Q_OBJECT

protected:
    // So many songs "Song 01", "Song 02", ...; their titles.
    QStringList addSongs(int count);

    // The rows of played_on: title, date and song ID.
    QStringList record();

    // The statements that record songs 1, 2, ... with these titles for a date.
    static QStringList recordStatements(const QString& date, const QStringList& titles);

    // Writes a set with these titles in rows 2, 3, ... under the program's folder.
    void makeSet(const QString& relative, const QString& date, const QStringList& titles);

    // Writes a set of `rows` rows with this title in the last, on the green of sheet music.
    void makeGreenSet(const QString& relative, const QString& date, int rows, const QString& title);

    // The files that a list shows.
    static QStringList filesOf(const QListWidget* list);

    // Clicks a file of a list by its name.
    static void clickFile(QListWidget* list, const QString& name, Qt::KeyboardModifiers keys = {});

    // The folder of `relative` shown in a browser, as by a click on the tree.
    void goTo(FolderBrowser* browser, const QString& relative);

    // Opens a window over the saved sets and chooses a drive that has gone meanwhile.
    void seeADriveThatIsGone(const std::function<FolderBrowser*()>& openWindow);
};
