# Sourced by the fuzz scripts (run from the repository's root): the targets,
# and the ledger that adds up their executions over every run.

# Every fuzz target, by name: one per input surface, and one per table with a
# design of its own (fuzz/Table_fuzz.cpp, named after the table).
fuzz_targets() {
  for source in fuzz/*_fuzz.cpp; do
    [ "$source" = fuzz/Table_fuzz.cpp ] || basename "$source" .cpp
  done
  sed -nE 's/^CLIENTDATA_TABLE\([0-9]+, ([A-Za-z0-9_]+),.*/\1_fuzz/p' ClientData/Catalogue.def
}

# The executions ledger $1 records for target $2 (0 without a ledger).
ledger_total() {
  awk -F'\t' -v n="$2" '$1 == n { s += $2 } END { print s + 0 }' "$1" 2>/dev/null || echo 0
}
