# SPDX-FileCopyrightText: The Lorvanite authors
# SPDX-License-Identifier: GPL-3.0-or-later

# Sourced by run, test and packaging: installs Debian packages that are missing, by name.

# What the program is built with, and what it needs to run.
build_packages=(g++ cmake ninja-build qt6-base-dev qt6-base-dev-tools qt6-svg-dev libsqlite3-dev
    libcurl4-openssl-dev libical-dev libqpdf-dev fonts-liberation fonts-inter)

# What the tests need beyond that.
test_packages=(libmpv2 ccache chordii clang ffmpeg clang-format git libxml2-utils sqlite3 python3
    python3-aiosmtpd python3-icalendar openssl pandoc poppler-utils qpdf locales
    reuse unrtf)

# need_packages NAME...: installs those that are missing, without recommended packages.
need_packages() {
    local missing=() package
    local installed
    installed=" $(dpkg-query -W -f='${Package} ${Status}\n' "$@" 2>/dev/null |
        sed -n 's/ install ok installed$//p' | tr '\n' ' ') "
    for package in "$@"; do
        [[ $installed == *" $package "* ]] || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    local as_root=() start=$SECONDS
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    echo "Installing: ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq \
        --no-install-recommends "${missing[@]}" >/dev/null
    echo "Packages installed in $((SECONDS - start)) s."
}

# build PRESET TARGET...: configures once, builds, and says how long it took.
build() {
    local preset=$1 start=$SECONDS
    shift
    [ -e "build/$preset/build.ninja" ] || cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" --target "$@"
    [ $((SECONDS - start)) -lt 5 ] || echo "Built in $((SECONDS - start)) s."
}
