#!/usr/bin/env bash
# Builds everything and runs the whole test suite.
set -euo pipefail
cd "$(dirname "$0")/.."
preset="${1:-release}"
bash scripts/build.sh "$preset"
ctest --preset "$preset"
