#!/usr/bin/env bash
# Times `pad2ibis --package-model` on the benchmark's design with a large
# package model file beside its master.
#
#   bench/package_model.sh [OUTDIR]      (default OUTDIR: bench/out-package)
#
# Environment: PAD2IBIS (program to time; otherwise built in build-bench/),
# BALLS (the package model's side: BALLS x BALLS balls, default 44),
# SIGNALS (signals of the design, default 500), RUNS (timed runs of the
# program and of cat, default 5). gen_bench.py makes the smallest master it
# writes (2,000 models), a pad report of SIGNALS signals on the balls of a
# 34 x 34 grid, and the package model file beside the master, with full
# inductance and capacitance matrices. Each run goes under /usr/bin/time -v
# in a fresh directory; the script checks the design file's package model
# (as many pins as [Pin] rows, two full matrices) and reports the median
# wall time, the peak memory, and the median time of one plain `cat` of
# master and package model file together; then the same run without the
# option, for what the option adds.
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
root=$(dirname "$here")
outdir=${1:-$here/out-package}
balls=${BALLS:-44}
signals=${SIGNALS:-500}
runs=${RUNS:-5}
die() { echo "package_model.sh: $*" >&2; exit 1; }
mkdir -p "$outdir"
outdir=$(cd "$outdir" && pwd)

. "$here/common.sh"
prog=$(bench_program "$root" "$outdir")

info=$outdir/bench_info.txt
field() { sed -n "s/^$1=//p" "$info"; }
if [ ! -f "$info" ] || [ "$(field package_balls)" != "$balls" ] || [ "$(field signals)" != "$signals" ] ||
   [ ! -f "$outdir/$(field package)" ]; then
    echo "generating the inputs in $outdir ($balls x $balls balls, $signals signals)"
    python3 "$here/gen_bench.py" --size-mb 1 --signals "$signals" --package-balls "$balls" "$outdir" >/dev/null
fi
master=$outdir/$(field master)
package=$outdir/$(field package)
pad=$(field pad)
pin_rows=$(field pin_rows)
timer=/usr/bin/time
[ -x "$timer" ] || die "/usr/bin/time is needed for the peak memory"

# run OPTION...: RUNS timed runs; sets walls and rss, leaves the last design file.
run() {
    walls=() rss=()
    local i work start end
    for i in $(seq 1 "$runs"); do
        work=$(mktemp -d "$outdir/run.XXXXXX")
        cp "$outdir/$pad" "$work/"
        start=$(now_ns)
        (cd "$work" && "$timer" -v -o time.txt "$prog" -q "$@" "$pad" "$master" >stdout.txt 2>stderr.txt) ||
            die "run $i: pad2ibis failed (see $work)"
        end=$(now_ns)
        walls+=("$((end - start))")
        rss+=("$(sed -n 's/.*Maximum resident set size (kbytes): //p' "$work/time.txt")")
        rm -rf "$outdir/last_run"
        mv "$work" "$outdir/last_run"
    done
}

cat "$master" "$package" >/dev/null
run --package-model
design=$outdir/last_run/IBIS/${pad%.pad}.ibs
[ -s "$outdir/last_run/stderr.txt" ] && die "the run warned: $(cat "$outdir/last_run/stderr.txt")"
pins=$(sed -n 's/^\[Number Of Pins\] *//p' "$design")
[ "$pins" = "$pin_rows" ] || die "[Number Of Pins] $pins in $design, $pin_rows [Pin] rows"
[ "$(grep -c '^\[\(Inductance\|Capacitance\) Matrix\] *Full_matrix' "$design")" = 2 ] ||
    die "$design has not two full matrices"
wall=$(median "${walls[@]}")
peak=$(maximum "${rss[@]}")
design_bytes=$(stat -c %s "$design")
run
plain=$(median "${walls[@]}")
plain_peak=$(maximum "${rss[@]}")
cats=()
for i in $(seq 1 "$runs"); do
    start=$(now_ns)
    cat "$master" "$package" >/dev/null
    end=$(now_ns)
    cats+=("$((end - start))")
done
catm=$(median "${cats[@]}")
awk -v w="$wall" -v p="$plain" -v c="$catm" -v r="$peak" -v pr="$plain_peak" -v n="$(nproc)" \
    -v mb="$(stat -c %s "$master")" -v pb="$(stat -c %s "$package")" -v d="$design_bytes" \
    -v balls="$balls" -v pins="$pin_rows" 'BEGIN {
    printf "--package-model, %d x %d balls (%.1f MB) beside a %.1f MB master, %d design pins, %d CPUs:\n",
        balls, balls, pb / 1e6, mb / 1e6, pins, n
    printf "  wall %.4f s (median), peak RSS %d KB, design file %.1f MB\n", w / 1e9, r, d / 1e6
    printf "  without the option: wall %.4f s, peak RSS %d KB\n", p / 1e9, pr
    printf "  cat of master and package model %.4f s, ratio %.1f\n", c / 1e9, w / c }'
