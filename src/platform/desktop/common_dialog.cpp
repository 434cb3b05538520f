// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/common_dialog.h"

#include "core/data/paths.h"
#include "core/data/run_time_error.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/help_window.h"
#include "platform/desktop/message_box.h"

#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMainWindow>

#include <algorithm>

namespace {

struct FileFilter {
    QString name;
    QStringList patterns;
};

QList<FileFilter> filtersOf(const QString& filter) {
    QList<FileFilter> filters;
    const QStringList parts = filter.split(QLatin1Char('|'));
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        filters.append({parts[i].section(QLatin1Char('('), 0, 0).trimmed(),
                        parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts)});
    return filters;
}

// The path of one file, or the folder and the names of several, separated by NUL.
QString joinedNames(const QStringList& files) {
    if (files.size() < 2) return QDir::toNativeSeparators(files.value(0));
    const QDir folder = QFileInfo(files.first()).dir();
    QStringList parts{folder.path()};
    for (const QString& file : files) parts += folder.relativeFilePath(file);
    return QDir::toNativeSeparators(parts.join(QChar(u'\0')));
}

// A file dialog that adds the extension of its filter to a name to save before it checks whether
// the file exists.
class FileDialog : public QFileDialog {
public:
    using QFileDialog::QFileDialog;

    QStringList patterns;

    void accept() override {
        auto* edit = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        if (acceptMode() == AcceptSave && edit) edit->setText(withEnding(edit->text()));
        QFileDialog::accept();
    }

private:
    static bool isWebPage(const QString& name) {
        return name.endsWith(QLatin1String(".htm"), Qt::CaseInsensitive) ||
               name.endsWith(QLatin1String(".html"), Qt::CaseInsensitive);
    }

    QString withEnding(const QString& name) const {
        if (name.isEmpty() || patterns.isEmpty() || QDir::match(patterns, fileNameOf(name)) ||
            QFileInfo(directory(), name).isDir())
            return name;
        const QString ending = patterns.first().mid(1);
        if (isWebPage(ending) && isWebPage(name)) return name;
        return ending.startsWith(QLatin1Char('.')) && !ending.contains(QLatin1Char('*'))
                   ? name + ending
                   : name;
    }
};

}  // namespace

void CommonDialog::ShowOpen() { show(false); }

void CommonDialog::ShowSave() { show(true); }

bool CommonDialog::chosen(void (CommonDialog::*show)()) {
    CancelError = true;
    try {
        (this->*show)();
    } catch (const RunTimeError& error) {
        return error.number() != RunTimeError::DialogCancelled;
    }
    return true;
}

void CommonDialog::show(bool saves) {
    FileDialog dialog(mainWindow());
    // The desktop's own dialog would neither add extensions nor follow the theme.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !(Flags & OverwritePrompt));
    dialog.setAcceptMode(saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    const bool takesSeveral = !saves && (Flags & AllowMultiselect);
    dialog.setFileMode(saves          ? QFileDialog::AnyFile
                       : takesSeveral ? QFileDialog::ExistingFiles
                                      : QFileDialog::ExistingFile);
    if (!DialogTitle.isEmpty()) dialog.setWindowTitle(DialogTitle);
    if (!InitDir.isEmpty()) dialog.setDirectory(resolvedPath(InitDir));
    QStringList names;
    const QList<FileFilter> filters = filtersOf(Filter);
    for (const FileFilter& filter : filters)
        names.append(filter.name + QStringLiteral(" (") + filter.patterns.join(QLatin1Char(' ')) +
                     QLatin1Char(')'));
    if (!names.isEmpty()) {
        const int first = std::clamp(FilterIndex, 1, int(names.size())) - 1;
        dialog.setNameFilters(names);
        dialog.selectNameFilter(names[first]);
        dialog.patterns = filters[first].patterns;
    }
    if (!FileName.isEmpty()) dialog.selectFile(resolvedPath(FileName));
    if (dialog.exec() != QDialog::Accepted) {
        if (CancelError) throw RunTimeError(RunTimeError::DialogCancelled);
        return;
    }
    FileName = joinedNames(dialog.selectedFiles());
}

QString CommonDialog::chosenFolder(const QString& title, const QString& button,
                                   const QString& start) {
    FileDialog dialog(mainWindow());
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setWindowTitle(title);
    dialog.setLabelText(QFileDialog::Accept, button);
    dialog.setLabelText(QFileDialog::FileName, QStringLiteral("Folder:"));
    dialog.setDirectory(start);
    if (dialog.exec() != QDialog::Accepted) return {};
    return QDir::toNativeSeparators(dialog.selectedFiles().value(0));
}

void CommonDialog::ShowHelp(const QString& heading) {
    const QString file = resolvedPath(HelpFile);
    if (!QFileInfo::exists(file)) {
        messageBox(QStringLiteral("The help file \"%1\" is missing.").arg(file),
                   BoxIcon::Exclamation);
        return;
    }
    if (!m_help) m_help = new HelpWindow(mainWindow());
    static_cast<HelpWindow*>(m_help.data())->showFile(file, heading);
}
