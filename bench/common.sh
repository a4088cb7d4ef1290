# Timing helpers shared by the benchmark scripts (sourced, not run).

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
