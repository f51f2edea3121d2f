#!/usr/bin/env bash
# Measures how much the tests of the plug-in notice: changes one place of its sources at a time, in a
# copy of the last commit under build-mutants/, and lists the changes that all tests let pass.
#
#   scripts/mutants.sh [COUNT [SEED]]     # 50 places and seed 1 without arguments
#
# A place takes a quarter of a minute and more. Some survivors change nothing that can be seen; the
# others want a test.
set -euo pipefail
cd "$(dirname "$0")/.."

tree=build-mutants/tree
if [ ! -d "$tree" ]; then
    git clone --quiet --shared . "$tree"
fi
git -C "$tree" fetch --quiet origin
git -C "$tree" reset --quiet --hard "$(git rev-parse HEAD)"

# Without optimisation a change is built sooner.
cmake -S "$tree" -B "$tree/build" -G Ninja -DCMAKE_BUILD_TYPE=Debug >/dev/null
exec python3 scripts/mutate.py "$tree" --count "${1:-50}" --seed "${2:-1}"
