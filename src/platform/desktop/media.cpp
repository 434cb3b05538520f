// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/media.h"

#include "core/data/paths.h"
#include "platform/desktop/mpv_library.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QPointer>

#include <algorithm>
#include <clocale>
#include <cstring>
#include <vector>

namespace {

struct Option {
    const char* name;
    const char* value;
};

// Only the sound of this file: no video, no settings or scripts of the user's own player, nothing
// from the network, and no other file that the file refers to.
constexpr Option Options[] = {
    {"config", "no"},
    {"terminal", "no"},
    {"vid", "no"},
    {"sid", "no"},
    {"audio-display", "no"},
    {"load-scripts", "no"},
    {"ytdl", "no"},
    {"access-references", "no"},
    {"autoload-files", "no"},
    {"demuxer-lavf-o", "protocol_whitelist=[file]"},
    {"keep-open", "yes"},
    {"keep-open-pause", "no"},
    {"ao", "pipewire,pulse,alsa"},
    {"audio-fallback-to-null", "yes"},
    {"pause", "yes"},
    {"audio-client-name", "Lorvanite"},
};

bool isTrue(const mpv_event_property& property) {
    return property.format == MPV_FORMAT_FLAG && *static_cast<int*>(property.data);
}

}  // namespace

Media::Media(QObject* parent) : QObject(parent) {}

Media::~Media() {
    if (!m_player) return;
    mpvLibrary()->setWakeupCallback(m_player, nullptr, nullptr);
    mpvLibrary()->terminateDestroy(m_player);
}

void Media::createPlayer() {
    if (m_player || !mpvLibrary()) return;
    // The player refuses to start if the decimal separator is not a point.
    std::setlocale(LC_NUMERIC, "C");
    mpv_handle* player = mpvLibrary()->create();
    if (!player) return;
    for (const Option& option : Options)
        mpvLibrary()->setOptionString(player, option.name, option.value);
    if (mpvLibrary()->initialize(player) < 0) {
        mpvLibrary()->terminateDestroy(player);
        return;
    }
    mpvLibrary()->observeProperty(player, 0, "idle-active", MPV_FORMAT_FLAG);
    mpvLibrary()->observeProperty(player, 0, "pause", MPV_FORMAT_FLAG);
    mpvLibrary()->observeProperty(player, 0, "eof-reached", MPV_FORMAT_FLAG);
    mpvLibrary()->observeProperty(player, 0, "time-pos", MPV_FORMAT_DOUBLE);
    m_player = player;
    // The callback runs in a thread of the player.
    mpvLibrary()->setWakeupCallback(
        player,
        [](void* media) {
            auto* self = static_cast<Media*>(media);
            self->m_calls.post([self] { self->takeEvents(); });
        },
        this);
}

void Media::takeEvents() {
    for (;;) {
        const mpv_event* event = mpvLibrary()->waitEvent(m_player, 0);
        if (event->event_id == MPV_EVENT_NONE) return;
        if (event->event_id != MPV_EVENT_PROPERTY_CHANGE) continue;
        const auto& property = *static_cast<const mpv_event_property*>(event->data);
        if (std::strcmp(property.name, "idle-active") == 0)
            m_open = !isTrue(property);
        else if (std::strcmp(property.name, "pause") == 0)
            m_held = isTrue(property);
        else if (std::strcmp(property.name, "eof-reached") == 0)
            m_atEnd = isTrue(property);
        else
            // Negative until the first sound reaches the loudspeaker.
            m_position = property.format == MPV_FORMAT_DOUBLE
                             ? std::max(0.0, *static_cast<double*>(property.data))
                             : 0;
    }
}

Media::State Media::state() const {
    if (!m_open) return State::Closed;
    return m_held || m_atEnd ? State::Held : State::Playing;
}

void Media::Command(const QString& word) {
    const auto is = [&](const char* wanted) {
        return word.compare(QLatin1String(wanted), Qt::CaseInsensitive) == 0;
    };
    if (is("open")) openFile();
    if (!m_player) return;
    if (is("close")) {
        send({"stop"});
    } else if (is("play")) {
        if (m_atEnd) goToStart();
        hold(false);
    } else if (is("pause")) {
        hold(true);
    } else if (is("stop")) {
        hold(true);
        goToStart();
    }
}

void Media::openFile() {
    const QFileInfo file(resolvedPath(FileName));
    const bool there = file.isFile();
    if (there) createPlayer();
    if (!m_player) return;
    hold(true);
    m_atEnd = false;
    // An absolute path begins with a slash, so it cannot be taken for a URL or an option.
    if (there)
        send({"loadfile", QFile::encodeName(file.absoluteFilePath()).constData()});
    else
        send({"stop"});
}

void Media::hold(bool on) {
    int flag = on;
    mpvLibrary()->setPropertyAsync(m_player, 0, "pause", MPV_FORMAT_FLAG, &flag);
}

void Media::goToStart() { send({"seek", "0", "absolute+exact"}); }

// The player copies the command before the call returns and runs commands in their order.
void Media::send(std::initializer_list<const char*> words) {
    std::vector<const char*> list(words);
    list.push_back(nullptr);
    mpvLibrary()->commandAsync(m_player, 0, list.data());
}

Media& soundDevice() {
    static QPointer<Media> device;
    if (!device) device = new Media(QCoreApplication::instance());
    return *device;
}
