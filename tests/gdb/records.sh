#!/usr/bin/env bash
# Shows the records of a program in gdb as a person would, and compares the text.
# usage: records.sh PROGRAM PRINTERS EXPECTED; 77 where gdb cannot run here
set -euo pipefail
program=$1 printers=$2 expected=$3
export LC_ALL=C.UTF-8 PYTHONDONTWRITEBYTECODE=1

if ! gdb -nx -batch -ex run -ex 'python print("Python, too")' /bin/true 2>&1 |
    tr '\n' ' ' | grep -q 'exited normally.*Python, too'; then
    echo "no gdb with Python here that may run a program: the printers are not tested"
    exit 77
fi
shown=$(gdb -nx -batch -ex "source $printers" -ex 'break stop' -ex run -ex 'echo ==\n' \
    -ex 'print record' -ex up -ex 'print none' -ex 'print tree' -ex 'print lists' -ex 'print times' \
    -ex 'set print elements 3' -ex 'print some' -ex 'set print elements unlimited' -ex 'print some' \
    -ex 'set var some.m_data.d = 8' -ex 'print some' "$program" 2>&1)
sed -n '/^==$/,$ { s/@0x[0-9a-f]*/@ADDRESS/; /^\$/p; }' <<<"$shown" | diff -u "$expected" - ||
    { echo "$shown"; exit 1; }
