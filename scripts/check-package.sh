#!/usr/bin/env bash
# The library as a consumer gets it: installs the build into a staging
# prefix, builds examples/embed against it with find_package and with
# pkg-config, and runs these two and the in-tree build on a copy of the
# sample. Each must print item 100000 with the name its file gives.
#   check-package.sh BUILD_DIR IN_TREE_EMBED CXX [CXXFLAGS]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "$1" && pwd) in_tree=$2 cxx=$3 cxxflags=${4:-}
work=$build/package-check
stage=$work/stage
fail() { printf 'FAILED: %s\n' "$*" >&2; exit 1; }

rm -rf "$work" && mkdir -p "$work"
cmake --install "$build" --prefix "$stage" >"$work/install.log" || fail "install (log: $work/install.log)"
[ -x "$stage/bin/clientdata" ] || fail "clientdata is not installed"

# All installed headers, with the staged folder as the only include path: no
# public header includes one that was left out.
(cd "$stage/include" && find ClientData ZelGameBase -type f | sort | sed 's/.*/#include <&>/') |
  grep -v '\.def>$' | "$cxx" -std=c++17 -fsyntax-only -Wall -Wextra -Werror -I"$stage/include" -x c++ - ||
  fail "the installed headers need one that is not installed"

# shellcheck disable=SC2086
cmake -S "$root/examples/embed" -B "$work/find-package" -G Ninja -DCMAKE_PREFIX_PATH="$stage" \
      -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_CXX_FLAGS="-Wall -Wextra -Werror $cxxflags" >"$work/find-package.log" &&
  cmake --build "$work/find-package" >>"$work/find-package.log" ||
  fail "find_package build of examples/embed (log: $work/find-package.log)"

pc_dir=$(dirname "$(find "$stage" -name clientdata.pc)")
pc_flags=$(PKG_CONFIG_PATH=$pc_dir pkg-config --cflags --libs clientdata) || fail "pkg-config clientdata"
# shellcheck disable=SC2086
"$cxx" -std=c++17 -Wall -Wextra -Werror $cxxflags "$root/examples/embed/embed.cpp" $pc_flags \
       -o "$work/embed-pkgconfig" || fail "pkg-config build of examples/embed"

# The library writes its debug log into the folder it loads.
cp -r "$root/data/sample" "$work/data"
expected=$(LC_ALL=C awk '$1 == "100000" { print $1, $2; exit }' "$work/data/ini/ItemType.dat")
[ -n "$expected" ] || fail "no item 100000 in the sample"
run() { "$@" "$work/data" || fail "$* exits with $?"; }
for how in in-tree find-package pkg-config; do
  case $how in
    in-tree) actual=$(run "$in_tree") ;;
    find-package) actual=$(run "$work/find-package/embed") ;;
    pkg-config) actual=$(run env LD_LIBRARY_PATH="$pc_dir/.." "$work/embed-pkgconfig") ;;
  esac
  [ "$actual" = "$expected" ] || fail "$how: printed '$actual', expected '$expected'"
  echo "$how: $actual"
done
