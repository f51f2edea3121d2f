#!/usr/bin/env bash
# Installs a package of scripts/package.sh, with its dependencies, on a Debian 12 without build tools
# (made with debootstrap), exports and draws the samples there, removes the package, and looks for
# traces. Where that cannot run (no root, no debootstrap), the package is unpacked and its programs'
# libraries are looked for.
#
#   scripts/test-package.sh [PACKAGE]    default: the newest in build-package
#
# Exit status: 0 all of it worked; 1 otherwise, with the reason.
set -euo pipefail
cd "$(dirname "$0")/.."

package=${1:-$(ls -t build-package/*.deb | head -n 1)}
base=build-package/debian-12.tar # kept, since debootstrap takes minutes
root=$(mktemp -d)

in_root()
{
    chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive "$@"
}

clean_up()
{
    umount "$root/proc" 2>/dev/null || true
    rm -rf "$root"
}
trap clean_up EXIT

# Exports and draws the samples with the program below a folder; empty: the system's own.
try_program()
{
    local samples=$1/usr/share/toviraexport/samples effects=/tmp/effects.$$
    shift
    "$@" shader-export --version
    "$@" shader-export batch "$samples" --output "$effects" --light key:directional \
        --environment "surroundings:$samples/images/wood_color.png" --quiet
    "$@" shader-export render "$effects/custom_glsl/Wood_v.gl" "$effects/custom_glsl/Wood_f.gl" \
        -o "$effects/wood.png"
    "$@" rm -rf "$effects"
}

# Everything but what the package manager writes about itself.
files_of_root()
{
    (cd "$root" && find . -xdev \( -path ./proc -o -path ./tmp -o -path './var/lib/dpkg' -o \
        -path './var/cache' -o -path './var/lib/apt' -o -path './var/log' \) -prune -o -print |
        grep -v 'etc/ld.so.cache$' | sort)
}

if [ "$(id -u)" -ne 0 ] || ! command -v debootstrap >/dev/null; then
    echo "debootstrap cannot run here: the package is unpacked only"
    dpkg-deb -x "$package" "$root"
    if ldd "$root/usr/bin/shader-export" "$root"/usr/lib/*/toviraexport/*.so | grep 'not found'; then
        exit 1
    fi
    PATH=$root/usr/bin:$PATH try_program "$root" env
    exit 0
fi

if [ ! -e "$base" ]; then
    mkdir -p "$(dirname "$base")"
    debootstrap --variant=minbase bookworm "$root" >"$base.log"
    tar -C "$root" -cf "$base" .
else
    tar -C "$root" -xf "$base"
fi
cp /etc/resolv.conf "$root/etc/"
echo force-unsafe-io >"$root/etc/dpkg/dpkg.cfg.d/unsafe-io" # the root does not outlive a crash
mount -t proc proc "$root/proc"
in_root apt-get -qq update
# The dependencies first, so that what is left afterwards is of the package itself.
dependencies=$(dpkg-deb -f "$package" Depends | sed 's/([^)]*)//g; s/|[^,]*//g; s/,/ /g')
# shellcheck disable=SC2086 # several words
in_root apt-get -qq install --no-install-recommends $dependencies >/dev/null 2>&1
files_of_root >"$root/tmp/before"
cp "$package" "$root/tmp/package.deb"
in_root apt-get -qq install --no-install-recommends /tmp/package.deb >/dev/null 2>&1
if in_root sh -c 'command -v cc || command -v g++ || command -v cmake'; then
    echo "the root has build tools"
    exit 1
fi
try_program '' in_root
in_root apt-get -qq purge toviraexport >/dev/null 2>&1
files_of_root >"$root/tmp/after"
if ! diff "$root/tmp/before" "$root/tmp/after"; then
    echo "the package left these traces"
    exit 1
fi
echo "installed, ran and removed in a clean Debian 12: $(basename "$package")"
