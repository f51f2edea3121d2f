#!/usr/bin/env bash
# Installs what is missing, builds the project and the free checkers, exports every sample through every
# exporter and shows each file to the checkers that know its kind. Prints one row per file, then draws a
# few of them.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install.sh
cmake --preset default >/dev/null
cmake --build --preset default --target toviraexport toviraexport_all shader-export fxcheck qzcheck

# Without network the demo goes on with the checkers that are there.
scripts/fetch-validators.sh --free >build/validators.log 2>&1 ||
    echo "The free checkers could not be made; build/validators.log says why."

output=build/demo
rm -rf "$output"
failed=0
printf '%-25s %-22s %-28s %7s  %s\n' document exporter files bytes 'accepted by'
for document in samples/*.mtlx; do
    scene=(--environment Studio)
    # A document without lights gets two, as bright as the environment leaves room for.
    grep -q '_light name' "$document" ||
        scene+=(--light key:directional:intensity=0.6,color=1,0.97,0.92 --light fill:point:intensity=0.3)
    scripts/export-and-check.sh build "$document" "$output/$(basename "$document" .mtlx)" \
        "${scene[@]}" || failed=1
done

echo
for document in wood_textured marble_procedural plastic_two_lights metal_environment; do
    vertex=$(echo "$output/$document"/custom_glsl/*_v.gl)
    build/reference_host/app/shader-export render "$vertex" "${vertex%_v.gl}_f.gl" \
        --search-path samples -o "$output/$document.png"
    echo "drawn: $output/$document.png"
done

[ -x build/validators/bin/cgfxcheck ] ||
    echo "scripts/fetch-validators.sh adds a Cg compiler for effects: free of charge, not free software."
exit $failed
