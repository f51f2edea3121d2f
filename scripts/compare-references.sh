#!/usr/bin/env bash
# Draws materials through their GLSL export in three scenes and tells how far they are from pictures
# of how they ought to look.
#
#   scripts/compare-references.sh BUILD_FOLDER REFERENCES DOCUMENTS [PICTURES]
#
# REFERENCES is a folder of pictures as reference_host/render/reference_scenes.h describes it,
# DOCUMENTS that of the documents; what is drawn is kept in PICTURES. A row for each material: the
# mean absolute difference in the scenes A, B and C, of pixels where they are and, in brackets where
# it is less than half of that, sorted by brightness. The last rows count what is the same, to 0.02.
set -euo pipefail

program=$1/reference_host/app/shader-export references=$2 documents=$3 pictures=${4-}
[ -z "$pictures" ] || mkdir -p "$pictures"

find "$documents" -name '*.mtlx' | sort |
    xargs -P 2 -I '{}' "$program" references '{}' "$references" ${pictures:+--keep "$pictures"} |
    sort | awk -F '\t' '
        { row = $1 "\t" $2; difference[row, $3] = $4; sorted[row, $3] = $5; if (!(row in seen)) rows[++count] = row; seen[row] = 1
          ++all[$3]; if ($4 != "-" && $4 <= 0.02) ++same[$3] }
        END {
            for (i = 1; i <= count; ++i) {
                split(rows[i], name, "\t")
                printf "%-40s %-28s", name[1], name[2]
                for (s = 1; s <= 3; ++s) {
                    value = difference[rows[i], substr("ABC", s, 1)]
                    printf " %7s%s", value, (value == "-" || value > 0.02 ? "*" : " ")
                    order = sorted[rows[i], substr("ABC", s, 1)]
                    if (value > 0.02 && order < value / 2) printf "(%s)", order
                }
                print ""
            }
            for (s = 1; s <= 3; ++s) {
                scene = substr("ABC", s, 1)
                printf "%s: %d of %d within 0.02\n", scene, same[scene], all[scene]
            }
        }'
