# Sourced by the fuzz scripts (run from the repository's root): the targets,
# and the ledger that adds up their executions over every run.

# Every fuzz target, by name.
fuzz_targets() {
  for source in fuzz/*_fuzz.cpp; do basename "$source" .cpp; done
}

# The executions ledger $1 records for target $2 (0 without a ledger).
ledger_total() {
  awk -F'\t' -v n="$2" '$1 == n { s += $2 } END { print s + 0 }' "$1" 2>/dev/null || echo 0
}
