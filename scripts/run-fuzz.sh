#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (address and undefined-behaviour
# sanitizers) and runs each of them in turn.
#   scripts/run-fuzz.sh [RUNS]   RUNS executions per target (default 1000:
#                                the smoke test CI runs, a few minutes in all)
#   FUZZ_SECONDS=N               run each target for N seconds instead
#   FUZZ_TARGETS="A_fuzz B_fuzz" run only these targets
#   BUILD_DIR=dir                build folder (default build-fuzz)
# New inputs go to <build>/corpus/<target>/ and are kept between runs; the
# checked-in seeds are fuzz/corpus/<target>/ and the dictionaries
# fuzz/dict/<target>.dict. Prints executions, coverage and the outcome per
# target; a crash, leak, timeout or sanitizer report fails the run and its
# reproducer is left in <build>/artifacts/.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh clang libclang-rt-14-dev
build_dir=${BUILD_DIR:-build-fuzz}
# The targets change their working directory: every path they get is absolute.
case $build_dir in /*) ;; *) build_dir=$PWD/$build_dir ;; esac
runs=${1:-1000}

all_targets=()
for source in fuzz/*_fuzz.cpp; do
  all_targets+=("$(basename "$source" .cpp)")
done
read -r -a targets <<<"${FUZZ_TARGETS:-${all_targets[*]}}"

CC=clang CXX=clang++ cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
      -DCLIENTDATA_FUZZ=ON >/dev/null
# Only the targets: the tools in the same tree are not needed here.
cmake --build "$build_dir" --target "${targets[@]}" -- -j"${FUZZ_BUILD_JOBS:-2}"

mkdir -p "$build_dir/artifacts"
status=0
total=0
for name in "${targets[@]}"; do
  target="$build_dir/fuzz/$name"
  corpus="$build_dir/corpus/$name"
  mkdir -p "$corpus"
  seeds=()
  [ -d "fuzz/corpus/$name" ] && seeds+=("$PWD/fuzz/corpus/$name")
  dict=()
  [ -f "fuzz/dict/$name.dict" ] && dict+=("-dict=$PWD/fuzz/dict/$name.dict")
  limit=("-runs=$runs")
  [ -n "${FUZZ_SECONDS:-}" ] && limit=("-max_total_time=$FUZZ_SECONDS")
  log="$build_dir/$name.log"
  if "$target" "${limit[@]}" -max_len=65536 -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
       -artifact_prefix="$build_dir/artifacts/$name-" "${dict[@]}" "$corpus" "${seeds[@]}" >"$log" 2>&1; then
    outcome=ok
  else
    outcome=FAILED
    status=1
  fi
  executions=$(sed -nE 's/^stat::number_of_executed_units: *([0-9]+).*/\1/p' "$log" | tail -1)
  coverage=$(grep -aE '^#[0-9]+' "$log" | tail -1 | sed -nE 's/.*cov: ([0-9]+).*/\1/p' || true)
  executions=${executions:-0}
  total=$((total + executions))
  printf '%-26s %10s executions  coverage %-6s %s\n' "$name" "$executions" "${coverage:-?}" "$outcome"
  [ "$outcome" = ok ] || tail -40 "$log" | cut -c1-300 | cat -v
done
printf '%-26s %10s executions\n' total "$total"
exit $status
