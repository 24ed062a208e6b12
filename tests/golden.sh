#!/usr/bin/env bash
# Compares a file in the tree with what a command prints, so that no change goes unseen. With VELMARA_ACCEPT=1 the file
# takes the change over.
# usage: golden.sh FILE COMMAND [ARGUMENT...]
set -euo pipefail
file=$1
printed=$("${@:2}")

if [ -n "${VELMARA_ACCEPT:-}" ]; then
    printf '%s\n' "$printed" >"$file"
elif ! diff -u "$file" - <<<"$printed"; then
    echo "If that is meant: ./dev accept"
    exit 1
fi
