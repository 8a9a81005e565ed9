#!/usr/bin/env bash
# Builds the benchmark suite (Release, build-bench/), writes the large data
# sets (gendata --scale N into build-bench/data<N>, never committed) and runs
# the suite on each; the last block of each run's output is one line per
# figure, each a ratio of two measurements of the same run. Extra arguments
# go to Google Benchmark, e.g. --benchmark_repetitions=3 or
# --benchmark_filter=lookup.
#   BENCH_SCALES  the scales to run, in order (default: 10), e.g. "1 10 30".
#                 With more than one, the start-up ratios of all are compared
#                 at the end: the ratio may grow by at most 10% from the
#                 smallest scale above 1 to each larger one.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="$root/build-bench"
scales=${BENCH_SCALES:-10}
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
ninja -C "$build" -j2 gendata ClientDataBench
for scale in $scales; do
  rm -rf "$build/data$scale"
  "$build/tools/gendata" --scale "$scale" "$build/data$scale" >/dev/null
  echo "== scale $scale"
  "$build/bench/ClientDataBench" --data "$build/data$scale" --benchmark_min_time=0.5 "$@" |
    tee "$build/figures-$scale.txt"
done
set -- $scales
[ $# -gt 1 ] || exit 0
echo
echo "== Start-up / floor by scale (target: at most 1.1x the ratio at the base scale)"
base=""
for scale in $scales; do
  ratio=$(awk '$1 == "start-up" && $2 == "/" && $3 == "floor" {sub("x", "", $4); print $4}' "$build/figures-$scale.txt")
  [ -n "$ratio" ] || continue
  if [ -z "$base" ] && [ "$scale" -gt 1 ]; then base=$ratio; base_scale=$scale; fi
  if [ -n "$base" ] && [ "$scale" != "$base_scale" ]; then
    awk -v s="$scale" -v r="$ratio" -v b="$base" -v bs="$base_scale" 'BEGIN {
      g = r / b; printf "scale %-4s %8.2fx   %.2fx the ratio at scale %s: %s\n", s, r, g, bs, g <= 1.1 ? "met" : "NOT met" }'
  else
    printf 'scale %-4s %8.2fx\n' "$scale" "$ratio"
  fi
done
