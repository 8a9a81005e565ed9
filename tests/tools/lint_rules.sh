#!/usr/bin/env bash
# Every finding listed in RULES is reported on the generator's faulty set, at
# the file and line where the fault was planted, and its rule never fires on
# the clean set. The faulty set must still load (the report runs to its end).
#   lint_rules.sh GENDATA CLIENTDATA RULES
set -uo pipefail
gendata=$1 clientdata=$2 rules=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
"$gendata" --faulty "$scratch/faulty" && "$gendata" "$scratch/clean" || { echo "gendata failed"; exit 1; }
"$clientdata" lint "$scratch/faulty" --json >"$scratch/faulty.json"
"$clientdata" lint "$scratch/clean" --json >"$scratch/clean.json"
"$clientdata" report "$scratch/faulty" >"$scratch/report.txt" 2>&1
status=$?
if [ "$status" -ge 2 ]; then
  echo "the report on the faulty set ended with status $status"
  exit 1
fi

failed=0
checked=0
while read -r rule file line; do
  case $rule in ''|'#'*) continue ;; esac
  checked=$((checked + 1))
  if ! grep -q "{\"file\": \"$file\", \"line\": $line, \"severity\": \"[a-z]*\", \"rule\": \"$rule\"" "$scratch/faulty.json"; then
    echo "$rule did not fire at $file:$line:"
    grep "\"rule\": \"$rule\"" "$scratch/faulty.json"
    failed=1
  fi
  if grep -q "\"rule\": \"$rule\"" "$scratch/clean.json"; then
    echo "$rule fired on the clean set:"
    grep "\"rule\": \"$rule\"" "$scratch/clean.json"
    failed=1
  fi
done <"$rules"
[ "$failed" -eq 0 ] && echo "all $checked findings are reported where planted, and none of their rules on the clean set"
exit "$failed"
