#!/usr/bin/env bash
# Each screen of a page shows what its commands print, and the exit status of one that fails. A command begins with '$ '
# and goes on in lines with '> '; all of a page run in one folder, which holds copies of the files. With VELMARA_ACCEPT=1
# the page is replaced.
# usage: screens.sh PAGE FOLDER_OF_THE_TOOL FILE...
set -euo pipefail
page=$1 files=("${@:3}") PATH=$2:$PATH
export LC_ALL=C.UTF-8
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir "$scratch/folder"
cp "${files[@]}" "$scratch/folder"

command=
run() {
    [ -n "$command" ] || return 0
    local status=0
    (cd "$scratch/folder" && bash -o pipefail -c "$command" 2>&1 </dev/null) || status=$?
    [ "$status" -eq 0 ] || echo "(status $status)"
    command=
}

inside=
while IFS= read -r line; do
    if [ -n "$command" ] && [[ $line = '> '* ]]; then
        command+=$'\n'${line#> }
    else
        run
        case $inside$line in
        '```console') inside=yes ;;
        'yes```') inside= ;;
        'yes$ '*) command=${line#\$ } ;;
        yes*) continue ;;
        esac
    fi
    printf '%s\n' "$line"
done <"$page" >"$scratch/page"

if [ -n "${VELMARA_ACCEPT:-}" ]; then
    cp "$scratch/page" "$page"
elif ! diff -u "$page" "$scratch/page"; then
    echo "If that is meant: ./dev accept"
    exit 1
fi
