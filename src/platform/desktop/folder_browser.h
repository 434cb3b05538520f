// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A list of drives, a tree of folders and a list of files, one below the other.
#pragma once

#include <QAbstractFileIconProvider>
#include <QCheckBox>
#include <QComboBox>
#include <QFileSystemModel>
#include <QFileSystemWatcher>
#include <QListWidget>
#include <QTimer>
#include <QTreeView>
#include <QWidget>

#include <memory>

// The drives are the home folder, the whole file system and the removable media; the list is
// updated whenever it drops down. Choosing a drive selects its folder in the tree, or shows that it
// is not available. Selecting a folder lists its files that match the pattern.
class FolderBrowser : public QWidget {
    Q_OBJECT

public:
    explicit FolderBrowser(QWidget* parent = nullptr);

    QComboBox* Drive1;
    QTreeView* Dir1;
    QListWidget* File1;
    // Lists the latest file first: by the date in its name, such as 11_22_26, or the day on which
    // it was written if there is none. Hidden at first.
    QCheckBox* chkNewest;

    // The selected folder, with "/" as separator and none at the end; empty if there is none yet.
    QString Path() const;

    // Selects a folder, given with either separator. Raises RunTimeError::PathNotFound if it is
    // missing, PathAccess if it cannot be read; the selection does not change then.
    void Path(const QString& folder);

    // Sets which files are listed, such as "*.set", ignoring case.
    void Pattern(const QString& pattern);

    // The name of the file that was clicked last; empty if there is none.
    QString FileName() const;

    // The path of that file; empty if there is none.
    QString FilePath() const;

    // Lets the list follow what is saved in the folder, or deleted.
    void followFolder();

    // Whether several files can be selected with Ctrl and a click.
    void setMultiSelect(bool on);

Q_SIGNALS:
    // A file was clicked, or activated or selected with the keyboard.
    void FileClick();

private:
    void setUpTree();
    void listDrives();
    void showDrive();
    void listFiles();
    QStringList fileNames() const;
    void watchFolder();
    void Drive1_Change();
    void Dir1_Change(const QModelIndex& folder);

    std::unique_ptr<QAbstractFileIconProvider> m_icons;
    QFileSystemModel m_folders;
    bool m_follows = false;
    QFileSystemWatcher m_watcher;
    QTimer m_changed;  // runs out when the folder has changed and rests
    QString m_path;
    QString m_pattern = QStringLiteral("*");
    bool m_inSight = false;  // whether the folder was visible before the tree was sorted
};
