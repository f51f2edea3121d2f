#!/usr/bin/env bash
# Exports docs/examples/glazed_tile.mtlx once through every exporter, shows each file to the compilers
# that know its kind, and renews docs/examples and the excerpts of it in the documents.
#
#   scripts/renew-examples.sh [--check] [BUILD_FOLDER]
#
# --check changes nothing: it prints what would change. Exit status: 0 every file was accepted by the
# compilers that are there and, with --check, nothing differs; 1 otherwise.
#
# An excerpt is a code block below a comment that names the file and the beginnings of its first and
# last line:
#
#   <!-- excerpt FOLDER/FILE: "FIRST LINE" to "LAST LINE" -->
set -euo pipefail
shopt -s nullglob

check=no
if [ "${1:-}" = --check ]; then
    check=yes
    shift
fi
build=$(realpath "${1:-$(dirname "$0")/../build}")
cd "$(dirname "$0")/.."
examples=docs/examples
temporary=$(mktemp -d)
trap 'rm -rf "$temporary"' EXIT
status=0

# with_excerpts DOCUMENT: the document with its excerpts taken from the new files.
with_excerpts()
{
    awk -v folder="$temporary/new" '
        function take(file, first, last,    line, found) {
            while ((getline line < file) > 0) {
                if (!found && index(line, first) != 1)
                    continue
                found = 1
                print line
                if (index(line, last) == 1)
                    break
            }
            close(file)
            if (!found) {
                print FILENAME ": " file " has no line that begins with " first > "/dev/stderr"
                failed = 1
            }
        }
        /^<!-- excerpt / {
            split($0, part, "\"")
            file = part[1]
            gsub(/^<!-- excerpt |: $/, "", file)
            wanted = 1
        }
        /^```/ && inside { inside = 0 }
        !inside
        /^```./ && wanted {
            take(folder "/" file, part[2], part[4])
            inside = 1
            wanted = 0
        }
        END { exit failed }' "$1"
}

# The same names of images wherever the temporary folder is.
scripts/export-and-check.sh "$build" $examples/glazed_tile.mtlx "$temporary/new" \
    --texture-paths as-is || status=1
rm -rf "$temporary"/new/*.log "$temporary"/new/*/.shader-export # what the host keeps of an export

for folder in "$temporary"/new/*/; do
    name=$(basename "$folder")
    if [ $check = yes ]; then
        diff -ruN "$examples/$name" "$folder" || status=1
    else
        rm -rf "${examples:?}/$name"
        cp -r "$folder" "$examples/$name"
    fi
done
for document in docs/*.md docs/*/*.md README.md; do
    with_excerpts "$document" >"$temporary/document" || status=1
    if [ $check = yes ]; then
        diff -u "$document" "$temporary/document" || status=1
    elif ! cmp -s "$document" "$temporary/document"; then
        cp "$temporary/document" "$document"
        echo "renewed: $document"
    fi
done
if [ $check = yes ] && [ $status -ne 0 ]; then
    echo "scripts/renew-examples.sh renews what differs"
fi
exit $status
