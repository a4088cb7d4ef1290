# Shared by the benchmark scripts (sourced, not run): the program to time,
# and the timing helpers. The sourcing script defines die().

now_ns() { date +%s%N; }
seconds() { awk -v ns="$1" 'BEGIN { printf "%.4f", ns / 1e9 }'; }
median() { printf '%s\n' "$@" | sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }
maximum() { printf '%s\n' "$@" | sort -n | tail -1; }

# cat_median FILE RUNS: the median time in ns of RUNS plain reads of FILE,
# the yardstick that every benchmark row is measured against.
cat_median() {
    local file=$1 count=$2 i start end
    local times=()
    for i in $(seq 1 "$count"); do
        start=$(now_ns)
        cat "$file" >/dev/null
        end=$(now_ns)
        times+=("$((end - start))")
    done
    median "${times[@]}"
}

# bench_program ROOT OUTDIR: the path of the program to time, $PAD2IBIS
# when set, otherwise pad2ibis built in ROOT/build-bench (RelWithDebInfo),
# with the build's output in OUTDIR/build.log.
bench_program() {
    local root=$1 outdir=$2 prog build
    if [ -n "${PAD2IBIS:-}" ]; then
        prog=$PAD2IBIS
    else
        build=$root/build-bench
        if [ ! -f "$build/CMakeCache.txt" ]; then
            echo "configuring $build" >&2
            cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
        fi
        if ! cmake --build "$build" -j2 --target pad2ibis_app >"$outdir/build.log" 2>&1; then
            cat "$outdir/build.log" >&2
            die "build of pad2ibis failed"
        fi
        prog=$build/pad2ibis
    fi
    [ -x "$prog" ] || die "no program at $prog"
    echo "$(cd "$(dirname "$prog")" && pwd)/$(basename "$prog")"
}
