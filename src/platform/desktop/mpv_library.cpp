// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/mpv_library.h"

#include "core/data/run_time_library.h"

#include <optional>

namespace {

std::optional<MpvLibrary> loadMpv() {
    QLibrary library(QStringLiteral("mpv"), 2);
    MpvLibrary mpv{};
    if (library.load() && resolve(library, "mpv_create", mpv.create) &&
        resolve(library, "mpv_initialize", mpv.initialize) &&
        resolve(library, "mpv_terminate_destroy", mpv.terminateDestroy) &&
        resolve(library, "mpv_set_option_string", mpv.setOptionString) &&
        resolve(library, "mpv_observe_property", mpv.observeProperty) &&
        resolve(library, "mpv_set_property_async", mpv.setPropertyAsync) &&
        resolve(library, "mpv_command_async", mpv.commandAsync) &&
        resolve(library, "mpv_wait_event", mpv.waitEvent) &&
        resolve(library, "mpv_set_wakeup_callback", mpv.setWakeupCallback))
        return mpv;
    return std::nullopt;
}

}  // namespace

const MpvLibrary* mpvLibrary() {
    static const std::optional<MpvLibrary> library = loadMpv();
    return library ? &*library : nullptr;
}
