// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/folder_browser.h"

#include "core/data/dates.h"
#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "platform/desktop/message_box.h"

#include <QDir>
#include <QFileIconProvider>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QStorageInfo>
#include <QStyledItemDelegate>

#include <algorithm>
#include <functional>

namespace {

constexpr int FolderRests = 100;  // milliseconds

struct Place {
    QString name;
    QString folder;
};

// Removable media; other file systems are none that the user looks for.
bool isPlugged(const QStorageInfo& volume) {
    static const QStringList where = {QStringLiteral("/media/"), QStringLiteral("/run/media/"),
                                      QStringLiteral("/mnt/"), QStringLiteral("/Volumes/")};
    return std::any_of(where.begin(), where.end(), [&](const QString& start) {
        return (volume.rootPath() + QLatin1Char('/')).startsWith(start);
    });
}

QList<Place> places() {
    QList<Place> found;
    const auto add = [&](const QString& name, const QString& folder) {
        const bool known = std::any_of(found.begin(), found.end(),
                                       [&](const Place& place) { return place.folder == folder; });
        if (!known) found.append({name, folder});
    };
    add(QStringLiteral("Home"), QDir::homePath());
    for (const QFileInfo& drive : QDir::drives())
        add(drive.path() == QLatin1String("/") ? QStringLiteral("Computer")
                                               : QDir::toNativeSeparators(drive.path()),
            drive.path());
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes())
        if (isPlugged(volume)) add(volume.displayName(), volume.rootPath());
    return found;
}

// A list of drives that is updated each time it drops down.
class DriveList : public QComboBox {
public:
    DriveList(QWidget* parent, std::function<void()> lookAround)
        : QComboBox(parent), m_lookAround(std::move(lookAround)) {}

    void showPopup() override {
        m_lookAround();
        QComboBox::showPopup();
    }

private:
    std::function<void()> m_lookAround;
};

// A list whose keys act like clicks: what they select is shown.
class FileList : public QListWidget {
public:
    FileList(QWidget* parent, std::function<void()> selected)
        : QListWidget(parent), m_selected(std::move(selected)) {}

protected:
    void keyPressEvent(QKeyEvent* event) override {
        const QListWidgetItem* before = currentItem();
        const bool none = selectedItems().isEmpty();
        const bool moves = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
        // The keyboard focus has made the first file the current one without selecting it.
        if (before && none && moves)
            setCurrentRow(currentRow());
        else
            QListWidget::keyPressEvent(event);
        const QListWidgetItem* item = currentItem();
        if (item && item->isSelected() && (none || item != before)) m_selected();
    }

private:
    std::function<void()> m_selected;
};

// The icon of every folder. Qt's own provider reads the beginning of each file beside the folders
// to find its icon and its type, neither of which is shown. With an empty type, the tree fills more
// slowly.
class FolderIcons : public QAbstractFileIconProvider {
public:
    QIcon icon(IconType) const override { return m_icon; }
    QIcon icon(const QFileInfo&) const override { return m_icon; }
    QString type(const QFileInfo&) const override { return m_type; }

private:
    const QString m_type = QStringLiteral("Folder");
    const QIcon m_icon = QFileIconProvider().icon(QFileIconProvider::Folder);
};

QDate dateOfFile(const QFileInfo& file) {
    static const QRegularExpression inName(QStringLiteral("(\\d+)_(\\d+)_(\\d+)"));
    const QRegularExpressionMatch match = inName.match(file.fileName());
    if (match.hasMatch()) {
        const QStringList parts = match.capturedTexts().mid(1);
        if (const auto date = parseDate(parts.join(QLatin1Char('/')))) return *date;
    }
    return file.lastModified().date();
}

// Rows with the height of those in grids.
class AiryRows : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return QStyledItemDelegate::sizeHint(option, index).expandedTo(QSize(0, RowHeight));
    }

private:
    static constexpr int RowHeight = 26;
};

}  // namespace

FolderBrowser::FolderBrowser(QWidget* parent)
    : QWidget(parent),
      Drive1(new DriveList(this, [this] { listDrives(); })),
      Dir1(new QTreeView(this)),
      File1(new FileList(this, [this] { Q_EMIT FileClick(); })),
      chkNewest(new QCheckBox(QStringLiteral("&Newest first"), this)),
      m_icons(std::make_unique<FolderIcons>()) {
    Drive1->setAccessibleName(QStringLiteral("Drives"));
    Dir1->setAccessibleName(QStringLiteral("Folders"));
    File1->setAccessibleName(QStringLiteral("Files"));
    chkNewest->hide();
    chkNewest->setObjectName(QStringLiteral("chkNewest"));
    chkNewest->setAccessibleName(QStringLiteral("Newest first"));
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(Drive1, 0, 0);
    layout->addWidget(Dir1, 1, 0);
    layout->addWidget(File1, 2, 0);
    layout->addWidget(chkNewest, 3, 0);
    layout->setRowStretch(1, 1);
    layout->setRowStretch(2, 1);
    for (QAbstractItemView* list :
         {static_cast<QAbstractItemView*>(Dir1), static_cast<QAbstractItemView*>(File1)})
        list->setItemDelegate(new AiryRows(list));
    setUpTree();
    listDrives();
    connect(Drive1, &QComboBox::activated, this, &FolderBrowser::Drive1_Change);
    connect(Dir1->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &FolderBrowser::Dir1_Change);
    connect(File1, &QListWidget::itemClicked, this, &FolderBrowser::FileClick);
    connect(File1, &QListWidget::itemActivated, this, &FolderBrowser::FileClick);
    connect(chkNewest, &QCheckBox::clicked, this, &FolderBrowser::listFiles);
    // A save changes the folder several times.
    m_changed.setSingleShot(true);
    m_changed.setInterval(FolderRests);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_changed,
            qOverload<>(&QTimer::start));
    connect(&m_changed, &QTimer::timeout, this, &FolderBrowser::listFiles);
}

