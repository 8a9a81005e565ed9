#!/usr/bin/env bash
# The lint rules of the item type, item category and font files: on
# the faulty set each fires exactly once, at the file and line where the
# generator planted its fault; on the clean set none fires.
#   lint_item.sh GENDATA CLIENTDATA
set -uo pipefail
gendata=$1 clientdata=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
"$gendata" --faulty "$scratch/faulty" && "$gendata" "$scratch/clean" || { echo "gendata failed"; exit 1; }
"$clientdata" lint "$scratch/faulty" --json >"$scratch/faulty.json"
"$clientdata" lint "$scratch/clean" --json >"$scratch/clean.json"

# rule file line
expected=(
  "item-amount-low ini/ItemType.dat 1"
  "item-duplicate-id ini/ItemType.dat 3018"
  "item-name-long ini/ItemType.dat 3019"
  "item-text-cut ini/ItemType.dat 3020"
  "item-amount-high ini/200/ItemType_200.dat 1"
  "item-category-reversed ini/ItemCategory.dat 61"
  "item-category-null ini/ItemCategory.dat 64"
  "item-category-bad-range ini/ItemCategory.dat 67"
  "font-setting-order ini/FontSetting.ini 5"
  "font-text-cut ini/Font.ini 5"
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
