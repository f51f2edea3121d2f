#!/usr/bin/env bash
# Exports a document through every exporter and shows each file to the compilers that know its kind.
#
#   scripts/export-and-check.sh BUILD_FOLDER DOCUMENT OUTPUT_FOLDER [OPTION...]
#
# One row per file or pair of files: document, exporter, files, bytes, who accepted it. OPTIONs go to
# `shader-export batch`. Exit status: 0 every exporter wrote its files and none was refused; 1
# otherwise, with the reasons on standard error.
#
# The library of all exporters is used, so that the renderer source exporter, which the plug-in does
# not offer, runs too.
set -euo pipefail

scripts=$(cd "$(dirname "$0")" && pwd)
build=$1 document=$2 output=$3
shift 3
rm -rf "$output"
mkdir -p "$output"
failed=0

# judge KIND FILE...: who accepted, or why nobody did; fails when a compiler refused.
judge()
{
    local verdicts status=0
    verdicts=$("$scripts/accept.sh" "$@" 2>>"$output/compilers.log") || status=$?
    if [ $status -eq 1 ]; then
        grep '^refused' <<<"$verdicts" | head -n 1
        return 1
    elif [ $status -eq 0 ]; then
        {
            sed -n 's/^accepted: \([^ ]*\).*/\1/p' <<<"$verdicts" | sort -u
            sed -n 's/^undecided: \([^ :]*\).*/(\1: no verdict)/p' <<<"$verdicts" | sort -u
        } | paste -sd ' '
    else
        head -n 1 <<<"$verdicts"
    fi
}

# row EXPORTER KIND FILE...
row()
{
    local exporter=$1 kind=$2 names='' bytes verdict
    shift 2
    for file in "$@"; do
        names+="${names:+ }$(basename "$file")"
    done
    bytes=$(cat "$@" | wc -c)
    verdict=$(judge "$kind" "$@") || failed=1
    printf '%-25s %-22s %-28s %7d  %s\n' \
        "$(basename "$document" .mtlx)" "$exporter" "$names" "$bytes" "$verdict"
}

# The ninth index is the renderer source exporter; the sample exporter after it writes nothing.
exporters=()
for index in 0 1 2 3 4 5 6 7 8; do
    exporters+=(--exporter "$index")
done
status=0
"$build/reference_host/app/shader-export" batch "$document" --output "$output" --overwrite yes \
    --plugin "$build/tests/all_exporters/toviraexport_all.so" "${exporters[@]}" "$@" \
    >"$output/export.log" 2>&1 || status=$?

shopt -s nullglob
for folder in "$output"/*/; do
    exporter=$(basename "$folder")
    exporter=${exporter#autodesk_}
    for file in "$folder"*; do
        case $exporter:$file in
        catia*.fx) row "$exporter" catia "$file" ;;
        *.cgfx) row "$exporter" cgfx "$file" ;;
        *.fx) row "$exporter" hlsl "$file" ;;
        *_v.gl) row "$exporter" glsl "$file" "${file%_v.gl}_f.gl" ;;
        *.cpp) row "$exporter" cpp "$file" ;;
        *.qz) row "$exporter" qz "$file" ;;
        esac
    done
done
if [ $status -ne 0 ]; then
    cat "$output/export.log" >&2
    exit 1
fi
exit $failed
