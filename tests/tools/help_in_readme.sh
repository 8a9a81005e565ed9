#!/usr/bin/env bash
# Every line of clientdata --help stands in the README, as it prints it.
set -euo pipefail
clientdata=$1 readme=$2
missing=0
while IFS= read -r line; do
  [ -z "$line" ] && continue
  if ! grep -qxF "    $line" "$readme"; then
    echo "not in the README: $line"
    missing=1
  fi
done < <("$clientdata" --help)
[ "$missing" -eq 0 ] && echo "the README shows clientdata --help"
exit "$missing"
