#!/usr/bin/env bash
# Checks that includes point down: each folder includes headers of itself and of the folders in its
# row alone, and a row names folders of rows above it alone, so that no two folders can need each
# other. The headers of plugin/ that are interfaces are its lowest part, the registry its highest.
#
#   scripts/check-layers.sh [FOLDER]      FOLDER: the sources (default: this project)
#
# Prints each include that points up, and each folder that the table has no row for. Exit status: 0 there is none, 1 otherwise.
set -euo pipefail
cd "${1:-$(dirname "$0")/..}"

layers='
sdk:                        interfaces
exporter_base:              interfaces sdk
export_common:              interfaces sdk exporter_base
exporters:                  interfaces sdk exporter_base export_common
plugin:                     interfaces sdk exporter_base export_common exporters
reference_host/system:
reference_host/recording_host: interfaces sdk
reference_host/shading:
reference_host/nodes:       shading
reference_host/document:    nodes system
reference_host/options:     shading document
reference_host/library:     shading
reference_host/evaluator:   shading
reference_host/lowering:    shading nodes document options library evaluator
reference_host/shade_check: shading nodes library lowering
reference_host/passes:      shading
reference_host/targets:     shading options library passes
reference_host/generator:   document options lowering passes targets
reference_host/render:      system shading
reference_host/output:      system
reference_host/host:        nodes document options generator interfaces sdk
reference_host/desktop:     interfaces exporter_base system
reference_host/check:       interfaces sdk exporter_base exporters system recording_host desktop
reference_host/app:         interfaces sdk exporter_base exporters system shading document options generator render host output desktop check
reference_host/window:      exporter_base interfaces system document render host output desktop app
reference_host/program:     system app window
'
interfaces='plugin/(export_symbol|iexporter|iexporter_plugin|interface|plugin)\.h'

# includes_of FOLDER: "FILE INCLUDED_FOLDER" for each include of a header of the project.
includes_of()
{
    grep -rHoE '^#include "[a-z_]+/[a-z_/.]+"' "$1" --include='*.h' --include='*.cpp' |
        sed -E 's/:#include "/ /; s/"$//' |
        sed -E "s# $interfaces# interfaces/x.h#; s# reference_host/# #; s#/[^/ ]*\$##" | sort -u
}

status=0
fail()
{
    echo "$1"
    status=1
}

above=' interfaces '
while IFS=: read -r folder allowed; do
    [ -n "$folder" ] || continue
    for lower in $allowed; do
        [[ $above == *" $lower "* ]] || fail "the row of $folder names $lower, which is not above it"
    done
    above+="${folder##*/} "
    while read -r file included; do
        case " ${folder##*/} $allowed " in
        *" $included "*) ;;
        *) fail "$file includes a header of $included/" ;;
        esac
    done < <(includes_of "$folder")
done <<<"$layers"
for folder in reference_host/*/; do
    [[ $above == *" $(basename "$folder") "* ]] || fail "$folder has no row"
done
exit $status
