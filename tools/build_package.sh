#!/usr/bin/env bash
# Builds the Debian package from a copy of the sources, puts it in out/ and prints its path.
set -euo pipefail
cd "$(dirname "$0")/.."

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
source=$work/tellmar

copy_sources() {
    mkdir "$source"
    tar --create --exclude=./.git --exclude=./build --exclude=./out . | tar --extract --directory "$source"
    cp -r packaging/debian "$source/debian"
}

build() {
    (cd "$source" && dpkg-buildpackage --build=binary --unsigned-source --unsigned-changes)
}

mkdir -p build out
log=$PWD/build/package.log
copy_sources
if ! build >"$log" 2>&1; then
    tail -n 60 "$log" >&2
    echo "Cannot build the package; the full output is in $log." >&2
    exit 1
fi
rm -f out/tellmar_*.deb out/tellmar-dbgsym_*.deb
cp "$work"/tellmar_*.deb out/
ls out/tellmar_*.deb
