#!/bin/bash
# Shows an exported file to the outside compilers that know its kind.
#
#   scripts/accept.sh cgfx FILE       CgFX effect; without a technique: a text for other effects
#   scripts/accept.sh catia FILE      CgFX effect of CATIA, also with its lights bound
#   scripts/accept.sh hlsl FILE       HLSL effect, as it is and as 3ds Max compiles it
#   scripts/accept.sh glsl VERTEX FRAGMENT
#   scripts/accept.sh cpp FILE        C++ source
#   scripts/accept.sh qz FILE         scene text, parsed back by a checker of our own
#
# One line for each check on standard output:
#
#   accepted: CHECK
#   refused: CHECK: FIRST MESSAGE
#   undecided: CHECK: FIRST MESSAGE        the compiler itself has a gap there
#   skipped: PROGRAM is absent; WHAT BRINGS IT
#
# All messages of a compiler that does not accept go to standard error. Exit status: 0 accepted and
# never refused, 1 refused, 77 nothing could decide, 2 wrong usage.
#
# The optional checkers are those in TOVIRAEXPORT_VALIDATORS (default: build/validators).
set -u

root=$(cd "$(dirname "$0")/.." && pwd)
checkers=${TOVIRAEXPORT_VALIDATORS:-$root/build/validators}/bin
temporary=$(mktemp -d)
trap 'rm -rf "$temporary"' EXIT
accepted=no
refused=no

# has PROGRAM WHAT_BRINGS_IT: whether the program is there; says so when it is not.
has()
{
    if [ -x "$checkers/$1" ] || command -v "$1" >/dev/null; then
        return 0
    fi
    printf 'skipped: %s is absent; %s\n' "$1" "$2"
    return 1
}

# The most telling line of a compiler's messages: the first one that speaks of an error.
first_message()
{
    { grep -i -m 1 'error' "$temporary/log" || grep -m 1 . "$temporary/log"; } | tr -d '\r'
}

# check NAME COMMAND...: runs a compiler and prints its verdict.
check()
{
    local name=$1 status
    shift
    PATH=$checkers:$PATH "$@" >"$temporary/log" 2>&1
    status=$?
    if [ $status = 0 ]; then
        printf 'accepted: %s\n' "$name"
        accepted=yes
        return
    fi
    # hlslcheck reports its gaps by status 3; the file is not to blame for a crash (128 and up)
    # either.
    if [ "$1" = hlslcheck ] && { [ $status = 3 ] || [ $status -ge 128 ]; }; then
        printf 'undecided: %s: %s\n' "$name" "$(first_message)"
    else
        printf 'refused: %s: %s\n' "$name" "$(first_message)"
        refused=yes
    fi
    cat "$temporary/log" >&2
}

fetch='scripts/fetch-validators.sh brings it'

check_frame()
{
    has fxcheck "the build brings it" && check "fxcheck" fxcheck "$1"
}

check_effect()
{
    check_frame "$1"
    if ! grep -q '^technique' "$1"; then
        has cgc "$fetch" && check "cgc -noentry" cgc -quiet -noentry -o /dev/null "$1"
        return
    fi
    has cgfxcheck "$fetch" && check "cgfxcheck" cgfxcheck -q "$1"
}

check_catia()
{
    local types
    check_effect "$1"
    has cgfxcheck "$fetch" >/dev/null || return
    for types in SLightDir SLightPoint SLightSpot SLightDir,SLightPoint,SLightSpot; do
        check "cgfxcheck -bind lights=$types" cgfxcheck -q -bind "lights=$types" "$1"
    done
}

check_hlsl()
{
    local macro
    check_frame "$1"
    for macro in '' _MAX_; do
        has cgfxcheck "$fetch" &&
            check "cgfxcheck -hlsl${macro:+ -D $macro}" cgfxcheck -q -hlsl ${macro:+-D $macro} "$1"
        has hlslcheck "$fetch" &&
            check "hlslcheck${macro:+ -D $macro}" hlslcheck ${macro:+-D $macro} "$1"
    done
}

check_glsl()
{
    if has glslangValidator "the package glslang-tools brings it"; then
        # The stages are told apart by the ending where a program is linked.
        cp "$1" "$temporary/shader.vert"
        cp "$2" "$temporary/shader.frag"
        check "glslangValidator -S vert" glslangValidator -S vert "$1"
        check "glslangValidator -S frag" glslangValidator -S frag "$2"
        check "glslangValidator -l" \
            glslangValidator -l "$temporary/shader.vert" "$temporary/shader.frag"
    fi
    has glslcheck "$fetch" && check "glslcheck" glslcheck "$1" "$2"
}

usage()
{
    sed -n '4,9s/^# *//p' "$0" >&2
    exit 2
}

[ $# -ge 2 ] || usage
kind=$1
shift
case $kind:$# in
cgfx:1 | catia:1 | hlsl:1 | cpp:1 | qz:1 | glsl:2) ;;
*) usage ;;
esac
for file in "$@"; do
    if [ ! -r "$file" ] || [ ! -f "$file" ]; then
        printf 'refused: reading: %s: no such file\n' "$file"
        exit 1
    fi
done

case $kind in
cgfx) check_effect "$1" ;;
catia) check_catia "$1" ;;
hlsl) check_hlsl "$1" ;;
glsl) check_glsl "$1" "$2" ;;
cpp) has g++ "the package g++ brings it" && check "g++" g++ -std=c++17 -fsyntax-only -x c++ "$1" ;;
qz) has qzcheck "the build brings it" && check "qzcheck" qzcheck "$1" ;;
esac

[ $refused = no ] || exit 1
[ $accepted = yes ] || exit 77
