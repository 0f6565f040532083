# Which Debian packages what needs, and how they get there. Sourced by ./run and ./test.

build_packages="build-essential cmake ninja-build qt6-base-dev libxcb-shape0-dev libkissfft-dev fonts-liberation fonts-comic-neue"
screen_packages="xvfb openbox dbus-daemon x11-utils imagemagick xdotool"
test_packages="clang libclang-rt-14-dev lld libgtest-dev libgmock-dev libsm-dev libxcb-res0-dev python3 xfwm4 metacity xclip weston wl-clipboard qt6-wayland xwayland x11-xserver-utils appstream desktop-file-utils pkg-config strace"
endurance_packages="faketime devscripts"

. "${BASH_SOURCE[0]%/*}/progress.sh"

# Installs those of the packages that are missing; asks nobody anything and does nothing if none is.
need() {
    local missing=() package as_root=() installed begin=$SECONDS
    installed=" $(dpkg-query -W -f='${Package}:${db:Status-Status} ' "$@" 2>/dev/null || true)"
    for package in "$@"; do
        [[ $installed == *" $package:installed "* ]] || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Please have these packages installed: ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
        sudo -v || return 1 # it may ask for the password, which the progress would hide
    fi
    echo "Installing ${missing[*]}"
    "${as_root[@]}" apt-get -o DPkg::Lock::Timeout=600 update -qq || return 1
    {
        # apt closes for the packages' own scripts what it tells its progress on: nothing that they write to.
        # The shell stands behind sudo, which would close it as well.
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive sh -c 'exec apt-get "$@" 3>&1 >/dev/null' apt-get \
            -o DPkg::Lock::Timeout=600 -o APT::Status-Fd=3 -o Dpkg::Use-Pty=0 \
            install -y -qq --no-install-recommends "${missing[@]}" || echo failed
    } | apt_progress | show_progress installed || return 1
    echo "  installed in $((SECONDS - begin)) s"
}
