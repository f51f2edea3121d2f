#!/bin/bash
# Fetches and builds the optional checkers of exported files.
#
#   scripts/fetch-validators.sh [--free] [FOLDER]    FOLDER is build/validators when not given
#
# Afterwards FOLDER/bin holds cgc, cgfxcheck, hlslcheck and glslcheck, ready to run; all else in
# FOLDER is theirs. --free makes only those that are free software: hlslcheck and glslcheck. Nothing is installed, no file outside of FOLDER changes, no root rights are
# needed. A second run builds only what is absent or older than its source. When one checker cannot
# be made the others still are, those that were there stay usable, and the exit status is 1.
#
# Packages: g++ bison flex xz-utils dpkg-dev libosmesa6-dev libgl-dev libpng-dev libjpeg-dev libstb-dev
set -eu
shopt -s extglob

free_only=no
if [ "${1:-}" = --free ]; then
    free_only=yes
    shift
fi
root=$(cd "$(dirname "$0")/.." && pwd)
mkdir -p "${1:-$root/build/validators}/bin"
folder=$(cd "${1:-$root/build/validators}" && pwd)
packages=$folder/packages
sources=$folder/sources
architecture=$(gcc -print-multiarch)

say() { printf '%s\n' "$*"; }

# ---- fetching -----------------------------------------------------------------------------------

# apt-get with package lists of its own: the sources of the system stay as they are.
own_apt_get()
{
    apt-get -q -o Dir::Etc::SourceList="$packages/sources.list" -o Dir::Etc::SourceParts=/dev/null \
        -o Dir::State::Lists="$packages/lists" -o Dir::Cache="$packages/cache" \
        -o APT::Sandbox::User= -o APT::Update::Error-Mode=any "$@"
}

# Makes the package lists known, once in a run.
lists_ready=no
update_lists()
{
    [ $lists_ready = no ] || return 0
    mkdir -p "$packages/lists/partial" "$packages/cache/archives/partial"
    # The mirror is the one from which this system itself was installed.
    # shellcheck disable=SC2016 # apt fills the placeholder
    mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' \
        'Release: bookworm' 'Component: main' | head -n 1)
    if [ -z "$mirror" ]; then
        say "no Debian 12 mirror among the system's package sources" >&2
        return 1
    fi
    keys='[signed-by=/usr/share/keyrings/debian-archive-keyring.gpg]'
    say "deb $keys $mirror bookworm main non-free" >"$packages/sources.list"
    say "deb-src $keys $mirror trixie main" >>"$packages/sources.list"
    own_apt_get update && lists_ready=yes
}

# unpack_packages FOLDER PACKAGE...: downloads the packages and unpacks them into FOLDER.
unpack_packages()
{
    target=$1
    shift
    update_lists || return 1
    (cd "$packages" && own_apt_get download "$@") || return 1
    for package in "$@"; do
        dpkg -x "$packages/$package"_*.deb "$target" || return 1
    done
}

# make_command NAME PROGRAM: bin/NAME runs the program with the libraries that were fetched for it.
make_command()
{
    cat >"$folder/bin/$1.new" <<EOF
#!/bin/sh
here=\$(cd "\$(dirname "\$(readlink -f "\$0")")/.." && pwd)
LD_LIBRARY_PATH=\$here/cg/usr/lib/$architecture exec "\$here/$2" "\$@"
EOF
    chmod +x "$folder/bin/$1.new"
    mv "$folder/bin/$1.new" "$folder/bin/$1"
}

# ---- the checkers: each function makes FOLDER/bin/<its name> ------------------------------------

make_cgc()
{
    rm -rf "$folder/cg.new"
    unpack_packages "$folder/cg.new" nvidia-cg-toolkit libcg libcggl nvidia-cg-dev || return 1
    rm -rf "$folder/cg" && mv "$folder/cg.new" "$folder/cg" && make_command cgc cg/usr/bin/cgc
}

# How every program of the project opens files.
files=$root/reference_host/system/file_access

make_cgfxcheck()
{
    if [ ! -d "$folder/cg" ]; then
        say "the Cg runtime is absent"
        return 1
    fi
    g++ -std=c++17 -O1 -Wall -Wextra -isystem "$folder/cg/usr/include" \
        -I"$root" "$root/validators/cgfxcheck.cpp" "$files.cpp" -o "$folder/cgfxcheck" \
        -L"$folder/cg/usr/lib/$architecture" -lCg -lCgGL -Wl,--allow-shlib-undefined &&
        make_command cgfxcheck cgfxcheck
}

# The HLSL compiler vkd3d-shader is part of Wine's source package. Only that library is built; Wine
# lends its headers and never runs.
make_hlslcheck()
{
    if [ ! -f "$folder/vkd3d/vkd3d.a" ]; then
        fetch_vkd3d && build_vkd3d || return 1
    fi
    g++ -std=c++17 -O1 -Wall -Wextra -isystem "$folder/vkd3d/include" \
        -I"$root" "$root/validators/hlslcheck.cpp" "$files.cpp" "$folder/vkd3d/vkd3d.a" -o "$folder/bin/hlslcheck" \
        -lm -lpthread
}

