# Sourced by the golden tests: compare_golden OUT GOLDEN compares an output
# with its golden file, or rewrites the golden file with UPDATE_GOLDEN=1.
compare_golden() {
  local out=$1 golden=$2
  if [ "${UPDATE_GOLDEN:-0}" = 1 ]; then
    cp "$out" "$golden"
    echo "updated $golden"
    return 0
  fi
  diff -u "$golden" "$out" | head -40
  diff -q "$golden" "$out" >/dev/null
}
