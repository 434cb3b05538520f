// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/qpdf_library.h"

#include "core/data/run_time_library.h"

#include <optional>

namespace {

std::optional<QpdfLibrary> loadQpdf() {
    QLibrary library(QStringLiteral("qpdf"), 29);
    QpdfLibrary qpdf{};
    if (library.load() && resolve(library, "qpdf_init", qpdf.init) &&
        resolve(library, "qpdf_cleanup", qpdf.cleanup) &&
        resolve(library, "qpdf_silence_errors", qpdf.silenceErrors) &&
        resolve(library, "qpdf_set_suppress_warnings", qpdf.setSuppressWarnings) &&
        resolve(library, "qpdf_has_error", qpdf.hasError) &&
        resolve(library, "qpdf_get_error", qpdf.getError) &&
        resolve(library, "qpdf_get_error_full_text", qpdf.getErrorFullText) &&
        resolve(library, "qpdf_read_memory", qpdf.readMemory) &&
        resolve(library, "qpdf_init_write_memory", qpdf.initWriteMemory) &&
        resolve(library, "qpdf_write", qpdf.write) &&
        resolve(library, "qpdf_get_buffer", qpdf.getBuffer) &&
        resolve(library, "qpdf_get_buffer_length", qpdf.getBufferLength) &&
        resolve(library, "qpdf_get_num_pages", qpdf.getNumPages) &&
        resolve(library, "qpdf_get_page_n", qpdf.getPageN) &&
        resolve(library, "qpdf_add_page", qpdf.addPage) &&
        resolve(library, "qpdf_remove_page", qpdf.removePage) &&
        resolve(library, "qpdf_get_root", qpdf.getRoot) &&
        resolve(library, "qpdf_make_indirect_object", qpdf.makeIndirectObject) &&
        resolve(library, "qpdf_oh_new_dictionary", qpdf.newDictionary) &&
        resolve(library, "qpdf_oh_new_array", qpdf.newArray) &&
        resolve(library, "qpdf_oh_new_name", qpdf.newName) &&
        resolve(library, "qpdf_oh_new_integer", qpdf.newInteger) &&
        resolve(library, "qpdf_oh_new_real_from_double", qpdf.newRealFromDouble) &&
        resolve(library, "qpdf_oh_new_unicode_string", qpdf.newUnicodeString) &&
        resolve(library, "qpdf_oh_append_item", qpdf.appendItem) &&
        resolve(library, "qpdf_oh_has_key", qpdf.hasKey) &&
        resolve(library, "qpdf_oh_get_key", qpdf.getKey) &&
        resolve(library, "qpdf_oh_replace_key", qpdf.replaceKey))
        return qpdf;
    return std::nullopt;
}

}  // namespace

const QpdfLibrary* qpdfLibrary() {
    static const std::optional<QpdfLibrary> library = loadQpdf();
    return library ? &*library : nullptr;
}
