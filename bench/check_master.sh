#!/usr/bin/env bash
# Times `pad2ibis check --master` on the benchmark's synthetic master file.
#
#   bench/check_master.sh [OUTDIR]      (default OUTDIR: bench/out)
#
# Environment: PAD2IBIS (program to time; otherwise built in build-bench/),
# SIZE_MB (master size, default 80), RUNS (timed runs of the check and of
# cat, default 5). The master is made by gen_bench.py when missing or of
# another size. Each run goes under /usr/bin/time -v; the script reports the
# median wall time, the peak memory, the median time of one plain `cat` of
# the master, and checks that the check found nothing.
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
root=$(dirname "$here")
outdir=${1:-$here/out}
size_mb=${SIZE_MB:-80}
runs=${RUNS:-5}
die() { echo "check_master.sh: $*" >&2; exit 1; }
mkdir -p "$outdir"
outdir=$(cd "$outdir" && pwd)

. "$here/common.sh"
prog=$(bench_program "$root" "$outdir")

info=$outdir/bench_info.txt
master=$outdir/kva3_bench_master.ibs
if [ ! -f "$info" ] || [ ! -f "$master" ] ||
   ! awk -v a="$(sed -n 's/^size_mb=//p' "$info")" -v b="$size_mb" 'BEGIN { exit !(a + 0 == b + 0) }'; then
    echo "generating a $size_mb MB master in $outdir"
    python3 "$here/gen_bench.py" --size-mb "$size_mb" "$outdir" >/dev/null
fi
timer=/usr/bin/time
[ -x "$timer" ] || die "/usr/bin/time is needed for the peak memory"

cat "$master" >/dev/null
walls=() rss=()
for i in $(seq 1 "$runs"); do
    start=$(now_ns)
    "$timer" -v -o "$outdir/check_time.txt" "$prog" check --master "$master" >"$outdir/check_out.txt" || true
    end=$(now_ns)
    grep -q '^1 file checked: 0 errors, 0 warnings$' "$outdir/check_out.txt" ||
        die "run $i: the check found something (see $outdir/check_out.txt)"
    walls+=("$((end - start))")
    rss+=("$(sed -n 's/.*Maximum resident set size (kbytes): //p' "$outdir/check_time.txt")")
done
wall=$(median "${walls[@]}")
catm=$(cat_median "$master" "$runs")
awk -v w="$wall" -v c="$catm" -v r="$(printf '%s\n' "${rss[@]}" | sort -n | tail -1)" \
    -v b="$(stat -c %s "$master")" -v n="$(nproc)" 'BEGIN {
    printf "check --master on %.1f MB (%d CPUs): wall %.4f s (median), peak RSS %d KB,", b / 1e6, n, w / 1e9, r
    printf " cat %.4f s, ratio %.1f\n", c / 1e9, w / c }'
