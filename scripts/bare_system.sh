# A bare Debian 12 in a folder, in which something can be tried. Sourced by bash; for root.
#
#   KEEP_SYSTEM=1   the caller's temporary folders stay

entered=()   # what is mounted, in its order
temporary=() # folders to be removed

leave_systems() {
    local i
    for ((i = ${#entered[@]} - 1; i >= 0; --i)); do
        umount -l "${entered[i]}" || return
    done
    entered=()
    [ ${#temporary[@]} -eq 0 ] || [ -n "${KEEP_SYSTEM:-}" ] || rm -rf --one-file-system "${temporary[@]}"
}
trap leave_systems EXIT
trap 'exit 143' TERM INT HUP

# temporary_system: makes a folder that is removed at the end; its name is in $system afterwards.
temporary_system() {
    system=$(mktemp -d "${TMPDIR:-/var/tmp}/corvantine-bare.XXXXXX")
    temporary+=("$system")
}

# install_system FOLDER: the least that is Debian 12, unless it is there already.
install_system() {
    local site
    [ -x "$1/bin/bash" ] && return
    mkdir -p "$1"
    chmod 755 "$1" # a temporary folder is closed to the system's ordinary users
    # The same mirror that this machine takes its packages from.
    site=$(apt-get indextargets --format '$(SITE)' 'Created-By: Packages' 'Codename: bookworm' | head -n 1)
    debootstrap --variant=minbase bookworm "$1" "$site"
}

# enter_system FOLDER: makes it ready for inside.
enter_system() {
    local place
    for place in proc sys dev dev/pts dev/shm; do
        mount --bind "/$place" "$1/$place"
        entered+=("$1/$place")
    done
    cp /etc/resolv.conf "$1/etc/resolv.conf"
}

# inside FOLDER COMMAND: a line of shell, by root of that system.
inside() {
    env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root TERM=dumb LANG=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
        chroot "$1" /bin/bash -c "$2"
}
