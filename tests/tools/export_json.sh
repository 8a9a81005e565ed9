#!/usr/bin/env bash
# The JSON export of each named table parses back as an array of objects,
# no object repeating a key.
set -euo pipefail
clientdata=$1 sample=$2
shift 2
for table in "$@"; do
  "$clientdata" export "$table" --format json "$sample" | python3 -c '
import json, sys
def unique(pairs):
    keys = [k for k, _ in pairs]
    assert len(keys) == len(set(keys)), "repeated key in %s" % keys
    return dict(pairs)
records = json.load(sys.stdin, object_pairs_hook=unique)
assert isinstance(records, list) and records, "no records"
assert all(isinstance(r, dict) for r in records)
print("%s: %d records, %d fields" % (sys.argv[1], len(records), len(records[0])))
' "$table"
done
