#!/usr/bin/env bash
# Installs the Debian packages that building, running and testing need. Asks for nothing when they
# are all there. Needs root or sudo otherwise.
set -euo pipefail

packages=(
    g++ cmake ninja-build ccache pkg-config   # the build
    libwxgtk3.2-dev                           # the toolkit of the plug-in's panels and dialogs
    libpugixml-dev libcli11-dev libdtl-dev    # the stand-in host: documents, command line, differences
    libxxhash-dev nlohmann-json3-dev jq       # its fingerprints of files, reports and lists
    python3-jsonschema make                   # check its reports and plans in tests
    libosmesa6-dev libgl-dev libpng-dev libjpeg62-turbo-dev libstb-dev # its pictures, without a display
    libgtest-dev libgmock-dev libbenchmark-dev # tests and benchmarks
    libx11-dev libxtst-dev                    # opens displays; presses keys and buttons in tests
    groff-base fish zsh                       # read the man pages and completions in tests
    graphviz                                  # places the nodes of graphs in the window
    xvfb xauth fonts-dejavu-core fonts-dejavu-extra # a display for the panels
    glslang-tools                             # a compiler that checks exported GLSL
    bison flex xz-utils dpkg-dev              # scripts/fetch-validators.sh builds with these
    locales                                   # tests run in a locale with a decimal comma
    clang clang-format libclang-rt-dev        # fuzz targets, the format of the sources
)

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$status" = installed ] || missing+=("$package")
done
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi

# The tests of numbers in texts want a locale with a decimal comma, in both encodings.
for encoding in UTF-8 ISO-8859-1; do
    locale -a | grep -qix "de_DE.${encoding//-/}" ||
        "${as_root[@]}" localedef -i de_DE -f "$encoding" "de_DE.$encoding"
done
