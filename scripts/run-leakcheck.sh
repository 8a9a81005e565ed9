#!/usr/bin/env bash
# Leak check of the whole start-up and shutdown: the clientdata tool loads a
# copy of the bundled sample as the client does (QueryClientDataMgr,
# LoadDeferList, ReloadDeferred, LoadStrRes, DestroyClientDataMgr), on the
# standard and on the alternative data set. Under valgrind --leak-check=full
# when valgrind is installed, else under LeakSanitizer. Exits non-zero on any
# leak or memory error.
#   BUILD_DIR=dir   build folder (default build-fault, or build-fault-asan
#                   for LeakSanitizer)
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
data=$(mktemp -d /tmp/clientdata-leak-XXXXXX)
trap 'rm -rf "$data"' EXIT
cp -r data/sample/. "$data/"
rm -rf "$data/debug"

if command -v valgrind >/dev/null 2>&1; then
  build_dir=${BUILD_DIR:-build-fault}
  cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=Debug >/dev/null
  cmake --build "$build_dir" --target clientdata -- -j2
  run=(valgrind --quiet --leak-check=full --show-leak-kinds=definite,indirect,possible
       --errors-for-leak-kinds=definite,indirect,possible --error-exitcode=1)
  checker=valgrind
else
  build_dir=${BUILD_DIR:-build-fault-asan}
  cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCLIENTDATA_SANITIZE=ON >/dev/null
  cmake --build "$build_dir" --target clientdata -- -j2
  export ASAN_OPTIONS=detect_leaks=1:halt_on_error=1
  run=()
  checker=LeakSanitizer
fi

status=0
for version in 100 200; do
  if "${run[@]}" "$build_dir/tools/clientdata" report "$data" --data-version "$version" >"$data/report-$version.txt"; then
    printf 'start-up and shutdown, data set %s: %s clean (%s tables reported)\n' "$version" "$checker" \
      "$(grep -c . "$data/report-$version.txt")"
  else
    printf 'start-up and shutdown, data set %s: %s FAILED\n' "$version" "$checker"
    status=1
  fi
done
exit $status