fetch_vkd3d()
{
    mkdir -p "$sources"
    unpack_packages "$sources/wine" libwine-dev || return 1
    (cd "$sources" && own_apt_get source --download-only wine) || return 1
    tar -xJf "$sources"/wine_*.orig.tar.xz -C "$sources" --strip-components=1 --wildcards \
        '*/libs/vkd3d' '*/include/wine/list.h' '*/include/wine/rbtree.h'
}

build_vkd3d()
(
    library=$sources/libs/vkd3d
    shader=$library/libs/vkd3d-shader
    windows=$sources/wine/usr/include/wine/wine/windows
    rm -rf "$sources/objects" "$folder/vkd3d"
    mkdir "$sources/objects"
    cd "$sources/objects"
    for name in hlsl preproc; do
        bison -Wnone -d -o $name.tab.c "$shader/$name.y" || exit 1
        flex -o $name.yy.c "$shader/$name.l" || exit 1
    done
    # What the library takes from its sisters, which are not built.
    cat >outside.c <<'EOF'
const char *const vkd3d_dbg_env_name = "VKD3D_DEBUG";
int vkd3d_blob_create(void *buffer, unsigned long size, void **blob)
{
    (void)buffer, (void)size, (void)blob;
    return -1;
}
EOF
    for source in "$library"/libs/vkd3d-common/debug.c "$library"/libs/vkd3d-common/memory.c \
        "$library"/libs/vkd3d-common/utf8.c "$shader"/*.c ./*.c; do
        gcc -O1 -w -I. -I"$sources/include" -I"$library" -I"$library/include" \
            -I"$library/include/private" -I"$shader" \
            -I"$windows" -DWINE_NO_NAMELESS_EXTENSION \
            -DLIBVKD3D_SHADER_SOURCE -DLIBVKD3D_SOURCE -DHAVE_SYNC_ADD_AND_FETCH=1 \
            -DHAVE_SYNC_BOOL_COMPARE_AND_SWAP=1 -DHAVE_ATOMIC_EXCHANGE_N=1 \
            -c "$source" || exit 1
    done
    mkdir "$folder/vkd3d"
    cp -r "$library/include" "$folder/vkd3d/include"
    cp "$windows"/*.h "$folder/vkd3d/include"
    ar rc "$folder/vkd3d/vkd3d.a" ./*.o
    rm -rf "$sources"
)

# The drawing is that of the stand-in host, without its command line.
renderer=("$root"/reference_host/{render/!(render_command),system/*}.cpp)

make_glslcheck()
{
    g++ -std=c++17 -O1 -Wall -Wextra -I"$root" "$root/validators/glslcheck.cpp" \
        "${renderer[@]}" -o "$folder/bin/glslcheck" -lOSMesa -lpng -ljpeg -lstb
}

# ---- the run ------------------------------------------------------------------------------------

say "Checkers for exported shaders, into $folder:"
[ $free_only = yes ] || say "\
  cgc         Cg 3.1 compiler and runtime, from Debian's non-free section. Free to use, but not free
              software: the licence allows neither changes nor disassembly. Only unpacked here; its
              text is in cg/usr/share/doc/nvidia-cg-toolkit.
  cgfxcheck   this project's; loads whole effects with the Cg runtime"
say "\
  hlslcheck   this project's, with the HLSL compiler vkd3d-shader 1.14 out of the source package of
              Wine in Debian 13 and Windows headers of libwine-dev (LGPL 2.1 or later)
  glslcheck   this project's; draws GLSL pairs with Mesa (MIT licence)"

# outdated NAME SOURCE...: whether bin/NAME is absent or older than a source.
outdated()
{
    command=$folder/bin/$1
    shift
    [ -x "$command" ] || return 0
    for source in "$@"; do
        [ ! "$source" -nt "$command" ] || return 0
    done
    return 1
}

failed=
# provide NAME SOURCE...: makes the checker when it is outdated.
provide()
{
    if ! outdated "$@"; then
        say "$1: there"
    elif "make_$1" >"$folder/$1.log" 2>&1; then
        say "$1: made"
    else
        say "$1: FAILED, see $folder/$1.log; its end:" >&2
        tail -n 3 "$folder/$1.log" >&2
        failed="$failed $1"
    fi
}

if [ $free_only = no ]; then
    provide cgc
    provide cgfxcheck "$root/validators/cgfxcheck.cpp" "$files".@(cpp|h)
fi
provide hlslcheck "$root/validators/hlslcheck.cpp" "$files".@(cpp|h)
provide glslcheck "$root/validators/glslcheck.cpp" "$root"/reference_host/@(render|system)/*.@(cpp|h) \
    "$root"/reference_host/shading/@(host_values|types).h

if [ -n "$failed" ]; then
    say "Could not make:$failed. What was there before is still usable. Run this again with" \
        "network and the packages that the head of this script names." >&2
    exit 1
fi
