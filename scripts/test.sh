#!/usr/bin/env bash
# Installs what is missing, builds everything and runs all tests, then the same under AddressSanitizer
# and UndefinedBehaviorSanitizer. --quick leaves the second part out.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install.sh
presets=(default sanitize)
[ "${1:-}" != --quick ] || presets=(default)
for preset in "${presets[@]}"; do
    echo "== $preset"
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset"
    ctest --preset "$preset"
done
