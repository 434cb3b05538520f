// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/printed.h"

#include "platform/paper/printing.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

namespace {

QString output(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0) return {};
    return QString::fromUtf8(process.readAllStandardOutput());
}

}  // namespace

PrintedFile::PrintedFile(const QString& pdf, QPageSize::PageSizeId paper) : path(pdf) {
    setPrintTarget(path, paper);
}

PrintedFile::~PrintedFile() { setPrintTarget({}); }

QStringList printedPages(const QString& pdf) {
    const QString text =
        output(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    QStringList pages = text.split(QLatin1Char('\f'));
    pages.removeLast();  // each page ends with the mark
    return pages;
}

QHash<QString, QRectF> printedWords(const QString& pdf, int page) {
    const QString number = QString::number(page);
    QXmlStreamReader xml(output(QStringLiteral("pdftotext"),
                                {QStringLiteral("-bbox"), QStringLiteral("-f"), number,
                                 QStringLiteral("-l"), number, pdf, QStringLiteral("-")}));
    QHash<QString, QRectF> words;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != QLatin1String("word"))
            continue;
        const QXmlStreamAttributes edges = xml.attributes();
        const auto edge = [&](const char* name) {
            return edges.value(QLatin1String(name)).toDouble();
        };
        const QRectF place(QPointF(edge("xMin"), edge("yMin")),
                           QPointF(edge("xMax"), edge("yMax")));
        words[xml.readElementText()] = place;
    }
    return words;
}

QList<QImage> pagePictures(const QString& pdf, int dpi) {
    const QTemporaryDir folder;
    output(QStringLiteral("pdftoppm"),
           {QStringLiteral("-png"), QStringLiteral("-r"), QString::number(dpi), pdf,
            folder.filePath(QStringLiteral("page"))});
    QList<QImage> pictures;
    const QDir dir(folder.path());
    for (const QString& name : dir.entryList(QDir::Files, QDir::Name))
        pictures.append(QImage(dir.filePath(name)));
    return pictures;
}

QStringList printedFonts(const QString& pdf) {
    QStringList fonts;
    const QStringList lines = output(QStringLiteral("pdffonts"), {pdf}).split(QLatin1Char('\n'));
    for (const QString& line : lines.mid(2)) {
        // name, type, encoding, emb, sub, uni, object: from the right, since a type has blanks.
        const QStringList words = line.simplified().split(QLatin1Char(' '));
        if (words.size() < 7) continue;
        fonts.append(words.first() + QLatin1Char(' ') + words[words.size() - 5]);
    }
    return fonts;
}
