#!/usr/bin/env bash
# The lint rules of the action files and of the magic type files: on the
# faulty set each fires exactly once, at the file and line where the
# generator planted its fault; on the clean set none fires. The faulty set
# must still load (the report runs to its end).
#   lint_action.sh GENDATA CLIENTDATA
set -uo pipefail
gendata=$1 clientdata=$2
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

# rule file line
expected=(
  "action-unknown-name ini/ActionType.ini 321"
  "action-duplicate-name ini/ActionType.ini 11"
  "action-delay-duplicate ini/ActionDelay.ini 983"
  "action-ctrl-count ini/ActionCtrl.ini 2787"
  "action-ctrl-duplicate ini/ActionCtrl.ini 2805"
  "action-value-bad-line ini/Action.dat 294"
  "action-value-duplicate ini/Action.dat 295"
  "action-offset-duplicate ini/ActionEffectOffset.ini 1512"
  "action-offset-skipped ini/ActionEffectOffset.ini 1517"
  "magic-duplicate-id ini/MagicType.ini 2581"
  "magic-text-cut ini/MagicType.ini 2582"
  "magic-short-line ini/MagicType.ini 2583"
  "magic-long-line ini/MagicType.ini 2584"
  "magic-blank-line ini/MagicType.ini 2585"
  "magic-extra-section ini/MagicTypeEx.ini 10840"
  "magic-ex-duplicate ini/MagicTypeEx.ini 10843"
  "magic-ex-unknown-key ini/MagicTypeEx.ini 10844"
)
failed=0
for entry in "${expected[@]}"; do
  read -r rule file line <<<"$entry"
  count=$(grep -c "\"rule\": \"$rule\"" "$scratch/faulty.json")
  if [ "$count" -ne 1 ]; then
    echo "$rule fired $count times on the faulty set, expected once"
    failed=1
  elif ! grep -q "{\"file\": \"$file\", \"line\": $line, \"severity\": \"[a-z]*\", \"rule\": \"$rule\"" "$scratch/faulty.json"; then
    echo "$rule did not fire at $file:$line:"
    grep "\"rule\": \"$rule\"" "$scratch/faulty.json"
    failed=1
  fi
  if grep -q "\"rule\": \"$rule\"" "$scratch/clean.json"; then
    echo "$rule fired on the clean set:"
    grep "\"rule\": \"$rule\"" "$scratch/clean.json"
    failed=1
  fi
done
[ "$failed" -eq 0 ] && echo "all ${#expected[@]} rules fire once on the faulty set and never on the clean set"
exit "$failed"
