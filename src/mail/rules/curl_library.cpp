// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "mail/rules/curl_library.h"

#include "core/data/run_time_library.h"

#include <optional>

namespace {

std::optional<CurlLibrary> loadCurl() {
    QLibrary library(QStringLiteral("curl"), 4);
    CurlLibrary curl{};
    decltype(&curl_global_init) globalInit = nullptr;
    if (library.load() && resolve(library, "curl_global_init", globalInit) &&
        resolve(library, "curl_easy_init", curl.easyInit) &&
        resolve(library, "curl_easy_setopt", curl.easySetopt) &&
        resolve(library, "curl_easy_perform", curl.easyPerform) &&
        resolve(library, "curl_easy_getinfo", curl.easyGetinfo) &&
        resolve(library, "curl_easy_strerror", curl.easyStrerror) &&
        resolve(library, "curl_easy_cleanup", curl.easyCleanup) &&
        resolve(library, "curl_slist_append", curl.slistAppend) &&
        resolve(library, "curl_slist_free_all", curl.slistFreeAll) &&
        resolve(library, "curl_mime_init", curl.mimeInit) &&
        resolve(library, "curl_mime_free", curl.mimeFree) &&
        resolve(library, "curl_mime_addpart", curl.mimeAddpart) &&
        resolve(library, "curl_mime_data", curl.mimeData) &&
        resolve(library, "curl_mime_data_cb", curl.mimeDataCb) &&
        resolve(library, "curl_mime_subparts", curl.mimeSubparts) &&
        resolve(library, "curl_mime_headers", curl.mimeHeaders) &&
        resolve(library, "curl_mime_type", curl.mimeType) &&
        resolve(library, "curl_mime_encoder", curl.mimeEncoder) &&
        globalInit(CURL_GLOBAL_DEFAULT) == CURLE_OK)
        return curl;
    return std::nullopt;
}

}  // namespace

const CurlLibrary* curlLibrary() {
    static const std::optional<CurlLibrary> library = loadCurl();
    return library ? &*library : nullptr;
}
