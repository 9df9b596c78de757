#!/usr/bin/env bash
# Draws the two pictures of the bundle with the map page's own code, without a screen:
# google_maps_nz.png for the splash and google_maps_nz_pre.png for the settings preview.
set -euo pipefail
cd "$(dirname "$0")/.."
tools/setup.sh test
tools/build.sh dev

draw() {  # PAGE WIDTH HEIGHT NAME OPTION-OF-CONVERT...
    local output=$PWD/resources/$4
    xvfb-run -a -s "-screen 0 1920x1080x24" build/dev/page_picture "$PWD/tools/$1" "$2" "$3" "$output"
    convert "$output" "${@:5}" -strip -define png:compression-level=9 "$output"
    echo "$output: $(stat -c %s "$output") bytes"
}

draw splash.html 1000 1000 google_maps_nz.png
draw preview.html 1130 634 google_maps_nz_pre.png -dither FloydSteinberg -colors 256
