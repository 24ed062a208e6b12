#!/usr/bin/env bash
# The tables of columns on the pages are those that the tool writes. With VELMARA_ACCEPT=1 the pages take them over.
# usage: csv.sh PAGES TOOL
set -euo pipefail
pages=$1 tool=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

"$tool" schema --csv >"$scratch/columns"
grep '^## ' "$scratch/columns" | while read -r _ type; do
    page=$pages/$(tr '[:upper:]' '[:lower:]' <<<"${type/NOIFrequencies/Suppress}").md
    awk -v type="$type" '
        NR == FNR { if ($1 == "##") here = $2 == type; else if (here && /^\|/) table = table $0 "\n"; next }
        /^\| Column / { printf "%s", table; inside = 1 }
        !/^\|/ { inside = 0 }
        !inside
    ' "$scratch/columns" "$page" >"$scratch/page"
    if [ -n "${VELMARA_ACCEPT:-}" ]; then
        cp "$scratch/page" "$page"
    elif ! diff -u "$page" "$scratch/page"; then
        echo "If that is meant: ./dev accept"
        exit 1
    fi
done
