#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (address and undefined-behaviour
# sanitizers) and runs them, FUZZ_JOBS at a time.
#   scripts/run-fuzz.sh [RUNS]   RUNS executions per target (default 1000:
#                                the smoke test CI runs, a few minutes in all)
#   FUZZ_SECONDS=N               run each target for N seconds instead
#   FUZZ_TARGETS="A_fuzz B_fuzz" run only these targets
#   FUZZ_JOBS=N                  targets run side by side (default nproc)
#   FUZZ_MAX_LEN=N               longest input (default 65536)
#   FUZZ_SEED=N                  libFuzzer's seed (default 1, so that a smoke
#                                run on a fresh clone repeats; 0 draws one)
#   BUILD_DIR=dir                build folder (default build-fuzz)
# New inputs go to <build>/corpus/<target>/ and are kept between runs; the
# checked-in seeds are fuzz/corpus/<target>/ and the dictionaries
# fuzz/dict/<target>.dict. Prints executions (this run's, and all runs'
# recorded in <build>/ledger.tsv), coverage and the outcome per target; a
# crash, leak, timeout or sanitizer report fails the run and its reproducer
# is left in <build>/artifacts/. A run stopped from outside is "stopped";
# its executions still count.
set -euo pipefail
scripts=$(cd "$(dirname "$0")" && pwd)
cd "$scripts/.."
source "$scripts/fuzz-ledger.sh"
bash scripts/deps.sh clang libclang-rt-14-dev
build_dir=${BUILD_DIR:-build-fuzz}
# The targets change their working directory: every path they get is absolute.
case $build_dir in /*) ;; *) build_dir=$PWD/$build_dir ;; esac
runs=${1:-1000}

mapfile -t all_targets < <(fuzz_targets)
read -r -a targets <<<"${FUZZ_TARGETS:-${all_targets[*]}}"

CC=clang CXX=clang++ cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
      -DCLIENTDATA_FUZZ=ON >/dev/null
# Only the targets: the tools in the same tree are not needed here.
cmake --build "$build_dir" --target "${targets[@]}" -- -j"${FUZZ_BUILD_JOBS:-2}"

mkdir -p "$build_dir/artifacts"
# Every run adds its executions to the ledger, so that long campaigns spread
# over several sittings still add up per target.
ledger=$build_dir/ledger.tsv
touch "$ledger"

# Executions a log records: libFuzzer's final count, or for a run cut off
# before it printed one, the count on its last progress line.
executions_in() {
  local counted
  counted=$(sed -nE 's/^stat::number_of_executed_units: *([0-9]+).*/\1/p' "$1" | tail -1)
  [ -n "$counted" ] || counted=$(grep -aoE '^#[0-9]+' "$1" | tail -1 | tr -d '#')
  echo "${counted:-0}"
}

fuzz_one() {
  local name=$1
  local target="$build_dir/fuzz/$name" corpus="$build_dir/corpus/$name" log="$build_dir/$name.log"
  mkdir -p "$corpus"
  local seeds=() dict=() limit=("-runs=$runs")
  [ -d "fuzz/corpus/$name" ] && seeds+=("$PWD/fuzz/corpus/$name")
  [ -f "fuzz/dict/$name.dict" ] && dict+=("-dict=$PWD/fuzz/dict/$name.dict")
  [ -n "${FUZZ_SECONDS:-}" ] && limit=("-max_total_time=$FUZZ_SECONDS")
  "$target" "${limit[@]}" -seed="${FUZZ_SEED:-1}" -max_len="${FUZZ_MAX_LEN:-65536}" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
      -artifact_prefix="$build_dir/artifacts/$name-" "${dict[@]}" "$corpus" "${seeds[@]}" >"$log" 2>&1
}

# FUZZ_JOBS targets at a time (default: one per processor).
jobs=${FUZZ_JOBS:-$(nproc)}
running=0
for name in "${targets[@]}"; do
  if [ "$running" -ge "$jobs" ]; then wait -n || true; running=$((running - 1)); fi
  (
    # libFuzzer exits with 72 when interrupted (Ctrl-C, a campaign being
    # stopped): not a fault of the target.
    rc=0
    fuzz_one "$name" || rc=$?
    case $rc in 0) echo ok ;; 72) echo stopped ;; *) echo FAILED ;; esac >"$build_dir/$name.outcome"
    # Recorded as soon as the target ends, so that a campaign cut short
    # still counts what it ran.
    printf '%s\t%s\n' "$name" "$(executions_in "$build_dir/$name.log")" >>"$ledger"
  ) &
  running=$((running + 1))
done
wait

status=0
total=0
printf '%-26s %12s %12s  %-8s %s\n' target executions "in ledger" coverage outcome
for name in "${targets[@]}"; do
  log="$build_dir/$name.log"
  result=$(cat "$build_dir/$name.outcome" 2>/dev/null || echo FAILED)
  executions=$(executions_in "$log")
  coverage=$(grep -aE '^#[0-9]+' "$log" | tail -1 | sed -nE 's/.*cov: ([0-9]+).*/\1/p' || true)
  total=$((total + executions))
  overall=$(ledger_total "$ledger" "$name")
  printf '%-26s %12s %12s  %-8s %s\n' "$name" "$executions" "$overall" "${coverage:-?}" "$result"
  [ "$result" = ok ] || status=1
  if [ "$result" = FAILED ]; then tail -40 "$log" | cut -c1-300 | cat -v; fi
done
printf '%-26s %12s\n' total "$total"
exit $status
