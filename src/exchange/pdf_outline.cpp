// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/pdf_outline.h"

// The library's older kind of pointer is not used here.
#define POINTERHOLDER_TRANSITION 4
#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFWriter.hh>

#include <exception>

using namespace Qt::Literals::StringLiterals;

namespace {

using Pages = std::vector<QPDFPageObjectHelper>;

Pages movedToFront(QPDF& file, int count) {
    QPDFPageDocumentHelper document(file);
    const Pages pages = document.getAllPages();
    const auto first = pages.end() - std::min<qsizetype>(count, qsizetype(pages.size()));
    for (auto page = pages.end(); page-- != first;) {
        document.removePage(*page);
        document.addPage(*page, true);
    }
    return document.getAllPages();
}

QPDFObjectHandle destination(Pages& pages, int number) {
    QPDFObjectHandle place = QPDFObjectHandle::newArray();
    place.appendItem(pages.at(size_t(number - 1)).getObjectHandle());
    place.appendItem(QPDFObjectHandle::newName("/Fit"));
    return place;
}

void addBookmarks(QPDF& file, Pages& pages, const QList<PdfMark>& marks) {
    QPDFObjectHandle outlines = file.makeIndirectObject(QPDFObjectHandle::newDictionary());
    outlines.replaceKey("/Type", QPDFObjectHandle::newName("/Outlines"));
    outlines.replaceKey("/Count", QPDFObjectHandle::newInteger(marks.size()));
    QPDFObjectHandle last;
    for (const PdfMark& mark : marks) {
        QPDFObjectHandle item = file.makeIndirectObject(QPDFObjectHandle::newDictionary());
        item.replaceKey("/Title", QPDFObjectHandle::newUnicodeString(mark.title.toStdString()));
        item.replaceKey("/Parent", outlines);
        item.replaceKey("/Dest", destination(pages, mark.page));
        if (last.isInitialized()) {
            item.replaceKey("/Prev", last);
            last.replaceKey("/Next", item);
        } else {
            outlines.replaceKey("/First", item);
        }
        last = item;
    }
    outlines.replaceKey("/Last", last);
    file.getRoot().replaceKey("/Outlines", outlines);
    file.getRoot().replaceKey("/PageMode", QPDFObjectHandle::newName("/UseOutlines"));
}

void addLink(QPDF& file, Pages& pages, const PdfMark& mark) {
    QPDFObjectHandle link = file.makeIndirectObject(QPDFObjectHandle::newDictionary());
    link.replaceKey("/Type", QPDFObjectHandle::newName("/Annot"));
    link.replaceKey("/Subtype", QPDFObjectHandle::newName("/Link"));
    link.replaceKey(
        "/Rect", QPDFObjectHandle::newFromRectangle(
                     {mark.link.left(), mark.link.top(), mark.link.right(), mark.link.bottom()}));
    link.replaceKey("/Border", QPDFObjectHandle::parse("[0 0 0]"));
    link.replaceKey("/Dest", destination(pages, mark.page));
    QPDFObjectHandle page = pages.at(size_t(mark.linkPage - 1)).getObjectHandle();
    if (!page.hasKey("/Annots")) page.replaceKey("/Annots", QPDFObjectHandle::newArray());
    page.getKey("/Annots").appendItem(link);
}

}  // namespace

QByteArray withOutline(const QByteArray& pdf, int contents, const QList<PdfMark>& marks,
                       QString& problem) try {
    QPDF file;
    file.setSuppressWarnings(true);
    file.processMemoryFile("song book", pdf.constData(), size_t(pdf.size()));
    Pages pages = movedToFront(file, contents);
    addBookmarks(file, pages, QList<PdfMark>{{u"Contents"_s, 1, 0, {}}} + marks);
    for (const PdfMark& mark : marks)
        if (mark.linkPage > 0) addLink(file, pages, mark);
    QPDFWriter writer(file);
    writer.setOutputMemory();
    writer.write();
    const auto bytes = writer.getBufferSharedPointer();
    return QByteArray(reinterpret_cast<const char*>(bytes->getBuffer()),
                      qsizetype(bytes->getSize()));
} catch (const std::exception& error) {
    problem = u"The bookmarks could not be added: "_s + QString::fromUtf8(error.what());
    return {};
}
