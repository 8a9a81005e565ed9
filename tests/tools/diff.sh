#!/usr/bin/env bash
# diff on the sample and an edited copy: a record inserted first (nothing
# after it shows), one removed, a field changed in a generic table and in
# Common.ini (which several tables read: it shows once), a field changed in
# a described table. The output, --stat and --json are compared with one
# golden file (UPDATE_GOLDEN=1 rewrites it); a folder against itself is
# the same, with status 0.
#   diff.sh CLIENTDATA SAMPLE GOLDEN
set -uo pipefail
source "$(dirname "$0")/golden.sh"
clientdata=$1 sample=$2 golden=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp -r "$sample" "$scratch/old"
cp -r "$sample" "$scratch/new"
python3 - "$scratch/new" <<'PY'
import re, sys
root = sys.argv[1]
def edit(name, change):
    path = root + "/ini/" + name
    text = open(path, "rb").read()
    changed = change(text)
    assert changed != text, name
    open(path, "wb").write(changed)
edit("GameMap.ini", lambda t: t.replace(b"[1000]\n", b"[999]\nCaption=new\n\n[1000]\n", 1)
                               .replace(b"Worth=9646\n", b"Worth=9647\n", 1))
edit("GameMap.ini", lambda t: re.sub(rb"\[1003\]\n(?:[^\[\n][^\n]*\n|\n)*", b"", t, count=1))
edit("Common.ini", lambda t: t.replace(b"LeaderScale=119\n", b"LeaderScale=120\n", 1))
edit("Monster.dat", lambda t: re.sub(rb"(\[1005\]\r?\n(?:.*\r?\n)*?SizeAdd=)\d+", rb"\g<1>77", t, count=1))
PY
run() {
  echo "== clientdata $*"
  (cd "$scratch/new" && "$clientdata" "$@") 2>&1 | sed "s#$scratch#SCRATCH#g"
  echo "== exit status ${PIPESTATUS[0]}"
}
{
  run diff ../old
  run diff --stat ../old .
  run diff --json ../old
  run diff ../old ../old
} >"$scratch/out.txt"
compare_golden "$scratch/out.txt" "$golden"
