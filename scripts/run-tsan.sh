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
cmake --build "$build_dir" --target ZelGameBaseTests -- -j2
# ClientDataTests replaces operator new (it counts allocations), which the
# static ThreadSanitizer runtime also defines; it runs only when it links.
client_tests=yes
cmake --build "$build_dir" --target ClientDataTests -- -j2 >"$build_dir/ClientDataTests.link.log" 2>&1 || client_tests=no
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
if [ $client_tests = yes ]; then
  run ClientDataTests 'FaultInjectionTest.StrRes*:*StrRes*'
else
  printf '%-18s %-60s NOT RUN (does not link with the runtime)\n' ClientDataTests StrRes
  status=1
fi
run ZelGameBaseTests 'ErrorReport*:PromotionReport*:DebugLog*'
exit $status
