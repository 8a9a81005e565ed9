#!/usr/bin/env bash
# The long versions of the hostile-file tests (tests/ClientData/
# HostileFiles_test.cpp): 10,000 create/load/destroy cycles with the resident
# memory and the open descriptors before and after, and 1 GiB data files with
# the peak resident memory and the time per MiB of each load. Every case also
# runs with its short settings in the test suite; here they print figures.
#   BUILD_DIR  build folder (default: build, or build-asan with SANITIZE=ON)
#   SANITIZE   ON for the AddressSanitizer + UndefinedBehaviorSanitizer build
#   CYCLES     create/load/destroy cycles (default 10000)
#   FILE_MIB   size of the large files in MiB (default 1024)
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
sanitize=${SANITIZE:-OFF}
if [ "$sanitize" = ON ]; then default_dir=build-asan; else default_dir=build; fi
build_dir=${BUILD_DIR:-$default_dir}
cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
      -DCLIENTDATA_SANITIZE="$sanitize" -DCMAKE_COMPILE_WARNING_AS_ERROR=ON >/dev/null
cmake --build "$build_dir" --target ClientDataTests -- -j2

free_mib=$(df -Pm /tmp | awk 'NR == 2 { print $4 }')
if [ "$free_mib" -lt $(( ${FILE_MIB:-1024} * 2 + 1024 )) ]; then
  echo "run-hostile: /tmp has ${free_mib} MiB free; the large files need twice ${FILE_MIB:-1024} MiB" >&2
  exit 1
fi

log=$(mktemp /tmp/clientdata-hostile-XXXXXX.log)
trap 'rm -f "$log"' EXIT
status=0
CLIENTDATA_HOSTILE_CYCLES=${CYCLES:-10000} CLIENTDATA_LARGE_FILE_MIB=${FILE_MIB:-1024} \
  "$build_dir/tests/ClientDataTests" --gtest_filter='HostileFilesTest.*' >"$log" 2>&1 || status=$?

echo "Hostile files ($( [ "$sanitize" = ON ] && echo sanitizer || echo release ) build, $build_dir):"
grep -E '^\[ +(OK|FAILED|SKIPPED) +\] HostileFilesTest' "$log" | sed 's/^/  /'
echo "Figures:"
grep '^\[figures\]' "$log" | sed 's/^\[figures\] /  /'
if [ "$status" -ne 0 ]; then
  echo "run-hostile: failures; the test output follows" >&2
  grep -vE '^\[figures\]' "$log" >&2
fi
exit "$status"
