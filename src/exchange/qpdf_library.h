// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// libqpdf, loaded when the first song book is made.
#pragma once

#include <qpdf/qpdf-c.h>

// The functions of libqpdf's C interface that add an outline.
struct QpdfLibrary {
    decltype(&qpdf_init) init;
    decltype(&qpdf_cleanup) cleanup;
    decltype(&qpdf_silence_errors) silenceErrors;
    decltype(&qpdf_set_suppress_warnings) setSuppressWarnings;
    decltype(&qpdf_has_error) hasError;
    decltype(&qpdf_get_error) getError;
    decltype(&qpdf_get_error_full_text) getErrorFullText;
    decltype(&qpdf_read_memory) readMemory;
    decltype(&qpdf_init_write_memory) initWriteMemory;
    decltype(&qpdf_write) write;
    decltype(&qpdf_get_buffer) getBuffer;
    decltype(&qpdf_get_buffer_length) getBufferLength;
    decltype(&qpdf_get_num_pages) getNumPages;
    decltype(&qpdf_get_page_n) getPageN;
    decltype(&qpdf_add_page) addPage;
    decltype(&qpdf_remove_page) removePage;
    decltype(&qpdf_get_root) getRoot;
    decltype(&qpdf_make_indirect_object) makeIndirectObject;
    decltype(&qpdf_oh_new_dictionary) newDictionary;
    decltype(&qpdf_oh_new_array) newArray;
    decltype(&qpdf_oh_new_name) newName;
    decltype(&qpdf_oh_new_integer) newInteger;
    decltype(&qpdf_oh_new_real_from_double) newRealFromDouble;
    decltype(&qpdf_oh_new_unicode_string) newUnicodeString;
    decltype(&qpdf_oh_append_item) appendItem;
    decltype(&qpdf_oh_has_key) hasKey;
    decltype(&qpdf_oh_get_key) getKey;
    decltype(&qpdf_oh_replace_key) replaceKey;
};

// The library, loaded at the first call; null if it is not installed or lacks one of the functions.
const QpdfLibrary* qpdfLibrary();
