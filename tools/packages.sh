# Sourced by run and test: installs Debian packages that are missing, by name.
need_packages() {
    local missing=()
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
            missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    echo "Installing: ${missing[*]}"
    local as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    "${as_root[@]}" apt-get update -q
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q "${missing[@]}"
}

build_packages=(g++ cmake ninja-build ccache qt6-base-dev qt6-base-dev-tools libqt6svg6
    qt6-svg-dev libsqlite3-dev libcurl4-openssl-dev libical-dev libmpv-dev
    fonts-liberation fonts-inter)
