#!/usr/bin/env bash
# Installs what is missing, then checks everything: the format of the sources, all tests (the kept
# inputs of the fuzz targets are some of them), and the plug-in's library with `shader-export check`.
# Takes less than 20 minutes on two cores.
#
#   scripts/test.sh [--all]
#
# --all: also all tests under AddressSanitizer and UndefinedBehaviorSanitizer, and 20 seconds of new
# inputs for each fuzz target. Takes several times as long. ThreadSanitizer has a preset, `thread`.
set -euo pipefail
cd "$(dirname "$0")/.."

# build_and_test PRESET
build_and_test()
{
    echo "== $1"
    cmake --preset "$1" >/dev/null
    cmake --build --preset "$1"
    ctest --preset "$1"
}

scripts/install.sh
echo "== format"
scripts/lint.sh
build_and_test default
echo "== check"
build/reference_host/app/shader-export check build/plugin/toviraexport.so
if [ "${1:-}" = --all ]; then
    build_and_test sanitize
    echo "== fuzz"
    scripts/fuzz.sh 20
fi
