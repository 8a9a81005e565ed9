#!/usr/bin/env bash
# Builds the libFuzzer targets with clang and runs each of them.
#   scripts/run-fuzz.sh [RUNS]      RUNS executions per target (default 2000:
#                                   the smoke test CI runs)
#   FUZZ_SECONDS=N                  run each target for N seconds instead
# Prints executions, coverage and the outcome per target; exits non-zero on
# any crash, leak or sanitizer report.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh clang libclang-rt-14-dev
build_dir=${BUILD_DIR:-build-fuzz}
CC=clang CXX=clang++ cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
      -DCLIENTDATA_FUZZ=ON >/dev/null
cmake --build "$build_dir"
runs=${1:-2000}
status=0
for target in "$build_dir"/fuzz/*_fuzz; do
  name=$(basename "$target")
  corpus="$build_dir/corpus/$name"
  mkdir -p "$corpus"
  seeds=()
  [ -d "fuzz/corpus/$name" ] && seeds+=("fuzz/corpus/$name")
  dict=()
  [ -f "fuzz/dict/$name.dict" ] && dict+=("-dict=fuzz/dict/$name.dict")
  limit=("-runs=$runs")
  [ -n "${FUZZ_SECONDS:-}" ] && limit=("-max_total_time=$FUZZ_SECONDS")
  log="$build_dir/$name.log"
  if "$target" "${limit[@]}" -max_len=65536 -timeout=10 "${dict[@]}" "$corpus" "${seeds[@]}" >"$log" 2>&1; then
    outcome=ok
  else
    outcome=FAILED
    status=1
  fi
  stats=$(grep -E '^#[0-9]+' "$log" | tail -1 | sed -E 's/^#([0-9]+).*cov: ([0-9]+).*/\1 executions, coverage \2/')
  printf '%-28s %-40s %s\n' "$name" "$stats" "$outcome"
  [ "$outcome" = ok ] || tail -30 "$log"
done
exit $status
