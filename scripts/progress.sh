# How far something has come, in few lines. Sourced by bash: awk, as Debian has it, would look at nothing before
# a whole buffer has come in.

# show_progress WHAT: reads lines "percent NUMBER" and shows them: in place on a terminal, each full quarter
# elsewhere. Other lines are passed on. Fails if there is a line "failed".
show_progress() {
    local line percent shown=0 open= failed=0
    while IFS= read -r line; do
        case $line in
        "percent "*)
            percent=${line#percent }
            percent=${percent%%.*}
            [ "$percent" -gt "$shown" ] || continue
            if [ -t 1 ]; then
                printf '\r  %3d %% %s' "$percent" "$1"
                open=1
            elif [ $((percent / 25)) -gt $((shown / 25)) ]; then
                printf '  %3d %% %s\n' $((percent / 25 * 25)) "$1"
            fi
            shown=$percent
            ;;
        failed) failed=1 ;;
        *)
            [ -z "$open" ] || printf '\r\033[K'
            open=
            printf '%s\n' "$line"
            ;;
        esac
    done
    [ -z "$open" ] || printf '\r\033[K'
    return $failed
}

# Of what apt tells of itself, where it is: the first half of the way is the fetching.
apt_progress() {
    local kind percent rest
    while IFS=: read -r kind _ percent rest; do
        case $kind in
        dlstatus) echo "percent $((${percent%%.*} / 2))" ;;
        pmstatus) echo "percent $((50 + ${percent%%.*} / 2))" ;;
        failed) echo failed ;;
        esac
    done
}

ninja_progress() {
    local line count
    while IFS= read -r line; do
        case $line in
        "["*/*"] "*)
            count=${line%%]*}
            count=${count#[}
            echo "percent $((100 * ${count%/*} / ${count#*/}))"
            ;;
        "ninja: no work to do."* | "-- "*) ;;
        *) printf '%s\n' "$line" ;;
        esac
    done
}

# build_shown FOLDER TARGET...: builds with Ninja and shows how far it is. Says nothing where nothing is to do.
build_shown() {
    local folder=$1 begin=$SECONDS
    shift
    { NINJA_STATUS='[%f/%t] ' cmake --build "$folder" --target "$@" 2>&1 || echo failed; } |
        ninja_progress | show_progress built || return 1
    [ $((SECONDS - begin)) -lt 3 ] || echo "  built in $((SECONDS - begin)) s"
}
