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

# judge KIND FILE...: who accepted, or why no one did; fails when a compiler refused.
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

program=$build/reference_host/app/shader-export
plugin=$build/tests/all_exporters/toviraexport_all.so
list=$("$program" list --json --plugin "$plugin")

# Every exporter that writes files.
exporters=()
while read -r index; do
    exporters+=(--exporter "$index")
done < <(jq -r '.[] | select(.files != []) | .index' <<<"$list")
status=0
"$program" batch "$document" --output "$output" --overwrite yes --plugin "$plugin" \
    "${exporters[@]}" "$@" >"$output/export.log" 2>&1 || status=$?

# A row for each file. The two of a GLSL shader, which are checked together, are one.
shopt -s nullglob
while read -r exporter checker suffix second <&3; do
    for file in "$output/$exporter/"*"$suffix"; do
        row "${exporter#autodesk_}" "$checker" "$file" ${second:+"${file%"$suffix"}$second"}
    done
done 3< <(jq -r '.[] | .folder as $folder | .files // [] | group_by(.checker)[] |
    if .[0].checker == "glsl" then [$folder, .[0].checker] + map(.suffix)
    else .[] | [$folder, .checker, .suffix] end | join(" ")' <<<"$list")
if [ $status -ne 0 ]; then
    cat "$output/export.log" >&2
    exit 1
fi
exit $failed
