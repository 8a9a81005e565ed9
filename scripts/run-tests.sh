#!/usr/bin/env bash
# Builds everything and runs every test. Warnings fail the build: they are
# kept at zero.
#   BUILD_DIR  build folder (default: build)
#   SANITIZE   ON for an AddressSanitizer + UndefinedBehaviorSanitizer build
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh clang
build_dir=${BUILD_DIR:-build}
cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
      -DCLIENTDATA_SANITIZE="${SANITIZE:-OFF}" -DCMAKE_COMPILE_WARNING_AS_ERROR=ON >/dev/null
cmake --build "$build_dir"
ctest --test-dir "$build_dir" --output-on-failure -j2
