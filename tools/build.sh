#!/usr/bin/env bash
# Configures and builds a preset. Shows the end of the output, but only when it fails.
#
#     tools/build.sh release|dev|sanitize|fuzz
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:?which preset: release, dev, sanitize or fuzz}

mkdir -p build
log=build/$preset.log
if ! { cmake --preset "$preset" && cmake --build --preset "$preset"; } >"$log" 2>&1; then
    tail -n 60 "$log" >&2
    echo "Cannot build the preset $preset; the full output is in $log." >&2
    exit 1
fi
