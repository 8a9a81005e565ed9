#!/usr/bin/env bash
# export --all --format sqlite writes one table per data table, with the
# described columns and the texts in UTF-8, the same as get shows them.
set -euo pipefail
clientdata=$1 sample=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp -r "$sample" "$scratch/data"
"$clientdata" export --all --format sqlite "$scratch/data.db" "$scratch/data"
name=$("$clientdata" get Monster 1005 "$scratch/data" | sed -n 's/^Name: //p')
tables=$("$clientdata" tables | wc -l)
python3 - "$scratch/data.db" "$name" "$tables" <<'PY'
import sqlite3, sys
db = sqlite3.connect(sys.argv[1])
names = [r[0] for r in db.execute("select name from sqlite_master where type = 'table'")]
assert len(names) == int(sys.argv[3]), (len(names), sys.argv[3])
columns = [r[1] for r in db.execute('pragma table_info("Monster")')]
assert columns[:2] == ["Id", "Name"], columns
(name,) = db.execute('select Name from Monster where Id = 1005').fetchone()
assert name == sys.argv[2], (name, sys.argv[2])
(amount,) = db.execute('select count(*) from GameMap where title = "1000" and Class = "6"').fetchone()
assert amount == 1
print("%d tables; Monster 1005 is %s" % (len(names), name))
PY
diff -r "$sample" "$scratch/data"
