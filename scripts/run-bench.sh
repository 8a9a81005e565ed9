#!/usr/bin/env bash
# Builds the benchmark suite (Release, build-bench/), writes the large data set
# (gendata --scale 10 into build-bench/data, never committed) and runs the
# suite; the last block of its output is one line per figure, each a ratio of
# two measurements of the same run. Extra arguments go to Google Benchmark,
# e.g. --benchmark_repetitions=3 or --benchmark_filter=lookup.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="$root/build-bench"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
ninja -C "$build" -j2 gendata ClientDataBench
rm -rf "$build/data"
"$build/tools/gendata" --scale 10 "$build/data"
exec "$build/bench/ClientDataBench" --data "$build/data" --benchmark_min_time=0.5 "$@"
