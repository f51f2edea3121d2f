#!/usr/bin/env bash
# Runs every fuzz target for so many seconds; without any, only over its corpus. What breaks one is
# kept in build-fuzz/found. Needs clang.
#
#   scripts/fuzz.sh [SECONDS]
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-0}

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz
mkdir -p build-fuzz/found
for corpus in fuzz/corpus/*/; do
    name=$(basename "$corpus")
    grown=build-fuzz/corpus/$name # what the run adds stays out of the repository
    mkdir -p "$grown"
    limits=(-rss_limit_mb=2048 -timeout=20 -close_fd_mask=3) # drops what the programs print
    if [ "$seconds" -gt 0 ]; then limits+=(-max_total_time="$seconds"); else limits+=(-runs=0); fi
    echo "== $name"
    build-fuzz/fuzz/fuzz_"$name" "${limits[@]}" -artifact_prefix=build-fuzz/found/"$name"- \
        "$grown" "$corpus" 2>&1 | tail -n 3
done
