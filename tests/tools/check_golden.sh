#!/usr/bin/env bash
# Runs one clientdata command in a fresh copy of the sample (the working
# directory, so the default folder is the copy) and compares its output with
# a golden file (UPDATE_GOLDEN=1 rewrites the golden file). The copy must be
# left exactly as it was: a command never writes into the folder it reads.
#   check_golden.sh CLIENTDATA SAMPLE GOLDEN EXPECTED_STATUS ARGS...
# In ARGS, @DIR@ stands for the copied data folder.
set -uo pipefail
source "$(dirname "$0")/golden.sh"
clientdata=$1 sample=$2 golden=$3 expected=$4
shift 4
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp -r "$sample" "$scratch/data"
args=()
for arg in "$@"; do args+=("${arg//@DIR@/$scratch/data}"); done
(cd "$scratch/data" && "$clientdata" "${args[@]}") 2>&1 | sed "s#$scratch/data#DIR#g" >"$scratch/out.txt"
status=${PIPESTATUS[0]}
if [ "$status" -ne "$expected" ]; then
  head -20 "$scratch/out.txt"
  echo "exit status $status, expected $expected"
  exit 1
fi
if ! diff -r "$sample" "$scratch/data"; then
  echo "the command changed the data folder"
  exit 1
fi
compare_golden "$scratch/out.txt" "$golden"
