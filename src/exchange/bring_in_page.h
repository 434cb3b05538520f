// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The page Bring In: songs, people and played dates of other programs.
#pragma once

#include "exchange/import_plan.h"
#include "platform/desktop/form.h"
#include "ui_bring_in_page.h"

class BringInPage : public QWidget, public Ui::BringInPage {
public:
    explicit BringInPage(QWidget* parent = nullptr);

    OnFailure onFailure() const { return OnFailure::EndsCommand; }

    // Reads files and folders, and adds what they hold to the preview.
    void addPaths(const QStringList& paths);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void cmdFiles_Click();
    void cmdFolder_Click();
    void cmdClear_Click();
    void cmdImport_Click();
    void cmdReport_Click();
    void lstThemes_Change();
    void choice_Change();

    void offerCategories();
    void makePlan();
    void listThemes();
    void showPlan();
    ImportChoices choices() const;

    QList<ImportSource> m_sources;
    ImportPlan m_plan;
    bool m_isDone = false;  // the plan on view has been carried out
};
