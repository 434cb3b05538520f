// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Keeps what is in a window's grids and fields while it is not saved.
#pragma once

#include "platform/desktop/kept_work.h"

#include <functional>
#include <vector>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QTextEdit;
class SheetView;

// Keeps a grid's document in the form of its files. `isWhole` may say that the grid is not as the
// user has left it; it is not kept then. `broughtBack` runs after a document was brought back.
KeptWork* keepGrid(FormBase& window, UnsavedKind kind, SheetView& grid,
                   const std::function<void()>& broughtBack = {},
                   const std::function<bool()>& isWhole = {});

// The controls of a form, each under a name.
class KeptControls {
public:
    void add(const QString& name, QLineEdit* control);
    void add(const QString& name, QTextEdit* control);
    void add(const QString& name, QPlainTextEdit* control);
    void add(const QString& name, QCheckBox* control);
    // A label that holds a key.
    void add(const QString& name, QLabel* control);
    // The texts of a grid; a grid of another number of rows gets that number back.
    void add(const QString& name, SheetView* control);

    // The texts as they are now.
    FormFields read() const;

    // Writes all texts, also empty ones, and leaves controls alone that the fields do not name.
    void write(const FormFields& fields) const;

    // Has changes of the controls told.
    void watch(KeptWork& work) const;

private:
    struct Control {
        QString name;
        std::function<QString()> read;
        std::function<void(const QString&)> write;
        std::function<void(KeptWork&)> watch;
    };
    std::vector<Control> m_controls;
};

// Keeps the fields of a form. `broughtBack` runs after they were brought back.
KeptWork* keepControls(FormBase& window, UnsavedKind kind, const KeptControls& controls,
                       const std::function<void()>& broughtBack = {});
