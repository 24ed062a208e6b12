#!/usr/bin/env bash
# Each screen of a page shows what its commands print, run beside the examples, and the plan is the one they draw. With
# VELMARA_ACCEPT=1 the page and the plan are replaced.
# usage: screens.sh PAGE PLAN EXAMPLES FOLDER_OF_THE_TOOL
set -euo pipefail
page=$1 plan=$2 examples=$3 PATH=$4:$PATH
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp "$examples"/*.csv "$examples"/*.xml "$scratch"

inside=
while IFS= read -r line; do
    case $inside$line in
    '```console') inside=yes ;;
    'yes```') inside= ;;
    'yes$ '*)
        echo "$line"
        (cd "$scratch" && bash -c "${line#\$ }" 2>&1 || true)
        continue
        ;;
    yes*) continue ;;
    esac
    printf '%s\n' "$line"
done <"$page" >"$scratch/page"

if [ -n "${VELMARA_ACCEPT:-}" ]; then
    cp "$scratch/page" "$page"
    cp "$scratch/plan.svg" "$plan"
elif ! diff -u "$page" "$scratch/page" || ! cmp "$plan" "$scratch/plan.svg"; then
    echo "If that is meant: VELMARA_ACCEPT=1 ctest --preset release -R docs.screens"
    exit 1
fi
