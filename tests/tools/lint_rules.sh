#!/usr/bin/env bash
# Every finding listed in RULES is reported on the generator's faulty set, at
# the file and line where the fault was planted, and its rule never fires on
# the clean set. The faulty set must still load (the report runs to its end);
# its debug log goes to --log DIR, not into the folder.
#   lint_rules.sh GENDATA CLIENTDATA RULES
set -uo pipefail
gendata=$1 clientdata=$2 rules=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
"$gendata" --faulty "$scratch/faulty" && "$gendata" "$scratch/clean" || { echo "gendata failed"; exit 1; }
"$clientdata" lint "$scratch/faulty" --json --log="$scratch/log" >"$scratch/faulty.json"
faulty_status=$?
"$clientdata" lint "$scratch/clean" --json >"$scratch/clean.json"
clean_status=$?
"$clientdata" report "$scratch/faulty" >"$scratch/report.txt" 2>&1
report_status=$?
failed=0
[ "$faulty_status" -eq 1 ] || { echo "lint on the faulty set: status $faulty_status, expected 1"; failed=1; }
[ "$clean_status" -eq 0 ] || { echo "lint on the clean set: status $clean_status, expected 0"; failed=1; }
[ "$report_status" -eq 0 ] || { echo "the report on the faulty set ended with status $report_status"; failed=1; }
ls "$scratch"/log/*.log >/dev/null 2>&1 || { echo "no debug log in the --log folder"; failed=1; }
[ ! -e "$scratch/faulty/debug" ] || { echo "the debug log was written into the data folder"; failed=1; }

python3 - "$rules" "$scratch/faulty.json" "$scratch/clean.json" <<'PY' || failed=1
import json, sys
rules, faulty, clean = sys.argv[1], json.load(open(sys.argv[2])), json.load(open(sys.argv[3]))
found = {(f["rule"], f["file"], f["line"]) for f in faulty}
fired_clean = {f["rule"] for f in clean}
failed, checked = False, 0
for line in open(rules):
    words = line.split()
    if not words or words[0].startswith("#"):
        continue
    rule, path, number = words[0], words[1], int(words[2])
    checked += 1
    if (rule, path, number) not in found:
        print("%s did not fire at %s:%d: %s" % (rule, path, number,
              sorted((f["file"], f["line"]) for f in faulty if f["rule"] == rule)))
        failed = True
    if rule in fired_clean:
        print("%s fired on the clean set" % rule)
        failed = True
if not failed:
    print("all %d findings are reported where planted, and none of their rules on the clean set" % checked)
sys.exit(1 if failed else 0)
PY
exit "$failed"
