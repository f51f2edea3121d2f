#!/usr/bin/env bash
# Checks formatting (clang-format) and, with --tidy, the code itself (clang-tidy, some minutes).
# Changes nothing.
set -euo pipefail
cd "$(dirname "$0")/.."

git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run --Werror
if [ "${1:-}" = --tidy ]; then
    cmake --preset default >/dev/null
    git ls-files plugin exporter_base export_common exporters reference_host | grep '\.cpp$' |
        xargs -P "$(nproc)" -n 4 clang-tidy -p build --quiet --warnings-as-errors='*'
fi
