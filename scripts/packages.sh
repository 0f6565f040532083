# Which Debian packages what needs, and how they get there. Sourced by ./run and ./test.

build_packages="build-essential cmake ninja-build qt6-base-dev libxcb-shape0-dev libkissfft-dev fonts-liberation fonts-comic-neue"
screen_packages="xvfb openbox dbus-daemon x11-utils imagemagick"
test_packages="libgtest-dev libgmock-dev libsm-dev python3 xfwm4 metacity xdotool xclip weston wl-clipboard qt6-wayland xwayland x11-xserver-utils"

# Installs those of the packages that are missing; asks nobody anything and does nothing if none is.
need() {
    local missing=() package as_root=()
    for package in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Please have these packages installed: ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update -qq &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}
