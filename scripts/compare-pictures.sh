#!/usr/bin/env bash
# Exports a document as CgFX, HLSL FX and GLSL, draws all three and compares the pictures; with
# further --exporter OPTIONs also the files of those.
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
for folder in "$output"/*/; do
    for file in "$folder"*.cgfx "$folder"*.fx "$folder"*_f.gl; do
        [ -e "$file" ] || continue
        pair=("$file")
        [ "$file" = "${file%_f.gl}" ] || pair=("${file%_f.gl}_v.gl" "$file")
        "$program" render "${pair[@]}" -o "$file.png"
        "$program" compare "$output/cgfx.png" "$file.png" --limit 2
    done
done
