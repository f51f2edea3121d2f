#!/usr/bin/env bash
# Installs a build into an empty folder and uses what is there.
#
#   installed.sh BUILD_FOLDER
set -euo pipefail

build=$(realpath "$1")
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
cmake --install "$build" --prefix "$root" >/dev/null

fail()
{
    echo "$*" >&2
    exit 1
}

for file in bin/shader-export include/toviraexport/plugin/iexporter.h \
    include/toviraexport/sdk/igraph_view.h share/applications/shader-export.desktop \
    share/bash-completion/completions/shader-export \
    share/fish/vendor_completions.d/shader-export.fish \
    share/icons/hicolor/scalable/apps/shader-export.svg \
    share/toviraexport/samples/wood_textured.mtlx share/zsh/vendor-completions/_shader-export; do
    [ -s "$root/$file" ] || fail "$file is not installed"
done
cd "$root"
export PATH=$root/bin:$PATH HOME=$root
unset TOVIRAEXPORT_PLUGIN

# A man page for the program and for each of its commands.
for command in '' $(shader-export help | sed -n '/^Commands:/,/^$/s/^  \([a-z][a-z]*\) .*/-\1/p'); do
    [ -s "share/man/man1/shader-export$command.1" ] || fail "shader-export$command has no man page"
done

# The program finds the plug-in, and what its checks preload.
shader-export list | grep -q '^7  Custom GLSL$' || fail "the plug-in is not found"
shader-export export share/toviraexport/samples/wood_textured.mtlx -e "Custom GLSL" -o wood \
    2>/dev/null || fail "the installed program does not export"
shader-export check "$(find "$root" -name toviraexport.so)" --include faults.system_calls >/dev/null ||
    fail "the installed program does not check"

# The headers stand alone.
for header in include/toviraexport/*/*.h; do
    c++ -std=c++17 -fsyntax-only -x c++ -I include/toviraexport "$header" || fail "$header"
done
