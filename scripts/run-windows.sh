#!/usr/bin/env bash
# The Windows check: cross-builds ClientData.dll for x86-64 and 32-bit x86
# with MinGW-w64, checks both DLLs' exports and imports and the 32-bit member
# calling convention, runs the contract transcript on Linux and under Wine on
# the same data folder and requires the two to be byte for byte the same,
# then runs the differential checks against the system's own behaviours.
#   WINDOWS_BUILD_TYPE  build type of the cross builds (default: Release)
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
bash scripts/deps.sh g++-mingw-w64-x86-64 g++-mingw-w64-i686 wine64 clang lld

build_type=${WINDOWS_BUILD_TYPE:-Release}
win64=$root/build-win64
win32=$root/build-win32
linux=$root/build-wincheck-linux
fixture=$root/tests/Contract/data

step() { printf '\n== %s\n' "$*"; }
fail() { printf 'FAILED: %s\n' "$*" >&2; exit 1; }

# Builds the targets ($2, "all" for everything) of one folder; any compiler or
# linker warning fails the check.
build() {
  local dir=$1 targets=$2; shift 2
  cmake -S "$root" -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE="$build_type" "$@" >/dev/null
  local log=$dir/build.log
  # shellcheck disable=SC2086
  if ! cmake --build "$dir" --target $targets -- -j2 >"$log" 2>&1; then
    grep -m 20 -E 'error|undefined reference' "$log" || tail -20 "$log"
    fail "build of $dir (whole log: $log)"
  fi
  if grep -q 'warning:' "$log"; then
    grep -B2 -A6 'warning:' "$log"; fail "warnings in $dir"
  fi
}

# Exactly the two exports, undecorated, and nothing but system DLLs imported.
check_dll() {
  local objdump=$1 dll=$2
  local exports imports
  exports=$("$objdump" -p "$dll" | awk '/\[Ordinal\/Name Pointer\] Table/{p=1; next} p&&NF==0{p=0} p{print $NF}' | sort | tr '\n' ' ')
  [ "$exports" = "DestroyClientDataMgr QueryClientDataMgr " ] || fail "$dll exports: $exports"
  imports=$("$objdump" -p "$dll" | awk '/DLL Name:/{print tolower($3)}' | sort -u | tr '\n' ' ')
  for name in $imports; do
    case $name in
      kernel32.dll|msvcrt.dll|user32.dll|advapi32.dll|wininet.dll|ws2_32.dll|winmm.dll|version.dll|\
      iphlpapi.dll|dbghelp.dll|psapi.dll|shell32.dll|ole32.dll|api-ms-win-*) ;;
      *) fail "$dll imports $name" ;;
    esac
  done
  printf '%s: %s bytes; exports: %s; imports: %s\n' "${dll#$root/}" "$(stat -c %s "$dll")" "$exports" "$imports"
}

# Prints the disassembly of one function, given by its demangled name, from
# a disassembly listing.
function_body() {
  local listing=$1 name=$2
  awk -v name="$name" 'index($0, "<" name ">:") && /^[0-9a-f]+ </{p=1; next} p&&NF==0{p=0} p' "$listing"
}

# thiscall in the 32-bit DLL: the object arrives in ECX and the callee pops
# its stack arguments ("ret $n"); plain functions (the exports) pop nothing.
# A body that ends in a tail jump to another function is followed there.
check_callee() {
  local name=$1 pop=$2 kind=$3 shown=$1 body rets next depth
  for depth in 1 2 3; do
    body=$(function_body "$win32/ClientData.dis" "$name")
    [ -n "$body" ] || fail "32-bit DLL: no function $name"
    if [ "$kind" = this ] && [ "$depth" = 1 ]; then
      grep -q '%ecx' <<<"$body" || fail "32-bit $name does not use ECX"
    fi
    rets=$( (grep -oE '\sret\s*(\$0x[0-9a-f]+)?' <<<"$body" || true) | tr -d ' \t' | sort -u | tr '\n' ' ')
    [ -n "$rets" ] && break
    next=$( (grep -oE 'jmp\s+[0-9a-f]+ <[^>+]+>$' <<<"$body" || true) | tail -1 | sed -E 's/.*<(.*)>$/\1/')
    [ -n "$next" ] || break
    name=$next
  done
  [ "$rets" = "$pop " ] || fail "32-bit $shown returns with '$rets', expected '$pop'"
  printf '  %-58s %s\n' "$shown" "$pop"
}

