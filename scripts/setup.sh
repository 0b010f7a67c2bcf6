#!/usr/bin/env bash
# Installs the Debian 12 packages the build, the tests, the benchmarks, the
# fuzzers and the sanitizer build need, asking apt only for what is missing.
# Silent and quick when everything is there; uses sudo only to install.
set -euo pipefail

packages=(
  cmake g++ make pkg-config ninja-build ccache
  qt6-base-dev qt6-serialport-dev libgl1-mesa-dev
  fonts-liberation        # "Courier New" resolves to Liberation Mono, its metric twin
  binutils-m68hc1x        # an independent HC11 assembler/disassembler for cross-checks
  xvfb xauth              # screenshots of real windows
  clang libclang-rt-14-dev  # libFuzzer for `make fuzz`
  poppler-utils           # pdftotext: the printing tests read the printed PDF back
  dpkg-dev desktop-file-utils   # `make package`: dependencies from the binaries, the desktop entry's check
)

# One dpkg query for the lot, no process per package: a name dpkg does not
# know counts as missing.
declare -A installed=()
while read -r status name; do
  [ "$status" = ii ] && installed[$name]=1
done < <(dpkg-query -W -f='${db:Status-Abbrev} ${Package}\n' "${packages[@]}" 2>/dev/null || true)
missing=()
for p in "${packages[@]}"; do
  [ -n "${installed[$p]:-}" ] || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo_cmd=()
[ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
