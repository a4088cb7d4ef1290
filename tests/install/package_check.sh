#!/bin/sh
# Builds the packages of the build in BUILD, unpacks the .deb into a
# temporary directory, checks that everything a user and a host tool need is
# inside, and runs the unpacked program on the shipped example. The program
# finds its libraries through its own run path; no LD_LIBRARY_PATH is set.
set -eu
build=${1:-build}
src=$(cd "$(dirname "$0")/../.." && pwd)
for tool in cpack dpkg-deb; do
    if ! command -v "$tool" >/dev/null 2>&1; then
        echo "package-check: skipped, $tool is not on this machine"
        exit 0
    fi
done
build=$(cd "$build" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "package-check: $*"; exit 1; }

rm -f "$build"/pad2ibis*.deb "$build"/pad2ibis*.tar.gz
(cd "$build" && cpack -G "TGZ;DEB" >"$work/cpack.log" 2>&1) || { cat "$work/cpack.log"; fail "cpack failed"; }
deb=$(ls "$build"/pad2ibis_*.deb)
tgz=$(ls "$build"/pad2ibis-*.tar.gz)
libdir=$(sed -n 's/^CMAKE_INSTALL_LIBDIR:[A-Z]*=//p' "$build/CMakeCache.txt")

depends=$(dpkg-deb -f "$deb" Depends)
for runtime in libc6 libstdc++6 libgcc-s1; do
    case "$depends" in
    *"$runtime "* | *"$runtime,"* | *"$runtime") ;;
    *) fail "$deb does not depend on $runtime (Depends: $depends)" ;;
    esac
done

root="$work/root"
dpkg-deb -x "$deb" "$root"
for file in bin/pad2ibis \
    "$libdir/libpad2ibis.so" "$libdir/libpad2ibis.so.0" \
    "$libdir/libpad2ibis_host.so" "$libdir/libpad2ibis_host.so.0" \
    include/pad2ibis/driver/basibsgen.h include/pad2ibis/driver/messages.h \
    include/pad2ibis/host/msgmanager.h include/pad2ibis/variant/basib_vargon.h \
    "$libdir/cmake/pad2ibis/pad2ibisConfig.cmake" "$libdir/cmake/pad2ibis/pad2ibisTargets.cmake" \
    "$libdir/pkgconfig/pad2ibis.pc" share/man/man1/pad2ibis.1; do
    [ -e "$root/usr/$file" ] || fail "$deb lacks /usr/$file"
    tar -tzf "$tgz" | grep -q -- "/$file\$" || fail "$tgz lacks $file"
done

# The unpacked pkg-config file points into the unpacked tree.
if command -v pkg-config >/dev/null 2>&1; then
    includedir=$(PKG_CONFIG_PATH="$root/usr/$libdir/pkgconfig" pkg-config --variable=includedir pad2ibis)
    [ -f "$includedir/driver/basibsgen.h" ] || fail "pad2ibis.pc names include directory $includedir"
fi

program="$root/usr/bin/pad2ibis"
libs=$(env -u LD_LIBRARY_PATH ldd "$program")
for lib in libpad2ibis.so.0 libpad2ibis_host.so.0; do
    printf '%s\n' "$libs" | grep -qF "$lib => $root/usr/" ||
        fail "the unpacked program does not load the unpacked $lib: $libs"
done
mkdir "$work/run"
cp "$src/examples/demo.pad" "$work/run/"
(cd "$work/run" && env -u LD_LIBRARY_PATH "$program" demo.pad "$src/examples/kva3_master.ibs" >run.log 2>&1) ||
    { cat "$work/run/run.log"; fail "the unpacked program failed"; }
grep -q '^\[Component\]' "$work/run/IBIS/demo.ibs" || fail "the unpacked program wrote no design file"
echo "package-check: ok ($(basename "$deb"), $(basename "$tgz"); Depends: $depends)"
