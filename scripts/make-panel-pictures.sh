#!/usr/bin/env bash
# Renews the pictures of the option panels in the pages of docs/targets.
#
#   scripts/make-panel-pictures.sh [BUILD_FOLDER]
#
# Needs a build (preset default). A private display is started, so that the pictures do not depend on
# the desktop of the user.
set -euo pipefail

build=$(realpath "${1:-$(dirname "$0")/../build}")
cd "$(dirname "$0")/.."
pictures=docs/images/panels
mkdir -p "$pictures"
unset DISPLAY
export HOME=/home/artist # the panels show it

# By index of the exporter. The library of all exporters has the Corvane exporter, too.
pages=(3dsmax catia fxcomposer maya softimage custom_cgfx custom_hlsl_fx custom_glsl corvane)
for index in "${!pages[@]}"; do
    "$build/reference_host/app/shader-export" panel --exporter "$index" \
        --plugin "$build/tests/all_exporters/toviraexport_all.so" \
        --screenshot "$pictures/${pages[$index]}.png"
done
