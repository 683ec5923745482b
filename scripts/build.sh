#!/usr/bin/env bash
# Configures and builds one preset: release (default), debug, asan (Address + UndefinedBehavior
# Sanitizer), tsan (ThreadSanitizer) or fuzz (clang, libFuzzer targets; see docs/testing.md).
set -euo pipefail
cd "$(dirname "$0")/.."
preset="${1:-release}"
bash scripts/install-deps.sh
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
