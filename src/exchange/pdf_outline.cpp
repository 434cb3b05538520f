// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/pdf_outline.h"

#include "exchange/qpdf_library.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

// A PDF in memory, which is closed with the object. The library keeps the first error of its calls,
// and a call that fails changes nothing, so they are checked together.
class PdfFile {
public:
    PdfFile(const QpdfLibrary& qpdf, const QByteArray& bytes) : m_qpdf(qpdf), m_file(qpdf.init()) {
        m_qpdf.silenceErrors(m_file);
        m_qpdf.setSuppressWarnings(m_file, QPDF_TRUE);
        m_qpdf.readMemory(m_file, "song book", bytes.constData(),
                          static_cast<unsigned long long>(bytes.size()), nullptr);
    }
    ~PdfFile() { m_qpdf.cleanup(&m_file); }
    PdfFile(const PdfFile&) = delete;
    PdfFile& operator=(const PdfFile&) = delete;

    bool hasError() const { return m_qpdf.hasError(m_file); }
    QString error() {
        return QString::fromUtf8(m_qpdf.getErrorFullText(m_file, m_qpdf.getError(m_file)));
    }

    int pages() { return m_qpdf.getNumPages(m_file); }
    void moveToFront(int count);
    void addBookmarks(const QList<PdfMark>& marks);
    void addLink(const PdfMark& mark);

    // Empty if anything has failed.
    QByteArray written();

private:
    // The n-th page, from 1.
    qpdf_oh page(int number) { return m_qpdf.getPageN(m_file, size_t(number - 1)); }
    qpdf_oh name(const char* text) { return m_qpdf.newName(m_file, text); }
    void set(qpdf_oh dictionary, const char* key, qpdf_oh value) {
        m_qpdf.replaceKey(m_file, dictionary, key, value);
    }
    qpdf_oh indirectDictionary() {
        return m_qpdf.makeIndirectObject(m_file, m_qpdf.newDictionary(m_file));
    }
    qpdf_oh numbers(std::initializer_list<double> values);
    qpdf_oh destination(int number);

    const QpdfLibrary& m_qpdf;
    qpdf_data m_file;
};

qpdf_oh PdfFile::numbers(std::initializer_list<double> values) {
    const qpdf_oh array = m_qpdf.newArray(m_file);
    for (const double value : values)
        m_qpdf.appendItem(m_file, array, m_qpdf.newRealFromDouble(m_file, value, 0));
    return array;
}

qpdf_oh PdfFile::destination(int number) {
    const qpdf_oh place = m_qpdf.newArray(m_file);
    m_qpdf.appendItem(m_file, place, page(number));
    m_qpdf.appendItem(m_file, place, name("/Fit"));
    return place;
}

// Moves the last pages.
void PdfFile::moveToFront(int count) {
    const int total = pages();
    for (int i = 0; i < std::min(count, total); ++i) {
        const qpdf_oh last = page(total);
        m_qpdf.removePage(m_file, last);
        m_qpdf.addPage(m_file, m_file, last, QPDF_TRUE);
    }
}

void PdfFile::addBookmarks(const QList<PdfMark>& marks) {
    const qpdf_oh outlines = indirectDictionary();
    set(outlines, "/Type", name("/Outlines"));
    set(outlines, "/Count", m_qpdf.newInteger(m_file, marks.size()));
    qpdf_oh last = 0;  // no object has this handle
    for (const PdfMark& mark : marks) {
        const qpdf_oh item = indirectDictionary();
        set(item, "/Title", m_qpdf.newUnicodeString(m_file, mark.title.toUtf8().constData()));
        set(item, "/Parent", outlines);
        set(item, "/Dest", destination(mark.page));
        if (last != 0) {
            set(item, "/Prev", last);
            set(last, "/Next", item);
        } else {
            set(outlines, "/First", item);
        }
        last = item;
    }
    set(outlines, "/Last", last);
    const qpdf_oh root = m_qpdf.getRoot(m_file);
    set(root, "/Outlines", outlines);
    set(root, "/PageMode", name("/UseOutlines"));
}

void PdfFile::addLink(const PdfMark& mark) {
    const qpdf_oh link = m_qpdf.newDictionary(m_file);
    set(link, "/Type", name("/Annot"));
    set(link, "/Subtype", name("/Link"));
    set(link, "/Rect",
        numbers({mark.link.left(), mark.link.top(), mark.link.right(), mark.link.bottom()}));
    set(link, "/Border", numbers({0, 0, 0}));
    set(link, "/Dest", destination(mark.page));
    const qpdf_oh page = this->page(mark.linkPage);
    if (!m_qpdf.hasKey(m_file, page, "/Annots")) set(page, "/Annots", m_qpdf.newArray(m_file));
    m_qpdf.appendItem(m_file, m_qpdf.getKey(m_file, page, "/Annots"), link);
}

QByteArray PdfFile::written() {
    m_qpdf.initWriteMemory(m_file);
    m_qpdf.write(m_file);
    if (hasError()) return {};
    return QByteArray(reinterpret_cast<const char*>(m_qpdf.getBuffer(m_file)),
                      qsizetype(m_qpdf.getBufferLength(m_file)));
}

bool arePagesOf(const QList<PdfMark>& marks, int pages) {
    return std::all_of(marks.begin(), marks.end(), [pages](const PdfMark& mark) {
        return mark.page >= 1 && mark.page <= pages && mark.linkPage <= pages;
    });
}

}  // namespace

QByteArray withOutline(const QByteArray& pdf, int contents, const QList<PdfMark>& marks,
                       QString& problem) {
    const auto fail = [&problem](const QString& why) {
        problem = u"The bookmarks could not be added: "_s + why;
        return QByteArray();
    };
    const QpdfLibrary* qpdf = qpdfLibrary();
    if (!qpdf) return fail(u"libqpdf is not installed"_s);
    PdfFile file(*qpdf, pdf);
    if (file.hasError()) return fail(file.error());
    const QList<PdfMark> all = QList<PdfMark>{{u"Contents"_s, 1, 0, {}}} + marks;
    if (!arePagesOf(all, file.pages())) return fail(u"a page is not there"_s);
    file.moveToFront(contents);
    file.addBookmarks(all);
    for (const PdfMark& mark : marks)
        if (mark.linkPage > 0) file.addLink(mark);
    const QByteArray bytes = file.written();
    return bytes.isEmpty() ? fail(file.error()) : bytes;
}