# The client built as the real one is: clang for the Microsoft C++ ABI, no C
# runtime, linked by lld-link against MinGW's kernel32 import library. $1 is
# the architecture (x86_64 or i686), $2 the output folder.
build_msvc_client() {
  local arch=$1 out=$2 machine=x64 extra=()
  [ "$arch" = i686 ] && machine=x86 && extra=(/safeseh:no)
  mkdir -p "$out"
  clang++ --target="$arch-pc-windows-msvc" -std=c++17 -O1 -ffreestanding -fno-exceptions -fno-rtti \
    -fno-stack-protector -mno-stack-arg-probe -Wall -Wextra -Werror \
    -c "$root/tests/Contract/MsvcClient.cpp" -o "$out/MsvcClient.obj" || fail "MSVC-ABI client ($arch) compile"
  lld-link /nologo /nodefaultlib /entry:ClientMain /subsystem:console /machine:$machine "${extra[@]}" \
    /out:"$out/MsvcClient.exe" "$out/MsvcClient.obj" "/usr/$arch-w64-mingw32/lib/libkernel32.a" ||
    fail "MSVC-ABI client ($arch) link"
}

# Runs the MSVC-ABI client with the DLL of $2 beside it, in a fresh folder
# under $3; $1 is the Wine loader.
run_msvc_client() {
  local wine=$1 dll=$2 out=$3
  rm -rf "$out/run" && mkdir -p "$out/run"
  cp "$out/MsvcClient.exe" "$dll" "$out/run/"
  (cd "$out/run" && "$wine" MsvcClient.exe) || fail "the MSVC-ABI client under $(basename "$wine")"
}

# The MSVC-ABI client's 32-bit calls to the slots that return a class by
# value: the object in ECX, the result's address pushed, as the DLL's
# functions (checked above) expect.
check_msvc_caller() {
  local listing=$out32/MsvcClient.dis slot offset
  llvm-objdump -d --no-show-raw-insn "$out32/MsvcClient.exe" >"$listing"
  for slot in 6 16; do
    offset=$((slot * 4))
    grep -B4 -E "calll\s+\*$offset\(%e[a-z]x\)" "$listing" | grep -q 'pushl' ||
      fail "32-bit MSVC-ABI client: no pushed result address before slot $slot"
    grep -B6 -E "calll\s+\*$offset\(%e[a-z]x\)" "$listing" | grep -qE ',\s*%ecx' ||
      fail "32-bit MSVC-ABI client: slot $slot is not called with the object in ECX"
    printf '  %-58s %s\n' "slot $slot (MSVC-ABI client)" "ecx, result address pushed"
  done
}

# The 32-bit contract program calls through thiscall pointers: object into
# ECX, arguments on the stack, and the stack not cleaned up by the caller.
check_caller() {
  local body
  body=$(function_body "$win32/ContractTranscript.dis" \
         "int CallSlot<int, int, int>(void*, int, int, int, int) [clone .constprop.0]")
  [ -n "$body" ] || body=$(function_body "$win32/ContractTranscript.dis" \
         "int CallSlot<int, int, int>(void*, int, int, int, int)")
  [ -n "$body" ] || fail "32-bit contract program: no three-argument slot call"
  grep -qE 'mov\s+%e[a-z]+,%ecx' <<<"$body" || fail "32-bit slot call does not pass the object in ECX"
  grep -A1 -E 'call\s+\*' <<<"$body" | grep -qE 'sub\s+\$0xc,%esp' ||
    fail "32-bit slot call does not leave the argument pop to the callee"
  printf '  %-58s %s\n' "CallSlot<int, int, int> (contract program)" "ecx, callee pops 12"
}

wine64=$(command -v wine64 || echo /usr/lib/wine/wine64)
wine32=/usr/lib/wine/wine
wineserver=$(command -v wineserver || echo /usr/lib/wine/wineserver64)
[ -x "$wineserver" ] || wineserver=/usr/lib/wine/wineserver
export WINEPREFIX=$win64/wineprefix WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=" WINEARCH=win64
unset DISPLAY
winpath() { printf 'Z:%s' "${1//\//\\}"; }

# A fresh copy of the fixture in $1/contract-run, so that the library's
# debug log starts empty; the transcript is $1/contract-run/transcript.txt.
fresh_run_folder() {
  rm -rf "$1/contract-run"
  mkdir -p "$1/contract-run"
  cp -r "$fixture" "$1/contract-run/data"
}

step "cross builds"
build "$win64" all -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake"
build "$win32" all -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-i686.cmake"
build "$linux" "ClientData ContractTranscript" -DCLIENTDATA_TESTS=ON

