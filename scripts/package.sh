#!/usr/bin/env bash
# Makes build-package/toviraexport_VERSION-1_ARCHITECTURE.deb: the plug-in, shader-export, man pages,
# completions, documentation, samples and the headers for hosts. Shows it to lintian where that is
# installed. scripts/test-package.sh tries the result in a clean root.
#
# Needs dpkg-dev besides what building needs. DEBFULLNAME and DEBEMAIL name the maintainer, as for
# other tools of Debian. Exit status: 0 the package is there and lintian has no
# error; 1 otherwise, with the reason.
set -euo pipefail
cd "$(dirname "$0")/.."

build=build-package
architecture=$(dpkg --print-architecture)
triplet=$(dpkg-architecture -qDEB_HOST_MULTIARCH)
cmake -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DTOVIRAEXPORT_BUILD_TESTS=OFF \
    -DCMAKE_INSTALL_PREFIX=/usr -DCMAKE_INSTALL_LIBDIR="lib/$triplet" >/dev/null
cmake --build "$build" --target toviraexport shader-export man_pages_and_completions
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:[^=]*=//p' "$build/CMakeCache.txt")-1
maintainer="${DEBFULLNAME:-The toviraexport authors} <${DEBEMAIL:-toviraexport@debian.invalid}>"

root=$build/root
rm -rf "$root"
DESTDIR=$PWD/$root cmake --install "$build" --strip >/dev/null

# What Debian wants otherwise than other systems: packed man pages, its own form of the licence and
# of the changelog.
documents=$root/usr/share/doc/toviraexport
gzip -9n "$root"/usr/share/man/man1/*.1
gzip -9nc CHANGELOG.md >"$documents/changelog.gz"
gzip -9nc >"$documents/changelog.Debian.gz" <<CHANGELOG
toviraexport ($version) unstable; urgency=medium

  * changelog.gz tells what changed.

 -- $maintainer  $(date -R -d "@$(git log -1 --format=%ct)")
CHANGELOG
{
    printf 'Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/\n'
    printf 'Upstream-Name: toviraexport\n\nFiles: *\nCopyright: %s\nLicense: Expat\n' \
        "$(sed -n 's/^Copyright ([cC]) //p' LICENSE)"
    sed -n '/^Permission/,$s/^/ /p' LICENSE | sed 's/^ $/ ./'
} >"$documents/copyright"
rm "$documents/CHANGELOG.md" "$documents/LICENSE"
find "$root" -type d -exec chmod 755 {} +
find "$root" -type f ! -path '*/bin/*' -exec chmod 644 {} +

# dpkg-shlibdeps wants a source package around it.
mkdir -p "$build/debian" "$root/DEBIAN"
printf 'Source: toviraexport\n\nPackage: toviraexport\nArchitecture: any\n' >"$build/debian/control"
libraries=$(cd "$build" && dpkg-shlibdeps -O root/usr/bin/shader-export \
    "root/usr/lib/$triplet/toviraexport/"*.so | sed -n 's/^shlibs:Depends=//p')
cat >"$root/DEBIAN/control" <<CONTROL
Package: toviraexport
Version: $version
Architecture: $architecture
Section: graphics
Priority: optional
Maintainer: $maintainer
Installed-Size: $(du -sk "$root/usr" | cut -f1)
Depends: $libraries, xauth, xvfb
Recommends: graphviz
Description: shader export for Tovira and MaterialX documents
 Exports surface shaders as CgFX, HLSL FX and GLSL effects for several
 programs. With the plug-in for Tovira comes shader-export, which opens
 MaterialX documents and runs the plug-in from a command line, in batches
 and in a window.
CONTROL
(cd "$root" && find usr -type f -print0 | sort -z | xargs -0 md5sum >DEBIAN/md5sums)
package=$build/toviraexport_${version}_$architecture.deb
dpkg-deb --root-owner-group --build "$root" "$package" >/dev/null

if command -v lintian >/dev/null; then
    lintian --allow-root --fail-on error --tag-display-limit 0 "$package"
else
    echo "lintian is not installed: the package was not shown to it"
fi
echo "$package"
