#!/usr/bin/env bash
# The lint rules of the monster, monster speech, NPC and tutorial files: on
# the faulty set each fires exactly once, at the file and line where the
# generator planted its fault; on the clean set none fires.
#   lint_creature.sh GENDATA CLIENTDATA
set -uo pipefail
gendata=$1 clientdata=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
"$gendata" --faulty "$scratch/faulty" && "$gendata" "$scratch/clean" || { echo "gendata failed"; exit 1; }
"$clientdata" lint "$scratch/faulty" --json >"$scratch/faulty.json"
"$clientdata" lint "$scratch/clean" --json >"$scratch/clean.json"

# rule file line
expected=(
  "monster-title ini/Monster.dat 3"
  "monster-duplicate-id ini/Monster.dat 7"
  "monster-name-cut ini/Monster.dat 16"
  "monster-text-cut ini/Monster.dat 21"
  "monster-duplicate-name ini/Monster.dat 24"
  "monster-speak-title ini/monsterspeak.ini 3"
  "monster-speak-duplicate-id ini/monsterspeak.ini 11"
  "monster-speak-amount ini/monsterspeak.ini 16"
  "monster-speak-text-cut ini/monsterspeak.ini 22"
  "npc-title ini/Npc.ini 3"
  "npc-duplicate-id ini/Npc.ini 9"
  "npc-text-cut ini/Npc.ini 14"
  "npc-ex-title ini/NewNpc.ini 3"
  "npc-ex-duplicate-id ini/NewNpc.ini 9"
  "npc-ex-text-cut ini/NewNpc.ini 14"
  "tutorial-title ini/BattleTutorial.ini 3"
  "tutorial-duplicate-id ini/BattleTutorial.ini 8"
  "tutorial-line-amount ini/BattleTutorial.ini 20"
  "tutorial-too-few-tokens ini/BattleTutorial.ini 21"
  "tutorial-unknown-keyword ini/BattleTutorial.ini 22"
  "tutorial-text-cut ini/BattleTutorial.ini 23"
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
