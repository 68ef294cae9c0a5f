#!/bin/bash
# Drives the demo with a real pointer and keyboard on the given display and takes pictures of what a user sees.
# ./run sets its environment: DISPLAY, NR_WITH_WINE, NR_DEMO, NR_FILE (may be empty), NR_OUT.
# Prints the path of each picture, a line each; the exit code is 1 when a step failed.

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
: "${NR_WITH_WINE:?}" "${NR_DEMO:?}" "${NR_OUT:?}" "${DISPLAY:?}"

# A folder of its own for what the demo keeps from one start to the next, on which the pictures must not depend.
kept=$(mktemp -d)
NRVV_DEMO_DATA=Z:${kept//\//\\}
export NRVV_DEMO_DATA

demo=
window=

fail() {
    printf 'tour: %s\n' "$*" >&2
    exit 1
}

# xdo ARGS...: xdotool with a limit of time.
xdo() { timeout 20 xdotool "$@" || fail "xdotool $1 failed"; }

close_demo() {
    [ -n "$demo" ] || return 0
    kill "$demo" 2>/dev/null
    wait "$demo" 2>/dev/null
    rm -rf "${kept:?}"/* # With a recovery copy the next start would ask a question.
    demo=
}
trap 'close_demo; rm -rf "$kept"' EXIT

find_window() { timeout 10 xdotool search --onlyvisible --name 'NRVectorView' 2>/dev/null | tail -n 1; }

# open_demo [FILE]: starts the program and waits for its window; left, top_edge, width and height tell its place.
open_demo() {
    close_demo
    local tries
    for ((tries = 0; tries < 100; tries++)); do
        [ -n "$(find_window)" ] || break # the former demo has not ended yet
        sleep 0.1
    done
    "$NR_WITH_WINE" "$NR_DEMO" --lang zh "$@" >"$NR_OUT/demo.log" 2>&1 &
    demo=$!
    for ((tries = 0; tries < 150; tries++)); do
        window=$(find_window)
        [ -z "$window" ] || break
        kill -0 "$demo" 2>/dev/null || fail "the demo ended: $(cat "$NR_OUT/demo.log")"
        sleep 0.2
    done
    [ -n "$window" ] || fail "the demo showed no window"
    eval "$(timeout 10 xdotool getwindowgeometry --shell "$window")"
    left=$X top_edge=$Y width=$WIDTH height=$HEIGHT
    settle
}

picture_sum() { timeout 30 import -window root -depth 8 rgb:- 2>/dev/null | cksum; }

# Waits until two pictures of the screen in a row are the same, but not for long: a blinking caret may prevent that.
settle() {
    local tries before='' now
    for ((tries = 0; tries < 8; tries++)); do
        sleep 0.15
        now=$(picture_sum)
        [ "$now" != "$before" ] || return 0
        before=$now
    done
}

# shot NAME: a picture of the window with a little of the screen around it.
shot() {
    local file=$NR_OUT/$1.png
    settle
    timeout 30 import -window root -crop "$((width + 24))x$((height + 24))+$((left - 12))+$((top_edge - 12))" +repage \
        "$file" || fail "no picture $1"
    printf '%s\n' "$file"
}

# at X Y: the pointer to a place in thousandths of the window's width and height, in two steps so that it moves.
at() {
    local x=$((left + width * $1 / 1000)) y=$((top_edge + height * $2 / 1000))
    xdo mousemove --sync $((x - 3)) $((y - 2))
    xdo mousemove --sync "$x" "$y"
    sleep 0.1
}

click() { xdo click 1; settle; }

# press KEYS...: one after the other.
press() {
    local key
    for key in "$@"; do
        xdo key --clearmodifiers "$key"
        sleep 0.1
    done
}

sample() { printf 'Z:%s' "${top//\//\\}\\samples\\$1"; }

# --- a drawing: menu, a line with its rubber band, the line picked, its end taken

open_demo "${NR_FILE:-$(sample truss.nrv)}"
at 500 900
shot 1-drawing

press alt+d
shot 2-menu
press Escape Escape

press alt+d l
at 250 750
click
at 400 500
at 640 250
shot 3-rubber-band
click
at 800 850
# The middle of the new line: the first click selects it and shows its grips.
at 445 500
click
at 800 850
shot 4-selected-line

# The grip at its end, taken and held: the preview with the box for a typed distance.
at 640 250
click
at 720 330
shot 5-grip-edit
press Escape

# --- the parameters of a section, by the keyboard alone

open_demo
at 900 960
press Tab Tab
shot 6-parameters
xdo type --delay 30 500
press Return
shot 7-refused
press Escape
xdo type --delay 30 10
press Return
xdo type --delay 30 20
press Return
shot 8-changed

# --- the other samples

number=9
for name in mechanical_part texts; do
    [ -e "$top/samples/$name.nrv" ] || continue
    open_demo "$(sample "$name.nrv")"
    at 900 960
    shot "$number-${name/_/-}"
    number=$((number + 1))
done
exit 0
