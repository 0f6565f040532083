#!/bin/bash
# follow_guide.sh GUIDE SOURCES: does in an empty folder what the guide's sh blocks say, in their order. A text
# block holds parts of lines that the block before it has to print.
set -eu
guide=$1
export CORVANTINE=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
awk -v to="$scratch" '
    /^ *```(sh|text)$/ { kind = $1; sub(/`+/, "", kind); file = sprintf("%s/%03d.%s", to, ++n, kind); next }
    /^ *```/           { file = ""; next }
    file               { sub(/^ */, ""); print > file }' "$guide"

mkdir "$scratch/work"
cd "$scratch/work"
set -- "$scratch"/*.sh
echo "$# blocks of commands"
[ $# -ge 5 ]
for block in "$scratch"/*.sh "$scratch"/*.text; do echo "$block"; done | sort | while read -r block; do
    case $block in
    *.sh)
        # Blocks share one shell's folder, as at a prompt.
        { echo 'set -eu'; cat "$block"; echo "pwd > '$scratch/folder'"; } >"$scratch/run"
        cd "$(cat "$scratch/folder" 2>/dev/null || pwd)"
        if ! bash "$scratch/run" >"$scratch/output" 2>&1; then
            cat "$block" "$scratch/output"
            echo "failed"
            exit 1
        fi
        ;;
    *.text)
        while read -r line; do
            if ! grep -qF -- "$line" "$scratch/output"; then
                cat "$scratch/output"
                echo "not printed: $line"
                exit 1
            fi
        done <"$block"
        ;;
    esac
done
