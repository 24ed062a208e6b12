#!/usr/bin/env bash
# Builds and runs the client with what pkg-config tells of the installed library.
# usage: pkgconfig.sh CLIENT.CPP PROGRAM VERSION; CXX, CXXFLAGS and PKG_CONFIG_PATH as always
set -euo pipefail
source=$1 program=$2 version=$3
pkg-config --exact-version="$version" velmara
read -ra flags <<<"${CXXFLAGS:-} $(pkg-config --cflags --libs velmara)"
"$CXX" -std=c++20 -Werror "$source" -o "$program" "${flags[@]}" "-Wl,-rpath,$(pkg-config --variable=libdir velmara)"
"$program"
