// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// Draws the program's icon in the sizes that desktops need:
// lorvanite_make_icons FROM.svg FOLDER SIZE...    writes FOLDER/SIZE.png for each size in pixels
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fputs("usage: lorvanite_make_icons FROM.svg FOLDER SIZE...\n", stderr);
        return 2;
    }
    QSvgRenderer svg(QFile::decodeName(argv[1]));
    for (int i = 3; i < argc; ++i) {
        const int size = QByteArray(argv[i]).toInt();
        QImage image(size, size, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        svg.render(&painter);
        painter.end();
        const QString file =
            QFile::decodeName(argv[2]) + QStringLiteral("/%1.png").arg(QLatin1String(argv[i]));
        if (svg.isValid() && !image.isNull() && image.save(file)) continue;
        std::fprintf(stderr, "cannot draw %s as %s\n", argv[1], qPrintable(file));
        return 1;
    }
    return 0;
}
