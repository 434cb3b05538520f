// What another program reads in an RTF file.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

// Letters of one look.
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
    RtfRun end;                // the look at its end, without text
    std::vector<RtfRun> runs;  // each with a text
    QString text() const;
};

// The paragraphs of a file; none where it is not well-formed.
std::vector<RtfParagraph> rtfParagraphs(const QByteArray& rtf);

// Their texts.
QStringList rtfLines(const QByteArray& rtf);
