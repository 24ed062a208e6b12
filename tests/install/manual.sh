#!/usr/bin/env bash
# The tool's manual page is sound, and tells of every command and option that the tool's help names.
# usage: manual.sh TOOL PAGE
set -euo pipefail
tool=$1 page=$2

faults=$(groff -man -ww -z -Tutf8 "$page" 2>&1 || true)
text=$(sed 's/\\//g' "$page")
missing() { faults+=$'\n'"the page lacks $1"; }

commands=$("$tool" --help | sed -nE 's/^  ([a-z]+) .*/\1/p')
[ -n "$commands" ] || faults+="the tool's help names no command"
for command in $commands; do
    grep -qx "\.SS $command" <<<"$text" || missing "$command"
    for option in $("$tool" "$command" --help | grep -oE -- '--[a-z-]+' | sort -u); do
        grep -qFw -e "$option" <<<"$text" || missing "$option of $command"
    done
done
[ -z "$faults" ] || { echo "$faults"; exit 1; }
