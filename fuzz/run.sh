#!/bin/bash
# Builds the fuzz targets with libFuzzer (clang++ with the address and
# undefined-behaviour sanitizers) and runs each for SECONDS seconds
# (default 60), then prints per target the executions, executions per
# second, the coverage reached and the findings. Exits non-zero when a
# target found a crash, a hang (over 10 s for one input) or ran out of
# memory. Findings are kept in fuzz/findings/<target>/.
#
#   fuzz/run.sh [SECONDS]
#
# Environment: CXX (default clang++), JOBS (parallel runs, default 2),
# FUZZ_TARGETS (default all: pad master ami channels ami_check
# channels_check design_check master_check), FUZZ_FLAGS (extra libFuzzer
# flags).
set -eu
seconds=${1:-60}
here=$(cd "$(dirname "$0")" && pwd)
root=$(dirname "$here")
build=$here/build
work=$here/corpus-work
findings=$here/findings
cxx=${CXX:-clang++}
jobs=${JOBS:-2}
targets=${FUZZ_TARGETS:-pad master ami channels ami_check channels_check design_check master_check package_check}

command -v "$cxx" >/dev/null || { echo "fuzz/run.sh: $cxx not found" >&2; exit 2; }
mkdir -p "$build/obj" "$work" "$findings"

# The library, the reference host and the channels reader, built once with
# the fatal exit turned into an exception that the targets catch.
cflags="-std=c++17 -g -O1 -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all \
 -DPAD2IBIS_FATAL_THROWS -I$root/src -I$root"
sources=$(ls "$root"/src/*/*.cpp)
# An object is rebuilt when its source or any header is newer than it.
newest_header=$(ls -t "$root"/src/*/*.h "$root"/app/*.h | head -1)
for src in $sources; do
    obj=$build/obj/$(echo "$src" | sed "s|$root/||; s|/|_|g; s|\.cpp$|.o|")
    if [ ! -f "$obj" ] || [ "$src" -nt "$obj" ] || [ "$newest_header" -nt "$obj" ]; then
        echo "$src $obj"
    fi
done | xargs -r -P "$jobs" -n 2 sh -c "$cxx $cflags -c \"\$0\" -o \"\$1\""
for t in $targets; do
    bin=$build/fuzz_$t
    if [ ! -f "$bin" ] || [ "$here/fuzz_$t.cpp" -nt "$bin" ] || [ "$here/fuzz_support.h" -nt "$bin" ] ||
       [ -n "$(find "$build/obj" -newer "$bin" -name '*.o' | head -1)" ]; then
        $cxx $cflags -fsanitize=fuzzer "$here/fuzz_$t.cpp" "$build"/obj/*.o -o "$bin"
    fi
done

# Seed corpora: the committed seeds and the example files, the master
# ones behind a flag byte (0x00 the demo family, 0xC8 the table-driven one).
seed() { mkdir -p "$work/$1"; cp "$2" "$work/$1/$3"; }
mkdir -p "$work/pad" "$work/master" "$work/ami" "$work/channels" "$work/design_check" "$work/master_check" \
    "$work/package_check"
for t in $targets; do
    [ -d "$here/seeds/$t" ] && cp "$here/seeds/$t"/* "$work/$t/" 2>/dev/null || true
done
for f in "$root"/examples/*.pad "$root"/tests/*/data/*.pad "$root"/tests/*/data/*/*.pad; do
    [ -f "$f" ] && seed pad "$f" "ex-$(basename "$(dirname "$f")")-$(basename "$f")"
done
printf '\000' > "$work/master/ex-kva3" && cat "$root/examples/kva3_master.ibs" >> "$work/master/ex-kva3"
printf '\310' > "$work/master/ex-kvan" && cat "$root/examples/kvan_master.ibs" >> "$work/master/ex-kvan"
for f in "$root"/tests/*/data/*.ibs "$root"/tests/*/data/*/*.ibs; do
    [ -f "$f" ] || continue
    name=ex-$(basename "$(dirname "$f")")-$(basename "$f")
    printf '\000' > "$work/master/$name" && cat "$f" >> "$work/master/$name"
done
for f in "$root"/examples/*.pkg "$root"/tests/*/data/*.pkg; do
    [ -f "$f" ] && seed package_check "$f" "ex-$(basename "$(dirname "$f")")-$(basename "$f")"
done
for f in "$root"/examples/serdes/*.ami; do
    [ -f "$f" ] || continue
    { echo "Tx_Amp 0d12 Rx_Eq 0b0101 Tx_Emph 0hA Rx_Gain DONTCARE"; cat "$f"; } > "$work/ami/ex-$(basename "$f")"
done
for f in "$root"/examples/serdes/channels*.txt; do
    [ -f "$f" ] && seed channels "$f" "ex-$(basename "$f")"
done
# The checks of the SerDes files: the shipped templates, and the shipped
# channels file with its templates behind "%%" lines.
mkdir -p "$work/ami_check" "$work/channels_check"
for f in "$root"/examples/serdes/*.ami "$root"/tests/ami/data/*.ami; do
    [ -f "$f" ] && seed ami_check "$f" "ex-$(basename "$(dirname "$f")")-$(basename "$f")"
done
{ cat "$root/examples/serdes/channels.txt"
  for f in "$root"/examples/serdes/*.ami; do printf '%%%%\n'; cat "$f"; done
} > "$work/channels_check/ex-channels-templates"
# The checkers: design files the whole-run tests expect, and the masters
# (behind a byte that picks the family word: 0x01 is KVA3).
for f in "$root"/tests/writer/data/*.ibs.expected "$root"/examples/serdes/*.ibs; do
    [ -f "$f" ] && seed design_check "$f" "ex-$(basename "$f")"
done
for f in "$root"/examples/*.ibs "$root"/tests/*/data/*.ibs; do
    [ -f "$f" ] || continue
    printf '\001' > "$work/master_check/ex-$(basename "$f")" && cat "$f" >> "$work/master_check/ex-$(basename "$f")"
done

# Runs, JOBS at a time.
run_one() {
    t=$1
    mkdir -p "$findings/$t"
    ASAN_OPTIONS=detect_leaks=0:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1 \
    "$build/fuzz_$t" "$work/$t" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
        -max_len=65536 -print_final_stats=1 -artifact_prefix="$findings/$t/" ${FUZZ_FLAGS:-} \
        > "$build/$t.log" 2>&1 || true
}
for t in $targets; do
    run_one "$t" &
    while [ "$(jobs -r | wc -l)" -ge "$jobs" ]; do sleep 1; done
done
wait

status=0
printf '%-14s %12s %10s %8s %8s %s\n' target executions exec/s cov ft findings
for t in $targets; do
    log=$build/$t.log
    execs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
    rate=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log" | tail -1)
    cov=$(grep -o 'cov: [0-9]*' "$log" | tail -1 | sed 's/cov: //')
    ft=$(grep -o 'ft: [0-9]*' "$log" | tail -1 | sed 's/ft: //')
    found=$(ls "$findings/$t" | grep -c -E '^(crash|timeout|oom|leak|slow-unit)-' || true)
    printf '%-14s %12s %10s %8s %8s %s\n' "$t" "${execs:-?}" "${rate:-?}" "${cov:-?}" "${ft:-?}" "$found"
    if [ "$found" -gt 0 ] || ! grep -q '^stat::number_of_executed_units' "$log"; then
        status=1
        echo "  see $log and $findings/$t/" >&2
    fi
done
exit $status
