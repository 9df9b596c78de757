#!/usr/bin/env bash
# Gives each fuzz target of tests/fuzz made-up inputs for some minutes, a target on each core at a time. What a target
# learns stays in build/fuzz/corpus for the next time. An input that fails is left in tests/fuzz/inputs, so that every run of
# the tests replays it.
#
#     tools/fuzz.sh MINUTES [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."
minutes=${1:?for how many minutes}
shift
tools/build.sh fuzz

targets=("$@")
if ((${#targets[@]} == 0)); then
    mapfile -t targets < <(basename -s .cpp -a tests/fuzz/*Fuzz.cpp)
fi

run() {  # TARGET
    local corpus=$PWD/build/fuzz/corpus/$1 inputs=$PWD/tests/fuzz/inputs/$1 log=build/fuzz/$1.log
    mkdir -p "$corpus"
    if nice -n 19 "build/fuzz/tests/fuzz/$1" -max_total_time="$seconds" -max_len=4096 -artifact_prefix="$inputs/found-" \
        "$corpus" "$inputs" "$PWD/tests/data" >"$log" 2>&1; then
        echo "$1: $(tail -n 1 "$log")"
    else
        tail -n 40 "$log"
        echo "$1 failed; the full output is in $log."
        return 1
    fi
}
export -f run
export seconds=$((60 * minutes))
printf '%s\n' "${targets[@]}" | xargs -P "$(nproc)" -I{} bash -c 'run {}'
