#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the benchmarks need.
# Idempotent: when every package is present it does nothing (and needs no network).
set -euo pipefail
packages=(
  build-essential cmake ninja-build pkg-config git
  coinor-libclp-dev coinor-libcbc-dev coinor-libcgl-dev coinor-libosi-dev coinor-libcoinutils-dev
  zlib1g-dev libbz2-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  python3-pulp
  python3-scipy
  clang libclang-rt-14-dev llvm
)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi
SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
echo "installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y --no-install-recommends "${missing[@]}"
