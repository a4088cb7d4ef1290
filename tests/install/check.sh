#!/bin/sh
# Installs the build in BUILD into a temporary prefix, then builds and runs a
# small host program against it twice: as a CMake project that finds the
# package with find_package(pad2ibis), and with the flags of
# `pkg-config --cflags --libs pad2ibis`.
set -eu
build=${1:-build}
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$build" --prefix "$work/prefix" >/dev/null
libdir=$(sed -n 's/^CMAKE_INSTALL_LIBDIR:[A-Z]*=//p' "$build/CMakeCache.txt")

cmake -S "$here/consumer" -B "$work/consumer" -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/consumer" >/dev/null
LD_LIBRARY_PATH="$work/prefix/$libdir:${LD_LIBRARY_PATH:-}" "$work/consumer/consumer"
echo "install-check: CMake consumer ok"

if ! command -v pkg-config >/dev/null 2>&1; then
    echo "install-check: pkg-config consumer skipped, pkg-config is not on this machine"
    exit 0
fi
PKG_CONFIG_PATH="$work/prefix/$libdir/pkgconfig"
export PKG_CONFIG_PATH
flags=$(pkg-config --cflags --libs pad2ibis)
pc_libdir=$(pkg-config --variable=libdir pad2ibis)
# shellcheck disable=SC2086 # the flags are words
${CXX:-c++} -std=c++17 "$here/consumer/main.cpp" $flags -o "$work/pc_consumer"
LD_LIBRARY_PATH="$pc_libdir:${LD_LIBRARY_PATH:-}" "$work/pc_consumer"
echo "install-check: pkg-config consumer ok ($flags)"
