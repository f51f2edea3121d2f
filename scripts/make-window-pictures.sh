#!/usr/bin/env bash
# Makes the pictures of the window in the README anew. The tests of the window take them, on a display of
# their own.
#
#   scripts/make-window-pictures.sh [BUILD_FOLDER]
#
# Needs a build (preset default).
set -euo pipefail

build=$(realpath "${1:-$(dirname "$0")/../build}")
cd "$(dirname "$0")/.."
pictures=docs/images/window
output=$(mktemp -d)
trap 'rm -rf "$output"' EXIT
mkdir -p "$pictures"
unset DISPLAY

TOVIRAEXPORT_PICTURES=$output "$build/tests/window/program_window_test" \
    --gtest_filter='Pictures.*' --gtest_brief=1
cp "$output"/*.png "$pictures"
