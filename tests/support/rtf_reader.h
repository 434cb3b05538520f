// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// An RTF file as another program reads it.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

// Characters with the same format.
struct RtfRun {
    QString text;
    QString font;
    double points = 0;
    bool bold = false;
    bool italic = false;
    bool operator==(const RtfRun&) const = default;
};

struct RtfParagraph {
    QString align;             // "ql", "qc", "qr" or "qj"
    RtfRun end;                // the format at its end, without text
    std::vector<RtfRun> runs;  // none is empty
    QString text() const;
};

// The paragraphs of a file; empty if it is not well-formed.
std::vector<RtfParagraph> rtfParagraphs(const QByteArray& rtf);

// The texts of the paragraphs.
QStringList rtfLines(const QByteArray& rtf);
