#!/usr/bin/env bash
# Runs the built program under Xvfb with the options given and writes pictures of its window:
# out/splash.png, out/quake-1.png, out/quake-2.png, out/preview.png. Fails when one that is due is missing.
set -euo pipefail
cd "$(dirname "$0")/.."

program=build/release/tellmar
speed=4  # a quake stays for 15 / 4 seconds
work=$(mktemp -d)
trace=$work/trace
saver_pid=
xvfb_pid=
failed=false

end() {
    if [[ -n $1 ]]; then
        kill "$1" 2>/dev/null || true
        wait "$1" 2>/dev/null || true
    fi
}
trap 'end "$saver_pid"; end "$xvfb_pid"; rm -rf "$work"' EXIT

start_display() {
    Xvfb -displayfd 3 -screen 0 1280x720x24 -nolisten tcp 3>"$work/display" 2>"$work/xvfb" &
    xvfb_pid=$!
    wait_until 20 test -s "$work/display" || { cat "$work/xvfb" >&2; echo "Xvfb does not start." >&2; exit 1; }
    DISPLAY=:$(<"$work/display")
    export DISPLAY GDK_BACKEND=x11 NO_AT_BRIDGE=1
}

# wait_until SECONDS COMMAND...: tries the command until it succeeds or the time is over.
wait_until() {
    local end_time=$((SECONDS + $1))
    shift
    until "$@"; do
        ((SECONDS < end_time)) || return 1
        sleep 0.1
    done
}

saver_runs() { kill -0 "$saver_pid" 2>/dev/null; }

traced() {  # WORD TIMES: at least so many lines of the trace begin with the word, or the saver has ended
    (($(grep -c "^tellmar: $1" "$trace") >= $2)) || ! saver_runs
}

visible_window() {
    window=$(xdotool search --onlyvisible --pid "$saver_pid" 2>/dev/null | tail -n 1)
    [[ -n $window ]] || ! saver_runs
}

start_saver() {
    : >"$trace"
    "$program" "$@" --speed "$speed" --verbose 2>"$trace" &
    saver_pid=$!
    window=
    # The feed is read before the window opens, and a slow server has half a minute.
    if ! wait_until 60 visible_window || [[ -z $window ]]; then
        give_up "The program has shown no window."
    fi
}

give_up() {
    cat "$trace" >&2
    echo "$1" >&2
    exit 1
}

take_picture() {
    if import -silent -window "$window" "out/$1.png" && [[ -s out/$1.png ]]; then
        echo "out/$1.png"
    else
        echo "out/$1.png could not be written." >&2
        failed=true
    fi
}

take_quake() {  # NUMBER: the quake that the fade of that number has brought in
    if ! wait_until 45 traced fade "$1" || ! saver_runs; then
        give_up "Quake $1 has not come to the screen."
    fi
    sleep 1.5  # a fade lasts a second at most
    take_picture "quake-$1"
}

take_saver() {
    start_saver "$@"
    # The splash stays for two ticks at least; at the first one it is painted.
    if ! wait_until 45 traced tick 1 || ! saver_runs; then
        give_up "The splash has not come to the screen."
    fi
    take_picture splash
    if ! wait_until 15 traced page 1; then
        echo "The feed has given no earthquakes, so the splash stays: no pictures of quakes." \
            "Try ./run --demo" >&2
    else
        take_quake 1
        take_quake 2
    fi
    end "$saver_pid"
}

take_preview() {
    start_saver "$@" --preview
    xdotool windowsize "$window" 565 317
    local painted
    painted=$(grep -c '^tellmar: tick' "$trace" || true)
    if ! wait_until 30 traced tick $((painted + 1)) || ! saver_runs; then
        give_up "The preview has not been painted."
    fi
    sleep 0.5
    take_picture preview
    end "$saver_pid"
}

rm -f out/splash.png out/quake-1.png out/quake-2.png out/preview.png
mkdir -p out
start_display
take_saver "$@"
take_preview "$@"
if $failed; then
    exit 1
fi
