#!/usr/bin/env bash
# Renews the pictures of the window in the README. The tests of the window take them, on a display
# of their own.
#
#   scripts/make-window-pictures.sh [BUILD_FOLDER]
#
# Needs a build (preset default). The pictures show paths of documents: those are in /tmp/materials, which
# must not exist.
set -euo pipefail

build=$(realpath "${1:-$(dirname "$0")/../build}")
cd "$(dirname "$0")/.."
pictures=docs/images/window
documents=/tmp/materials
mkdir "$documents"
output=$(mktemp -d)
trap 'rm -rf "$output" "$documents"' EXIT
cp -r samples/. "$documents"
mkdir -p "$pictures"
unset DISPLAY

TOVIRAEXPORT_PICTURES=$output TOVIRAEXPORT_DOCUMENTS=$documents \
    "$build/tests/window/program_window_test" \
    --gtest_filter='Pictures.*' --gtest_brief=1
cp "$output"/{code,graph,preview}.png "$pictures"
