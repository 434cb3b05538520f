// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/grid_view/kept_controls.h"

#include "platform/desktop/form.h"
#include "platform/desktop/raw_text.h"
#include "platform/grid_view/sheet_view.h"

#include <QCheckBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

#include <algorithm>

namespace {

// The most rows that are read back: no form has as many.
constexpr qsizetype MostFormRows = 10'000;

QString gridTexts(const SheetGrid& grid) {
    QJsonArray rows;
    for (int row = 1; row <= grid.MaxRows(); ++row) {
        QJsonArray texts;
        for (int col = 1; col <= grid.MaxCols(); ++col) texts.append(grid.GetText(col, row));
        rows.append(texts);
    }
    return QString::fromUtf8(QJsonDocument(rows).toJson(QJsonDocument::Compact));
}

void setGridTexts(SheetGrid& grid, const QString& texts) {
    const QJsonArray rows = QJsonDocument::fromJson(texts.toUtf8()).array();
    if (rows.size() > MostFormRows) return;
    if (rows.size() != grid.MaxRows()) grid.MaxRows(int(rows.size()));
    for (int row = 1; row <= grid.MaxRows(); ++row) {
        const QJsonArray cells = rows.at(row - 1).toArray();
        for (int col = 1; col <= grid.MaxCols(); ++col)
            grid.SetText(col, row, cells.at(col - 1).toString());
    }
}

}  // namespace

KeptWork* keepGrid(FormBase& window, UnsavedKind kind, SheetView& grid,
                   const std::function<void()>& broughtBack, const std::function<bool()>& isWhole) {
    KeptWork::Work work;
    work.kind = kind;
    work.content = [&grid, isWhole] {
        return isWhole && !isWhole() ? QByteArray() : grid.fileBytes();
    };
    work.comparison = [&grid] { return grid.contentSum(); };
    work.bringBack = [&grid, broughtBack](const QString& path) {
        if (!grid.LoadFromFile(path)) return false;
        grid.EditModeReplace(true);
        if (broughtBack) broughtBack();
        return true;
    };
    auto* kept = new KeptWork(window, work);
    kept->watch(&grid, &SheetView::ContentChanged);
    return kept;
}

void KeptControls::add(const QString& name, QLineEdit* control) {
    m_controls.push_back({name, [=] { return control->text(); },
                          [=](const QString& text) { control->setText(text); },
                          [=](KeptWork& work) { work.watch(control, &QLineEdit::textChanged); }});
}

void KeptControls::add(const QString& name, QTextEdit* control) {
    m_controls.push_back({name, [=] { return rawTextOf(*control->document()); },
                          [=](const QString& text) { control->setPlainText(text); },
                          [=](KeptWork& work) { work.watch(control, &QTextEdit::textChanged); }});
}

void KeptControls::add(const QString& name, QPlainTextEdit* control) {
    m_controls.push_back(
        {name, [=] { return rawTextOf(*control->document()); },
         [=](const QString& text) { control->setPlainText(text); },
         [=](KeptWork& work) { work.watch(control, &QPlainTextEdit::textChanged); }});
}

void KeptControls::add(const QString& name, QCheckBox* control) {
    const QString on = QStringLiteral("true");
    m_controls.push_back({name, [=] { return control->isChecked() ? on : QString(); },
                          [=](const QString& text) { control->setChecked(text == on); },
                          [=](KeptWork& work) { work.watch(control, &QCheckBox::toggled); }});
}

void KeptControls::add(const QString& name, QLabel* control) {
    m_controls.push_back({name, [=] { return control->text(); },
                          [=](const QString& text) { control->setText(text); }, [](KeptWork&) {}});
}

void KeptControls::add(const QString& name, SheetView* control) {
    m_controls.push_back(
        {name, [=] { return gridTexts(*control); },
         [=](const QString& text) { setGridTexts(*control, text); },
         [=](KeptWork& work) { work.watch(control, &SheetView::ContentChanged); }});
}

FormFields KeptControls::read() const {
    FormFields fields;
    for (const Control& control : m_controls) fields.insert(control.name, control.read());
    return fields;
}

void KeptControls::write(const FormFields& fields) const {
    for (const Control& control : m_controls)
        if (fields.contains(control.name)) control.write(fields.value(control.name));
}

void KeptControls::watch(KeptWork& work) const {
    for (const Control& control : m_controls) control.watch(work);
}

KeptWork* keepControls(FormBase& window, UnsavedKind kind, const KeptControls& controls,
                       const std::function<void()>& broughtBack) {
    KeptWork::Work work;
    work.kind = kind;
    work.content = [controls] { return writeFields(controls.read()); };
    work.bringBack = [controls, broughtBack](const QString& path) {
        const auto fields = readFields(UnsavedStore::load(path).value_or(QByteArray()));
        if (!fields) return false;
        controls.write(*fields);
        if (broughtBack) broughtBack();
        return true;
    };
    auto* kept = new KeptWork(window, work);
    controls.watch(*kept);
    return kept;
}
