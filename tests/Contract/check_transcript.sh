#!/usr/bin/env bash
# Runs the contract transcript on a fresh copy of the contract data and
# compares it byte for byte with the golden transcript, so that a change to
# the loaders that alters any answer the client sees fails here
# (UPDATE_GOLDEN=1 rewrites the golden file).
#   check_transcript.sh TRANSCRIPT LIBRARY DATA GOLDEN [GENDATA]
# With GENDATA, DATA is a scale: the data folder is generated at that scale.
set -euo pipefail
transcript=$1 library=$2 data=$3 golden=$4 gendata=${5:-}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
if [ -n "$gendata" ]; then
  "$gendata" --scale "$data" "$scratch/data" >/dev/null
else
  cp -r "$data" "$scratch/data"
fi
mkdir -p "$scratch/data/debug"
(cd "$scratch/data" && "$transcript" "$library" "$scratch/out.txt")
if [ "${UPDATE_GOLDEN:-0}" = 1 ]; then
  cp "$scratch/out.txt" "$golden"
  echo "updated $golden"
  exit 0
fi
diff -u "$golden" "$scratch/out.txt" | head -40 || true
cmp -s "$golden" "$scratch/out.txt"
