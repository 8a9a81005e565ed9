#!/usr/bin/env bash
# A long fuzzing campaign that can be stopped and resumed at any time: runs
# the targets in turns of FUZZ_SECONDS (default 300), FUZZ_JOBS at a time,
# always those with the fewest executions in the ledger first, until every
# target has GOAL executions (default ten million) or one of them fails.
#   scripts/fuzz-campaign.sh [GOAL]
# A turn cut off loses at most its own executions: the ledger is written as
# each turn ends. Defaults: BUILD_DIR=build-fuzz-long, a fresh seed per turn
# and inputs up to 16 KiB; the other settings are those of run-fuzz.sh.
set -euo pipefail
scripts=$(cd "$(dirname "$0")" && pwd)
cd "$scripts/.."
source "$scripts/fuzz-ledger.sh"
goal=${1:-10000000}
export BUILD_DIR=${BUILD_DIR:-build-fuzz-long} FUZZ_SECONDS=${FUZZ_SECONDS:-300} \
       FUZZ_SEED=${FUZZ_SEED:-0} FUZZ_MAX_LEN=${FUZZ_MAX_LEN:-16384}
jobs=${FUZZ_JOBS:-$(nproc)}
ledger=$BUILD_DIR/ledger.tsv

# "executions target" for every target, fewest first.
standings() {
  local name
  for name in $(fuzz_targets); do
    printf '%s %s\n' "$(ledger_total "$ledger" "$name")" "$name"
  done | sort -n
}

while :; do
  mapfile -t behind < <(standings | awk -v goal="$goal" '$1 < goal { print $2 }' | head -n "$jobs")
  [ ${#behind[@]} -gt 0 ] || break
  FUZZ_TARGETS="${behind[*]}" bash "$scripts/run-fuzz.sh"
done
standings
