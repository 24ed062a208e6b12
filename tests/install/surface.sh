#!/usr/bin/env bash
# Lists the installed files, or the names that the libraries export.
# usage: surface.sh installed|exported PREFIX LIBDIR VERSION
set -euo pipefail
export LC_ALL=C
what=$1 prefix=$2 libdir=$3 version=$4

installed() {
    (cd "$prefix" && find . ! -type d -printf '%P\n') | sed -E "
        s|^$libdir/|lib/|
        s|auto-load/.*/|auto-load/LIBDIR/|
        s|\.so\.${version//./\\.}(-gdb\.py)?$|.so.VERSION\1|
        s|\.so\.${version%%.*}$|.so.MAJOR|
        s|Targets-[a-z]+\.cmake$|Targets-CONFIG.cmake|" | sort
}

# Classes by their own name, free functions without parameters. What is exported weakly, or for AddressSanitizer, differs
# between builds.
exported() {
    for library in TraceKit TallyBase Velmara; do
        echo "$library"
        nm -DC --defined-only "$prefix/$libdir/lib$library.so" | sed -nE '
            /__odr_asan/d
            s/^[0-9a-f]+ [BDT] ((vtable|typeinfo|typeinfo name) for |non-virtual thunk to )?//
            T
            s/^(((Velmara|TALLYFORM|kernel)::)*[A-Za-z_0-9]+).*/    \1/p' | sort -u
    done
}

"$what"
