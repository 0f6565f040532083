#!/bin/bash
# Installs the program, moves the prefix elsewhere, and starts it there through its link: as a user to whom the
# prefix does not belong, from another folder. It has to find its skins, and to save the settings.
#
#   program.sh CMAKE BUILD WITNESS
set -eu
cmake=$1
build=$2
witness=$3
scratch=$(mktemp -d)
trap 'chmod -R u+w "$scratch"; rm -rf "$scratch"' EXIT
fail() {
    echo "program.sh: $*" >&2
    exit 1
}

env -u DESTDIR "$cmake" --install "$build" --prefix "$scratch/first" --component program >/dev/null
mv "$scratch/first" "$scratch/prefix"
prefix=$scratch/prefix
for file in lib/corvantine/{corvantine,update.url,UsersGuide/Corvantineug.pdf,skins/Corvantine_skin_Blue.bmp} \
    lib/corvantine/skins/fine/Corvantine_skin_Blue.jpg share/applications/corvantine.desktop \
    share/metainfo/corvantine.metainfo.xml share/icons/hicolor/{scalable/apps/corvantine.svg,48x48/apps/corvantine.png} \
    share/man/man1/corvantine.1; do
    [ -s "$prefix/$file" ] || fail "there is no $file"
done
[ "$(readlink "$prefix/bin/corvantine")" = ../lib/corvantine/corvantine ] || fail "the link is not relative"
if readelf -dW "$prefix/lib/corvantine/corvantine" | grep -E 'RPATH|RUNPATH'; then
    fail "it looks for libraries at a place of its own"
fi

# A user who owns nothing here, if this is run by one who may do everything.
user=()
[ "$(id -u)" -ne 0 ] || user=(setpriv --reuid=65534 --regid=65534 --clear-groups)
mkdir -p "$scratch/plugins/generic" "$scratch/home" "$scratch/elsewhere"
cp "$witness" "$scratch/plugins/generic"
[ ${#user[@]} -eq 0 ] || chown -R 65534:65534 "$scratch/home"
chmod 700 "$scratch/home"
chmod 755 "$scratch"
chmod -R a-w "$prefix"
cd "$scratch/elsewhere"

# start STEPS [ARGUMENTS]: what it told goes to the file told.
start() {
    local steps=$1
    shift
    rm -rf "$scratch/home"/.config
    timeout 240 "${user[@]}" env -u CORVANTINE_DRIVER -u XDG_CONFIG_HOME HOME="$scratch/home" XDG_RUNTIME_DIR="$scratch/home" \
        QT_QPA_PLATFORM=offscreen QT_QPA_GENERIC_PLUGINS=witness QT_PLUGIN_PATH="$scratch/plugins" \
        CORVANTINE_WITNESS="$steps" "$prefix/bin/corvantine" "$@" >"$scratch/told" 2>"$scratch/said" ||
        fail "exit code $?: $(cat "$scratch/told" "$scratch/said")"
    grep -v '^This plugin does not support' "$scratch/said" && fail "it had something to say"
    settings=$scratch/home/.config/Corvantine/Corvantine.ini
    grep -q '^TimeBase=' "$settings" || fail "no settings were saved"
}

# The skins are there: before a click on the patch none is chosen, after it the first.
steps=$'above UpdateRateLabel 0\nclick SkinColourImage\nclick CloseButton'
start "$steps"
grep -q '^SkinColour=0$' "$settings" || fail "the skins were not found: $(grep SkinColour "$settings")"
grep -q '^box' "$scratch/told" && fail "a message: $(cat "$scratch/told")"

# A log that cannot be written is told, and the run goes on.
start $'equals DemoLabel DEBUG MODE !\n'"$steps" DEBUG
box='box: Warning:  failed to open Corvantinelog.txt for writing/append|DEBUG output will be discarded|Make sure the disk is not full, the disk is writable or the log file is not read only'
[ "$(grep '^box' "$scratch/told")" = "$box" ] || fail "other messages: $(cat "$scratch/told")"
grep -q '^SkinColour=0$' "$settings" || fail "it did not go on"

# One that can be written lies beside the program, not beside the link.
chmod u+w "$prefix/lib/corvantine"
touch "$prefix/lib/corvantine/Corvantinelog.txt"
chmod 666 "$prefix/lib/corvantine/Corvantinelog.txt"
start "$steps" DEBUG
grep -q '^box' "$scratch/told" && fail "a message: $(cat "$scratch/told")"
grep -q '^End ' "$prefix/lib/corvantine/Corvantinelog.txt" || fail "nothing was logged"
