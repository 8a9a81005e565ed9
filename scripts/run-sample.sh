#!/usr/bin/env bash
# Builds the library and the clientdata tool, then loads the bundled sample
# data as the client does at start and prints what every table loaded.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
build_dir=${BUILD_DIR:-build}
cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build_dir" --target clientdata ClientData
"$build_dir/tools/clientdata" report data/sample "$@"
