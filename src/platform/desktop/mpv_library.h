// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// libmpv, loaded when the first sound is played.
#pragma once

#include <cstdint>

// The part of libmpv's C interface (version 2) that the player uses.
extern "C" {
struct mpv_handle;

enum mpv_format { MPV_FORMAT_NONE = 0, MPV_FORMAT_FLAG = 3, MPV_FORMAT_DOUBLE = 5 };

enum mpv_event_id { MPV_EVENT_NONE = 0, MPV_EVENT_PROPERTY_CHANGE = 22 };

struct mpv_event_property {
    const char* name;
    int format;  // an mpv_format
    void* data;
};

struct mpv_event {
    int event_id;  // an mpv_event_id
    int error;
    uint64_t reply_userdata;
    void* data;
};
}

struct MpvLibrary {
    mpv_handle* (*create)();
    int (*initialize)(mpv_handle*);
    void (*terminateDestroy)(mpv_handle*);
    int (*setOptionString)(mpv_handle*, const char* name, const char* value);
    int (*observeProperty)(mpv_handle*, uint64_t userdata, const char* name, int format);
    int (*setPropertyAsync)(mpv_handle*, uint64_t userdata, const char* name, int format, void*);
    int (*commandAsync)(mpv_handle*, uint64_t userdata, const char** words);
    mpv_event* (*waitEvent)(mpv_handle*, double timeout);
    void (*setWakeupCallback)(mpv_handle*, void (*callback)(void*), void* data);
};

// The library, loaded at the first call and kept until the process ends; null if it is not
// installed or lacks one of the functions.
const MpvLibrary* mpvLibrary();
