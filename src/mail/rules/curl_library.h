// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// libcurl, loaded when the first message is sent.
#pragma once

#include <curl/curl.h>

// The functions of libcurl that the mail connection uses.
struct CurlLibrary {
    decltype(&curl_easy_init) easyInit;
    decltype(&curl_easy_setopt) easySetopt;
    decltype(&curl_easy_perform) easyPerform;
    decltype(&curl_easy_getinfo) easyGetinfo;
    decltype(&curl_easy_strerror) easyStrerror;
    decltype(&curl_easy_cleanup) easyCleanup;
    decltype(&curl_slist_append) slistAppend;
    decltype(&curl_slist_free_all) slistFreeAll;
    decltype(&curl_mime_init) mimeInit;
    decltype(&curl_mime_free) mimeFree;
    decltype(&curl_mime_addpart) mimeAddpart;
    decltype(&curl_mime_data) mimeData;
    decltype(&curl_mime_data_cb) mimeDataCb;
    decltype(&curl_mime_subparts) mimeSubparts;
    decltype(&curl_mime_headers) mimeHeaders;
    decltype(&curl_mime_type) mimeType;
    decltype(&curl_mime_encoder) mimeEncoder;
};

// The library, loaded and initialized at the first call, which has to come before the thread that
// sends; null if it is not installed or lacks one of the functions.
const CurlLibrary* curlLibrary();
