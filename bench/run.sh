#!/usr/bin/env bash
# Times pad2ibis on a large synthetic master IBIS file and design pad report.
#
#   bench/run.sh [OUTDIR]            (default OUTDIR: bench/out)
#
# Environment:
#   PAD2IBIS=/path/to/pad2ibis   program to time; otherwise it is built in
#                                build-bench/ at the top of the tree
#   SIZE_MB=20                   size of the master file in MB (10^6 bytes)
#   DESIGN_MODELS=100            distinct models that the design uses
#   RUNS=3                       timed runs of pad2ibis and of cat
#   ALL_MODELS=1                 run with --all-models: every model of the
#                                master gets its block in the design file
#   REPORT=FILE                  run with --report FILE (report.html: the page)
#
# The inputs are made by gen_bench.py when missing (or made for another size
# or number of design models).
# Each run copies the pad report into a fresh working directory, so that the
# design IBIS file lands in its IBIS/ subdirectory, and runs pad2ibis there
# under /usr/bin/time -v. The last run's directory stays as OUTDIR/last_run.
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
root=$(dirname "$here")
outdir=${1:-$here/out}
size_mb=${SIZE_MB:-20}
design_models_wanted=${DESIGN_MODELS:-100}
runs=${RUNS:-3}
all_models=${ALL_MODELS:-0}
options=()
[ "$all_models" = 1 ] && options=(--all-models)
report=${REPORT:-}
[ -n "$report" ] && options+=(--report "$report")

die() { echo "run.sh: $*" >&2; exit 1; }

mkdir -p "$outdir"
outdir=$(cd "$outdir" && pwd)

# --- the program --------------------------------------------------------------
. "$here/common.sh"
prog=$(bench_program "$root" "$outdir")

# --- the inputs ---------------------------------------------------------------
info=$outdir/bench_info.txt
field() { sed -n "s/^$1=//p" "$info"; }
same_size() { awk -v a="$1" -v b="$2" 'BEGIN { exit !(a + 0 == b + 0) }'; }
if [ ! -f "$info" ] || [ ! -f "$outdir/$(field master)" ] || [ ! -f "$outdir/$(field pad)" ] ||
   [ -z "$(field model_pass_bytes)" ] || ! same_size "$(field size_mb)" "$size_mb" ||
   [ "$(field design_models)" != "$design_models_wanted" ]; then
    echo "generating the inputs in $outdir ($size_mb MB master, $design_models_wanted design models)"
    python3 "$here/gen_bench.py" --size-mb "$size_mb" --design-models "$design_models_wanted" "$outdir" >/dev/null
fi
master=$outdir/$(field master)
pad=$(field pad)
master_bytes=$(stat -c %s "$master")
models=$(field models)
signals=$(field signals)
design_models=$(field design_models)
diff_signals=$(field diff_signals)
pin_rows=$(field pin_rows)
pass_bytes=$(field model_pass_bytes)
design_file=${pad%.pad}.ibs
# The models the design file holds: the design's, or with --all-models every
# model of the master, in ascending byte order.
expected_models=$outdir/expected_models.txt
written_models=$design_models
if [ "$all_models" = 1 ]; then
    expected_models=$outdir/all_models.txt
    grep '^\[Model\]' "$master" | awk '{ print $2 }' | LC_ALL=C sort >"$expected_models"
    written_models=$(wc -l <"$expected_models")
fi

# --- timing helpers -------------------------------------------------------------
timer=/usr/bin/time
if [ ! -x "$timer" ]; then
    echo "note: /usr/bin/time is missing; peak memory cannot be measured, wall time only"
    timer=
fi

