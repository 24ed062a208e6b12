#!/usr/bin/env bash
# Each named block of the guide is what its program has between the marks of that name, or prints in the chapter of that
# name, and all of these stand in the guide. With VELMARA_ACCEPT=1 the blocks of the guide are replaced.
# usage: guide.sh GUIDE SOURCE PROGRAM
set -euo pipefail
guide=$1 source=$2 program=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

LC_ALL=C QT_FORCE_STDERR_LOGGING=1 QT_MESSAGE_PATTERN='%{message}' "$program" >"$scratch/printed" 2>&1 ||
    { cat "$scratch/printed"; exit 1; }

awk '
    FILENAME == ARGV[1] && $1 == "//!" { mark = mark ? "" : "cpp " substr($2, 2, length($2) - 2); indent = index($0, "/"); next }
    FILENAME == ARGV[1] { if (mark) block[mark] = block[mark] substr($0, indent) "\n"; next }
    FILENAME == ARGV[2] && $1 == "==" { chapter = "text " $2; next }
    FILENAME == ARGV[2] { block[chapter] = block[chapter] $0 "\n"; next }

    /^```(cpp|text)/ {
        name = substr($0, 4)
        print
        printf "%s", name in block ? block[name] : "(the program has no \"" name "\")\n"
        shown[name] = inside = 1
        next
    }
    /^```/ { inside = 0 }
    !inside
    END { for (name in block) if (!(name in shown)) print "(not in the guide: " name ")" }
' "$source" "$scratch/printed" "$guide" >"$scratch/guide"

if [ -n "${VELMARA_ACCEPT:-}" ]; then
    cp "$scratch/guide" "$guide"
elif ! diff -u "$guide" "$scratch/guide"; then
    echo "If that is meant: ./dev accept"
    exit 1
fi
