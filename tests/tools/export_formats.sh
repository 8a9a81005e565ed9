#!/usr/bin/env bash
# export's formats parse back: the JSON of each named table is an array of
# objects without a repeated key (also where the faulty set repeats a key in
# a section), and CSV read by an RFC 4180 reader gives back the texts, with
# quotes and commas, converted from GB18030 as a whole (a four-byte
# character included; a byte that starts none shows as \xNN).
#   export_formats.sh GENDATA CLIENTDATA SAMPLE TABLE...
set -euo pipefail
gendata=$1 clientdata=$2 sample=$3
shift 3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
check_json() {  # check_json TABLE DIR
  "$clientdata" export "$1" --format json "$2" | python3 -c '
import json, sys
def unique(pairs):
    keys = [k for k, _ in pairs]
    assert len(keys) == len(set(keys)), "repeated key in %s" % keys
    return dict(pairs)
records = json.load(sys.stdin, object_pairs_hook=unique)
assert isinstance(records, list) and records, "no records"
assert all(isinstance(r, dict) for r in records)
print("%s: %d records, %d fields" % (sys.argv[1], len(records), len(records[0])))
' "$1"
}
for table in "$@"; do check_json "$table" "$sample"; done
"$gendata" --faulty "$scratch/faulty"
check_json MagicTypeEud "$scratch/faulty"

cp -r "$sample" "$scratch/data"
printf '[1000]\r\nCaption=a,"b" c\r\nRemark=\x81\x30\x81\x30\xc4\xe3\x81\r\n' >"$scratch/data/ini/GameMap.ini"
"$clientdata" export GameMap --format=csv "$scratch/data" | python3 -c '
import csv, sys
raw = sys.stdin.buffer.read()
assert raw.endswith(b"\r\n") and b"\n" not in raw.replace(b"\r\n", b""), "lines end in CRLF"
rows = list(csv.DictReader(raw.decode("utf-8").splitlines(True)))
assert rows[0]["Caption"] == "a,\"b\" c", rows
assert rows[0]["Remark"] == "\u0080\u4f60\\x81", rows
print("CSV: quotes, commas and GB18030 texts round-trip")
'
