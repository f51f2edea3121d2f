#!/usr/bin/env bash
# Renews the pictures of the README: a sample's graph and the spheres drawn from three exports of
# it. Needs a build (preset default), scripts/fetch-validators.sh and the package graphviz.
set -euo pipefail
cd "$(dirname "$0")/.."

program=build/reference_host/app/shader-export
output=$(mktemp -d)
trap 'rm -rf "$output"' EXIT
pictures=docs/images
mkdir -p "$pictures"

dot -Tpng -o "$pictures/wood_graph.png" <<'GRAPH'
digraph {
    rankdir = LR; dpi = 80;
    node [shape = box, style = "rounded,filled", fillcolor = "#eef2f6", fontname = "DejaVu Sans", fontsize = 10];
    edge [fontname = "DejaVu Sans", fontsize = 8];
    grain [label = "grain\ntiledimage"]; wear [label = "wear\ntiledimage"];
    tinted_grain [label = "tinted_grain\nmultiply"];
    Varnished_wood [label = "Varnished_wood\nstandard_surface"]; Wood [label = "Wood\nsurfacematerial"];
    grain -> tinted_grain [label = "in1"]; tinted_grain -> Varnished_wood [label = "base_color"];
    wear -> Varnished_wood [label = "specular_roughness"]; Varnished_wood -> Wood [label = "surfaceshader"];
}
GRAPH

"$program" batch samples/wood_textured.mtlx --output "$output" --texture-paths absolute \
    --exporter "Custom CgFX" --exporter "Custom HLSL" --exporter "Custom GLSL" \
    --light key:directional --environment sky >/dev/null
for target in cgfx hlsl_fx glsl; do
    files=("$output/custom_$target"/*)
    [ $target != glsl ] || files=("$output/custom_glsl/Wood_v.gl" "$output/custom_glsl/Wood_f.gl")
    "$program" render "${files[@]}" -o "$output/$target.png"
    cp "$output/$target.png" "$pictures/wood_$target.png"
done

for language in cgfx hlsl glsl; do
    "$program" render docs/images/materials.mtlx --all --as $language --size 110 \
        -o "$pictures/materials_$language.png" 2>/dev/null
done
"$program" compare "$output/cgfx.png" "$output/hlsl_fx.png"
"$program" compare "$output/cgfx.png" "$output/glsl.png"
