#!/usr/bin/env bash
# The bundled sample must be exactly what the generator writes at the default
# size, so that regenerating it is the only way it changes.
set -euo pipefail
gendata=$1 sample=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
"$gendata" "$scratch/sample"
if ! diff -r --exclude=debug "$sample" "$scratch/sample" >"$scratch/diff.txt"; then
  head -20 "$scratch/diff.txt"
  echo "data/sample differs from the generator's output: regenerate it with gendata data/sample"
  exit 1
fi
echo "sample matches the generator"
