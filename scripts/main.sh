#!/usr/bin/env bash
# Builds everything and solves a shipped model with the command-line driver.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh release
./build/release/tools/zelq solve examples/data/p0033.mps
