// A drive list, a folder tree and the files of a folder, one under the other.
#pragma once

#include <QComboBox>
#include <QFileSystemModel>
#include <QListWidget>
#include <QTreeView>
#include <QWidget>

// The drives are the places of the machine: the user's own folder, the whole file tree, and what
// is plugged in. They are looked for anew whenever the list drops down. Choosing a drive takes the
// folder tree there, or says that it is not available; a folder on view fills the file list with
// the files of the pattern.
class FolderBrowser : public QWidget {
    Q_OBJECT

public:
    explicit FolderBrowser(QWidget* parent = nullptr);

    QComboBox* Drive1;
    QTreeView* Dir1;
    QListWidget* File1;

    // The folder on view, with "/" as separator and none at the end; empty before the first.
    QString Path() const;

    // Goes to a folder, given with either separator. Raises 76 where it is missing, 75 where it
    // cannot be read; the folder on view stays then.
    void Path(const QString& folder);

    // The files that the list shows, as "*.set"; capitals and small letters alike.
    void Pattern(const QString& pattern);

    // The name of the file that was clicked last; empty where none was.
    QString FileName() const;

    // The whole path of that file; empty where none was clicked.
    QString FilePath() const;

    // Lets several files be selected by Ctrl and click.
    void setMultiSelect(bool on);

Q_SIGNALS:
    // A file was clicked, or chosen by the keyboard.
    void FileClick();

private:
    void setUpTree();
    void listDrives();
    void showDrive();
    void listFiles();
    void Drive1_Change();
    void Dir1_Change(const QModelIndex& folder);

    QFileSystemModel m_folders;
    QString m_path;
    QString m_pattern = QStringLiteral("*");
    bool m_inSight = false;  // the folder on view, before the tree is sorted anew
};