void FolderBrowser::setUpTree() {
    m_folders.setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
    m_folders.setReadOnly(true);
    m_folders.setIconProvider(m_icons.get());
    m_folders.setRootPath(QString());
    Dir1->setModel(&m_folders);
    // Folders are loaded little by little and sorted then; the selected one stays visible.
    connect(&m_folders, &QAbstractItemModel::layoutAboutToBeChanged, this, [this] {
        const QRect place = Dir1->visualRect(Dir1->currentIndex());
        m_inSight = Dir1->viewport()->rect().intersects(place);
    });
    connect(&m_folders, &QAbstractItemModel::layoutChanged, this, [this] {
        if (m_inSight) Dir1->scrollTo(Dir1->currentIndex());
    });
    Dir1->setHeaderHidden(true);
    for (int column = 1; column < m_folders.columnCount(); ++column) Dir1->hideColumn(column);
    Dir1->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    Dir1->header()->setStretchLastSection(false);
}

QString FolderBrowser::Path() const { return m_path; }

void FolderBrowser::Path(const QString& folder) {
    const QFileInfo info(QDir::cleanPath(resolvedPath(folder)));
    if (!info.isDir()) throw RunTimeError(RunTimeError::PathNotFound);
    if (!info.isReadable()) throw RunTimeError(RunTimeError::PathAccess);
    const QModelIndex index = m_folders.index(info.absoluteFilePath());
    Dir1->setCurrentIndex(index);
    Dir1->expand(index);
    Dir1->scrollTo(index);
}

void FolderBrowser::Pattern(const QString& pattern) {
    m_pattern = pattern;
    listFiles();
}

QString FolderBrowser::FileName() const {
    const QListWidgetItem* item = File1->currentItem();
    return item ? item->text() : QString();
}

QString FolderBrowser::FilePath() const {
    const QString name = FileName();
    return name.isEmpty() ? name : QDir(m_path).filePath(name);
}

void FolderBrowser::setMultiSelect(bool on) {
    File1->setSelectionMode(on ? QAbstractItemView::ExtendedSelection
                               : QAbstractItemView::SingleSelection);
}

void FolderBrowser::listDrives() {
    Drive1->clear();
    for (const Place& place : places()) Drive1->addItem(place.name, place.folder);
    showDrive();
}

// Shows the drive on which the selected folder is.
void FolderBrowser::showDrive() {
    qsizetype nearest = -1;
    Drive1->setCurrentIndex(-1);
    for (int i = 0; i < Drive1->count(); ++i) {
        const QString folder = Drive1->itemData(i).toString();
        if (!liesIn(m_path, folder) || folder.size() <= nearest) continue;
        nearest = folder.size();
        Drive1->setCurrentIndex(i);
    }
}

QStringList FolderBrowser::fileNames() const {
    if (m_path.isEmpty()) return {};
    QFileInfoList files = QDir(m_path).entryInfoList(
        {m_pattern}, QDir::Files, QDir::Name | QDir::IgnoreCase | QDir::LocaleAware);
    if (chkNewest->isChecked())
        std::stable_sort(files.begin(), files.end(), [](const QFileInfo& a, const QFileInfo& b) {
            return dateOfFile(a) > dateOfFile(b);
        });
    QStringList names;
    for (const QFileInfo& file : files) names.append(file.fileName());
    return names;
}

// What was selected stays so if the folder still has it.
void FolderBrowser::listFiles() {
    const QStringList names = fileNames();
    QStringList listed;
    for (int i = 0; i < File1->count(); ++i) listed.append(File1->item(i)->text());
    if (names == listed) return;
    QStringList selected;
    for (const QListWidgetItem* item : File1->selectedItems()) selected.append(item->text());
    const QString current = FileName();
    File1->clear();
    File1->addItems(names);
    const qsizetype row = names.indexOf(current);
    if (row >= 0) File1->setCurrentRow(int(row), QItemSelectionModel::NoUpdate);
    for (int i = 0; i < File1->count(); ++i)
        if (selected.contains(names[i])) File1->item(i)->setSelected(true);
}

void FolderBrowser::followFolder() {
    m_follows = true;
    watchFolder();
}

void FolderBrowser::watchFolder() {
    if (!m_follows) return;
    if (!m_watcher.directories().isEmpty()) m_watcher.removePaths(m_watcher.directories());
    if (!m_path.isEmpty()) m_watcher.addPath(m_path);
}

void FolderBrowser::Drive1_Change() {
    try {
        Path(Drive1->currentData().toString());
    } catch (const RunTimeError&) {
        // Missing or without permission: either way the drive cannot be read.
        showDrive();
        messageBox(QStringLiteral("Device Unavailable"));
    }
}

void FolderBrowser::Dir1_Change(const QModelIndex& folder) {
    m_path = m_folders.filePath(folder);
    File1->clear();
    watchFolder();
    listFiles();
    showDrive();
}
