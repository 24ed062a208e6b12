#!/usr/bin/env bash
# Installs the packages on this system, builds and runs a client in each way, uses the tool, removes the packages, and
# makes sure that nothing of them stays.
# usage: packages.sh BUILD, as root or with sudo
set -euo pipefail
cd "$(dirname "$0")/../.."
build=$(realpath "$1")
examples=/usr/share/doc/velmara/examples
root=()
[ "$(id -u)" -eq 0 ] || root=(sudo)
scratch=$(mktemp -d)
trap leave EXIT

step() { printf -- '-- %s\n' "$*"; }
fail() { printf 'failed: %s\n' "$*" >&2; exit 1; }
packages() {
    dpkg-query -W -f='${db:Status-Abbrev} ${Package}\n' 'libvelmara*' 'velmara*' 2>/dev/null | sed -n '/^un/!s/.* //p'
}
apt() {
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -y -o DPkg::Lock::Timeout=120 "$@" &>"$scratch/apt.log" ||
        { cat "$scratch/apt.log" >&2; fail "apt-get $*"; }
}
leave() {
    [ -z "${installed:-}" ] || apt purge $(packages)
    rm -rf "$scratch"
}
leftovers() {
    find /usr /etc /var/lib -xdev -ipath '*velmara*' -not -path "$PWD/*"
    while read -r path; do [ -d "$path" ] || [ ! -e "$path" ] || echo "$path"; done <"$scratch/listed"
    ldconfig -p | grep -iE 'velmara|tallybase|tracekit' || true
}

[ -z "$(packages)" ] || fail "there already; remove first:" $(packages)

step "installing"
installed=yes
apt install --no-install-recommends "$build"/*.deb
dpkg-query -L $(packages) >"$scratch/listed"

step "a client by find_package: the example, as it was installed"
cmake -S "$examples" -B "$scratch/example" -G Ninja >/dev/null
cmake --build "$scratch/example" >/dev/null
(cd "$scratch" && example/velmara_client)

step "a client by pkg-config"
version=$(velmara --version | cut -d' ' -f2)
CXX=c++ tests/install/pkgconfig.sh tests/install/client/client.cpp "$scratch/client" "$version"

step "a client by add_subdirectory"
cmake -S tests/install/client -B "$build/subdirectory" -G Ninja -DVELMARA_TREE="$PWD" >/dev/null
cmake --build "$build/subdirectory" >/dev/null
"$build/subdirectory/client"

step "the tool, on an example"
velmara convert "$examples/memoryscan.csv" "$scratch/list.xml" --type MemoryScan
velmara convert "$scratch/list.xml" "$scratch/list.csv" --type MemoryScan
cmp "$examples/memoryscan.csv" "$scratch/list.csv"
tests/install/manual.sh velmara /usr/share/man/man1/velmara.1

step "the debugger, which finds the printers of records"
gdb -nx -batch -ex 'info pretty-printer' "$(pkg-config --variable=libdir velmara)/libVelmara.so.$version" |
    grep velmara_records >/dev/null || fail "gdb does not know them"

step "removing"
apt purge $(packages)
installed=
left=$(packages; leftovers)
[ -z "$left" ] || fail "left behind:"$'\n'"$left"
echo "nothing is left"