# --- pad2ibis runs --------------------------------------------------------------
cat "$master" >/dev/null   # the same warm page cache for every run and for cat
walls=() rss=() users=() systems=()
for i in $(seq 1 "$runs"); do
    work=$(mktemp -d "$outdir/run.XXXXXX")
    cp "$outdir/$pad" "$work/"
    start=$(now_ns)
    set +e
    if [ -n "$timer" ]; then
        (cd "$work" && "$timer" -v -o time.txt "$prog" ${options[@]+"${options[@]}"} "$pad" "$master" \
            >stdout.txt 2>stderr.txt)
    else
        (cd "$work" && "$prog" ${options[@]+"${options[@]}"} "$pad" "$master" >stdout.txt 2>stderr.txt)
    fi
    rc=$?
    set -e
    end=$(now_ns)

    # Checks: a clean exit, every signal resolved, the models the design needs.
    [ "$rc" -eq 0 ] || die "run $i: pad2ibis exited with $rc (see $work)"
    missing=$(cat "$work/stdout.txt" "$work/stderr.txt" | grep -c 'is not available' || true)
    [ "$missing" -eq 0 ] || die "run $i: $missing signals without a model (see $work/stdout.txt)"
    out=$work/IBIS/$design_file
    [ -f "$out" ] || die "run $i: no design file $out"
    blocks=$(grep -c '^\[Model\]' "$out" || true)
    [ "$blocks" -eq "$written_models" ] ||
        die "run $i: $blocks [Model] blocks in $out, $written_models expected"
    grep '^\[Model\]' "$out" | awk '{ print $2 }' | cmp -s - "$expected_models" ||
        die "run $i: the models of $out are not those of $(basename "$expected_models")"
    rows=$(awk '/^\[Pin\]/ { f = 1; next } /^\|/ { f = 0 } f' "$out" | wc -l)
    [ "$rows" -eq "$pin_rows" ] || die "run $i: $rows pin rows in $out, $pin_rows expected"

    walls+=("$((end - start))")
    if [ -n "$timer" ]; then
        rss+=("$(sed -n 's/.*Maximum resident set size (kbytes): //p' "$work/time.txt")")
        users+=("$(sed -n 's/.*User time (seconds): //p' "$work/time.txt")")
        systems+=("$(sed -n 's/.*System time (seconds): //p' "$work/time.txt")")
    fi
    rm -rf "$outdir/last_run"
    mv "$work" "$outdir/last_run"
done

# --- one plain read of the master -----------------------------------------------
catm=$(cat_median "$master" "$runs")

# --- report ---------------------------------------------------------------------
wall=$(median "${walls[@]}")
cpu=$(sed -n 's/^model name[[:space:]]*: //p' /proc/cpuinfo | head -1)
echo
echo "pad2ibis benchmark on $(nproc) CPU(s), ${cpu:-unknown CPU}"
echo
printf '  %-28s %s\n' "program" "$prog"
printf '  %-28s %s (%s bytes)\n' "master size" \
    "$(awk -v b="$master_bytes" 'BEGIN { printf "%.1f MB", b / 1e6 }')" "$master_bytes"
printf '  %-28s %s\n' "models in master" "$models"
printf '  %-28s %s (%s differential)\n' "signals" "$signals" "$diff_signals"
printf '  %-28s %s\n' "distinct models used" "$design_models"
printf '  %-28s %s\n' "options" "${options[*]:-none}"
printf '  %-28s %s (%s)\n' "design file" "$(du -h "$outdir/last_run/IBIS/$design_file" | cut -f1)" \
    "$written_models [Model] blocks"
[ -z "$report" ] ||
printf '  %-28s %s bytes\n' "report $report" "$(stat -c %s "$outdir/last_run/$report")"
echo
printf '  %-5s %10s %10s %10s %14s\n' "run" "wall s" "user s" "sys s" "peak RSS KB"
for i in "${!walls[@]}"; do
    printf '  %-5s %10s %10s %10s %14s\n' "$((i + 1))" "$(seconds "${walls[$i]}")" \
        "${users[$i]:-n/a}" "${systems[$i]:-n/a}" "${rss[$i]:-n/a}"
done
echo
printf '  %-28s %s s\n' "pad2ibis wall (median)" "$(seconds "$wall")"
if [ -n "$timer" ]; then
    printf '  %-28s %s KB\n' "pad2ibis peak RSS (max)" "$(maximum "${rss[@]}")"
else
    printf '  %-28s %s\n' "pad2ibis peak RSS" "not measured"
fi
printf '  %-28s %s s\n' "cat master (median)" "$(seconds "$catm")"
printf '  %-28s %s\n' "ratio pad2ibis / cat" "$(awk -v a="$wall" -v b="$catm" 'BEGIN { printf "%.0f", a / b }')"
[ "$all_models" = 1 ] ||   # pass_bytes counts the design's models only
printf '  %-28s %s\n' "read by the model passes" "$(awk -v b="$pass_bytes" -v m="$master_bytes" -v w="$wall" \
    'BEGIN { printf "%.2f GB, %.1f times the master, %.2f GB/s", b / 1e9, b / m, b / 1e9 / (w / 1e9) }')"
echo
echo "  checks passed: exit 0, all $signals signals resolved, $written_models [Model] blocks" \
    "as expected, $pin_rows pin rows"