step "exports and imports"
check_dll x86_64-w64-mingw32-objdump "$win64/ClientData/ClientData.dll"
check_dll i686-w64-mingw32-objdump "$win32/ClientData/ClientData.dll"

step "32-bit calling convention"
i686-w64-mingw32-objdump -d --no-show-raw-insn -C "$win32/ClientData/ClientData.dll" >"$win32/ClientData.dis"
i686-w64-mingw32-objdump -d --no-show-raw-insn -C "$win32/tests/Contract/ContractTranscript.exe" \
  >"$win32/ContractTranscript.dis"
check_callee "CClientDataMgr::GetStrRes(unsigned int)" 'ret$0x4' this
check_callee "CClientDataMgr::ReloadDeferred(bool)" 'ret$0x4' this
check_callee "CClientDataMgr::LoadDeferList()" 'ret' this
check_callee "CGenericTableOf<ISectionTable, (IGenericTable::Kind)1>::GetFieldInt(int, int, int)" 'ret$0xc' this
check_callee "CGenericTableOf<ISectionTable, (IGenericTable::Kind)1>::GetValueText(int, char const*, char const*)" 'ret$0xc' this
check_callee "CCommonIni::GetMaleFaceAmount()" 'ret' this
check_callee "CDataTable::GetFileName(CClientString*)" 'ret$0x4' this
check_callee "CFontSetting::GetDefaultFontName(CZelString*)" 'ret$0x4' this
check_callee "CMagicData::CollectLearnable(unsigned int, unsigned int, CClientArray<MagicTypeInfo const*>*)" 'ret$0xc' this
check_callee "CItemCategoryTable::GetCategoryIds(char const*, CClientArray<unsigned int>*)" 'ret$0x8' this
check_callee "QueryClientDataMgr" 'ret' plain
check_caller

step "contract transcript: Linux"
fresh_run_folder "$linux"
(cd "$linux/contract-run/data" &&
  "$linux/tests/Contract/ContractTranscript" "$linux/ClientData/libClientData.so" ../transcript.txt)
wc -l <"$linux/contract-run/transcript.txt" | xargs printf '%s lines\n'

step "contract transcript: Windows x86-64 under Wine"
if [ ! -f "$WINEPREFIX/system.reg" ]; then
  "$wine64" wineboot --init >/dev/null 2>&1 || true
fi
fresh_run_folder "$win64"
(cd "$win64/contract-run/data" &&
  "$wine64" "$win64/tests/Contract/ContractTranscript.exe" "$(winpath "$win64/ClientData/ClientData.dll")" \
    "$(winpath "$win64/contract-run/transcript.txt")")
if ! diff -u "$linux/contract-run/transcript.txt" "$win64/contract-run/transcript.txt"; then
  fail "the Windows transcript differs from the Linux one"
fi
echo "identical to the Linux transcript"

step "contract transcript: Windows 32-bit"
if [ -x "$wine32" ]; then
  fresh_run_folder "$win32"
  (cd "$win32/contract-run/data" &&
    "$wine32" "$win32/tests/Contract/ContractTranscript.exe" "$(winpath "$win32/ClientData/ClientData.dll")" \
      "$(winpath "$win32/contract-run/transcript.txt")")
  diff -u "$linux/contract-run/transcript.txt" "$win32/contract-run/transcript.txt" ||
    fail "the 32-bit Windows transcript differs from the Linux one"
  echo "identical to the Linux transcript"
else
  echo "skipped: no 32-bit Wine here (the DLL is built and its exports and calls checked above)"
fi

out64=$win64/msvc-client
out32=$win32/msvc-client
step "MSVC-ABI client: build (x86-64 and x86)"
build_msvc_client x86_64 "$out64"
build_msvc_client i686 "$out32"
check_msvc_caller

step "MSVC-ABI client: x86-64 under Wine"
run_msvc_client "$wine64" "$win64/ClientData/ClientData.dll" "$out64"

step "MSVC-ABI client: x86 under Wine"
if [ -x "$wine32" ]; then
  run_msvc_client "$wine32" "$win32/ClientData/ClientData.dll" "$out32"
else
  echo "skipped: no 32-bit Wine here (the client is built, and its calls and the DLL's are checked above)"
fi

step "differential checks against the system (Wine)"
rm -rf "$win64/differential" && mkdir -p "$win64/differential"
(cd "$win64/differential" && "$wine64" "$win64/tests/Contract/WineDifferential.exe")

"$wineserver" -k >/dev/null 2>&1 || true
printf '\nWindows check passed.\n'
