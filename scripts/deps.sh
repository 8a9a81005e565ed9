#!/usr/bin/env bash
# Installs the Debian packages the build needs, only those that are missing.
set -euo pipefail
packages=(cmake ninja-build g++ libgtest-dev zlib1g-dev libcurl4-openssl-dev libbenchmark-dev python3 pkg-config
          libcli11-dev nlohmann-json3-dev libsqlite3-dev "$@")
missing=()
# Only the benchmark suite uses these: the peers it compares the loaders with.
packages+=(libinih-dev libsimpleini-dev)
for package in "${packages[@]}"; do
  dpkg -s "$package" >/dev/null 2>&1 || missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "installing: ${missing[*]}"
  sudo_cmd=""
  [ "$(id -u)" -eq 0 ] || sudo_cmd="sudo"
  $sudo_cmd apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq "${missing[@]}" >/dev/null
fi
