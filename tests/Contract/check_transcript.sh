#!/usr/bin/env bash
# Runs the contract transcript on a fresh copy of the contract data and
# compares it byte for byte with the golden transcript, so that a change to
# the loaders that alters any answer the client sees fails here
# (UPDATE_GOLDEN=1 rewrites the golden file).
#   check_transcript.sh TRANSCRIPT LIBRARY DATA GOLDEN
set -euo pipefail
transcript=$1 library=$2 data=$3 golden=$4
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp -r "$data" "$scratch/data"
mkdir -p "$scratch/data/debug"
(cd "$scratch/data" && "$transcript" "$library" "$scratch/out.txt")
if [ "${UPDATE_GOLDEN:-0}" = 1 ]; then
  cp "$scratch/out.txt" "$golden"
  echo "updated $golden"
  exit 0
fi
diff -u "$golden" "$scratch/out.txt" | head -40 || true
cmp -s "$golden" "$scratch/out.txt"
