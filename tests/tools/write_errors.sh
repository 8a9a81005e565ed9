#!/usr/bin/env bash
# A write that fails ends the tool with a message and status 1: clientdata
# writing to a full device, gendata writing where a folder cannot be made.
# gendata keeps a folder that is not empty unless given --force.
#   write_errors.sh GENDATA CLIENTDATA SAMPLE
set -uo pipefail
gendata=$1 clientdata=$2 sample=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0
expect() {  # expect STATUS MESSAGE-PATTERN COMMAND...
  local status=$1 pattern=$2
  shift 2
  "$@" >/dev/null 2>"$scratch/err.txt" </dev/null
  local got=$?
  if [ "$got" -ne "$status" ] || { [ -n "$pattern" ] && ! grep -q "$pattern" "$scratch/err.txt"; }; then
    echo "$*: status $got, expected $status with \"$pattern\":"
    cat "$scratch/err.txt"
    failed=1
  fi
}
full() { "$@" >/dev/full; }
expect 1 "No space left" full "$clientdata" export GameMap "$sample"
expect 1 "No space left" full "$clientdata" get GameMap 1000 "$sample"
expect 1 "No space left" full "$clientdata" lint "$sample"
expect 1 "not a regular file" "$clientdata" export --all --format sqlite /dev/full "$sample"
[ -c /dev/full ] || { echo "/dev/full is gone"; failed=1; }

mkdir "$scratch/edited" && echo "edited by hand" >"$scratch/edited/notes.txt"
expect 2 "not an empty folder" "$gendata" "$scratch/edited"
[ "$(ls "$scratch/edited")" = notes.txt ] || { echo "gendata wrote into a folder that is not empty"; failed=1; }
expect 0 "" "$gendata" --force "$scratch/edited"
[ -f "$scratch/edited/ini/Monster.dat" ] || { echo "gendata --force wrote nothing"; failed=1; }

mkdir "$scratch/blocked" && touch "$scratch/blocked/ini"  # a file where the folder ini/ goes
expect 1 "cannot write" "$gendata" --force "$scratch/blocked"
[ "$failed" -eq 0 ] && echo "write errors end with a message and status 1; gendata keeps an edited folder"
exit "$failed"
