#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the benchmarks need,
# asking apt only for what is missing. Uses sudo when not run as root.
set -euo pipefail

packages=(
  cmake g++ make pkg-config ninja-build ccache
  qt6-base-dev qt6-serialport-dev libqt6serialport6-dev libgl1-mesa-dev
  fonts-liberation        # "Courier New" resolves to Liberation Mono, its metric twin
  binutils-m68hc1x        # an independent HC11 assembler/disassembler for cross-checks
  xvfb xauth              # screenshots of real windows
  poppler-utils           # pdftotext: the printing tests read the printed PDF back
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo_cmd=()
[ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
