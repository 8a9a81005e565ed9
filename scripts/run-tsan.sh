#!/usr/bin/env bash
# ThreadSanitizer run: the text-resource miss path called from several threads
# and the report senders' worker threads (error, connection-test and
# promotion reports, and the debug log they write), in a clang
# -fsanitize=thread build. Exits non-zero on any data race or failed test.
#   BUILD_DIR=dir   build folder (default build-tsan)
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh clang
build_dir=${BUILD_DIR:-build-tsan}
flags="-fsanitize=thread -fno-omit-frame-pointer -g"
link="-fsanitize=thread"
CC=clang CXX=clang++ cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
      -DCMAKE_C_FLAGS="$flags" -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_EXE_LINKER_FLAGS="$link" \
      -DCMAKE_SHARED_LINKER_FLAGS="$link" >/dev/null
cmake --build "$build_dir" --target ZelGameBaseTests ClientDataTests -- -j2
export TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1"
status=0
run() {
  local binary=$1 filter=$2
  if "$build_dir/tests/$binary" --gtest_filter="$filter" --gtest_brief=1 >"$build_dir/$binary.tsan.log" 2>&1; then
    printf '%-18s %-60s clean\n' "$binary" "$filter"
  else
    printf '%-18s %-60s FAILED\n' "$binary" "$filter"
    tail -60 "$build_dir/$binary.tsan.log"
    status=1
  fi
}
run ClientDataTests 'FaultInjectionTest.StrRes*:*StrRes*'
run ZelGameBaseTests 'ErrorReport*:PromotionReport*:DebugLog*'
exit $status
