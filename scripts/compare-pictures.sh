#!/usr/bin/env bash
# Exports a document as CgFX, HLSL FX and GLSL, draws all three and compares the pictures.
#
#   scripts/compare-pictures.sh BUILD_FOLDER DOCUMENT OUTPUT_FOLDER [OPTION...]
#
# OPTIONs go to `shader-export batch`. Exit status: 0 no channel differs by more than 2 of 255 on
# average; 1 otherwise; 77 without the Cg compiler, by which effects are drawn.
set -euo pipefail

scripts=$(cd "$(dirname "$0")" && pwd)
program=$1/reference_host/app/shader-export document=$2 output=$3
shift 3
checkers=${TOVIRAEXPORT_VALIDATORS:-$scripts/../build/validators}
if ! [ -x "$checkers/bin/cgc" ] && ! command -v cgc >/dev/null; then
    echo "skipped: cgc is absent; scripts/fetch-validators.sh brings it"
    exit 77
fi

rm -rf "$output"
"$program" batch "$document" --output "$output" --texture-paths absolute \
    --exporter "Custom CgFX" --exporter "Custom HLSL" --exporter "Custom GLSL" "$@"
"$program" render "$output"/custom_cgfx/*.cgfx -o "$output/cgfx.png"
"$program" render "$output"/custom_hlsl_fx/*.fx -o "$output/hlsl.png"
"$program" render "$output"/custom_glsl/*_v.gl "$output"/custom_glsl/*_f.gl -o "$output/glsl.png"
"$program" compare "$output/cgfx.png" "$output/hlsl.png" --limit 2
"$program" compare "$output/cgfx.png" "$output/glsl.png" --limit 2
