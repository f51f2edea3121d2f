#!/usr/bin/env bash
# What a batch saves: 66 materials through all exporters in one process against 66 single exports
# through one exporter, two processes against one, and a second batch, which writes nothing, against
# the first. Prints the times and their ratios; the fastest of several runs counts.
#
#   benchmarks/batch_ratio.sh [BUILD_FOLDER] [RUNS]    default: build, 3
#
# Without DISPLAY each single export starts a display of its own, as it does for users; a batch
# starts one. Exit status: 0 the ratios are at most 0.35, 0.6 and 0.1; 1 otherwise. Only a quiet
# machine tells the truth.
set -euo pipefail

build=$(realpath "${1:-$(dirname "$0")/../build}")
runs=${2:-3}

program=$build/reference_host/app/shader-export
materials=66
scene=(--light key:directional --overwrite yes --plugin "$build/plugin/toviraexport.so")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

{
    echo '<materialx version="1.39">'
    for i in $(seq $materials); do
        echo "<standard_surface name='s$i' type='surfaceshader'>"
        echo "<input name='base_color' type='color3' value='0.$i, 0.5, 0.2'/></standard_surface>"
        echo "<surfacematerial name='M$i' type='material'>"
        echo "<input name='surfaceshader' type='surfaceshader' nodename='s$i'/></surfacematerial>"
    done
    echo '</materialx>'
} >materials.mtlx

# fastest COMMAND...: the seconds of the fastest of several runs.
fastest()
{
    for _ in $(seq "$runs"); do
        rm -rf out
        local start=$EPOCHREALTIME
        "$@" >/dev/null 2>&1
        echo "$start $EPOCHREALTIME"
    done | awk '{ t = $2 - $1 } NR == 1 || t < least { least = t } END { printf "%.2f", least }'
}

single_exports()
{
    mkdir out
    for i in $(seq $materials); do
        "$program" export materials.mtlx --node "M$i" --exporter 5 --output "out/M$i" "${scene[@]}"
    done
}

again()
{
    "$program" batch materials.mtlx --output kept "${scene[@]}"
}

singles=$(fastest single_exports)
batch=$(fastest "$program" batch materials.mtlx --output out "${scene[@]}")
two=$(fastest "$program" batch materials.mtlx --output out --jobs 2 "${scene[@]}")
again >/dev/null 2>&1
second=$(fastest again)

awk -v singles="$singles" -v batch="$batch" -v two="$two" -v second="$second" -v n=$materials '
    function row(what, seconds, ratio, limit)
    {
        printf "%-52s %7.2f s  %.2f (at most %.2f)\n", what, seconds, ratio, limit
        failed = failed || ratio > limit
    }
    BEGIN {
        printf "%-52s %7.2f s\n", n " single exports through one exporter", singles
        row(n " materials through all exporters in one process", batch, batch / singles, 0.35)
        row("the same with --jobs 2, against one process", two, two / batch, 0.6)
        row("the same again, which writes nothing", second, second / batch, 0.1)
        exit failed
    }'
