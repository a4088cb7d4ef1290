#!/usr/bin/env bash
# Times the program's default mode against --legacy on the benchmark's
# synthetic master and pad report, run by run in turn, for 100 and for 1,000
# design models.
#
#   bench/modes.sh [OUTDIR]          (default OUTDIR: bench/out/modes)
#
# Environment: PAD2IBIS (program to time; otherwise built in build-bench/),
# SIZE_MB (master size, default 20), RUNS (pairs of runs, default 15). The
# inputs are made by gen_bench.py. Each pair runs the default mode and the
# legacy mode one after the other in fresh working directories, so both see
# the same state of the machine; the script checks that both wrote the same
# files, and reports each mode's median wall time, the median of the ratios
# of the pairs, and one plain cat of the master.
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
root=$(dirname "$here")
outdir=${1:-$here/out/modes}
size_mb=${SIZE_MB:-20}
runs=${RUNS:-15}
die() { echo "modes.sh: $*" >&2; exit 1; }
mkdir -p "$outdir"
outdir=$(cd "$outdir" && pwd)

. "$here/common.sh"
prog=$(bench_program "$root" "$outdir")
# The same "Generate date" line in both modes' design files.
export SOURCE_DATE_EPOCH=1700000000

# One run in a fresh directory: its wall time in ns on standard output.
run_once() { # run_once DIR PAD MASTER [OPTION]
    local dir=$1 pad=$2 master=$3 start end
    shift 3
    rm -rf "$dir" && mkdir -p "$dir" && cp "$pad" "$dir/"
    start=$(now_ns)
    (cd "$dir" && "$prog" "$@" "$(basename "$pad")" "$master" >stdout.txt 2>stderr.txt) ||
        die "$prog $* failed in $dir"
    end=$(now_ns)
    echo $((end - start))
}

printf '\n  %-8s %-14s %12s %12s %12s %10s\n' "models" "master" "default s" "legacy s" "cat s" "ratio"
for models in 100 1000; do
    inputs=$outdir/$models
    mkdir -p "$inputs"
    if [ ! -f "$inputs/bench_info.txt" ]; then
        python3 "$here/gen_bench.py" --size-mb "$size_mb" --design-models "$models" "$inputs" >/dev/null
    fi
    master=$inputs/$(sed -n 's/^master=//p' "$inputs/bench_info.txt")
    pad=$inputs/$(sed -n 's/^pad=//p' "$inputs/bench_info.txt")
    cat "$master" >/dev/null
    defaults=() legacies=() ratios=()
    for i in $(seq 1 "$runs"); do
        d=$(run_once "$outdir/default" "$pad" "$master" -q)
        l=$(run_once "$outdir/legacy" "$pad" "$master" --legacy)
        diff -r "$outdir/default/IBIS" "$outdir/legacy/IBIS" >/dev/null ||
            die "the two modes wrote different files (see $outdir/default and $outdir/legacy)"
        defaults+=("$d") legacies+=("$l")
        ratios+=("$(awk -v a="$d" -v b="$l" 'BEGIN { printf "%.4f", a / b }')")
    done
    catm=$(cat_median "$master" "$runs")
    printf '  %-8s %-14s %12s %12s %12s %10s\n' "$models" \
        "$(awk -v b="$(stat -c %s "$master")" 'BEGIN { printf "%.1f MB", b / 1e6 }')" \
        "$(seconds "$(median "${defaults[@]}")")" "$(seconds "$(median "${legacies[@]}")")" \
        "$(seconds "$catm")" "$(median "${ratios[@]}")"
done
