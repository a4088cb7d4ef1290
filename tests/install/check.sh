#!/bin/sh
# Installs the build in BUILD into a temporary prefix, then configures,
# builds and runs a small host project that finds the package with
# find_package(pad2ibis).
set -eu
build=${1:-build}
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$build" --prefix "$work/prefix" >/dev/null
cmake -S "$here/consumer" -B "$work/consumer" -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/consumer" >/dev/null
LD_LIBRARY_PATH="$work/prefix/lib:${LD_LIBRARY_PATH:-}" "$work/consumer/consumer"
echo "install-check: ok"
