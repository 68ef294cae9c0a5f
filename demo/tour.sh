#!/bin/bash
# Drives the demo with a real pointer and keyboard on the given display and takes pictures of what a user sees.
# Its surroundings come from ./run: DISPLAY, NR_WITH_WINE, NR_DEMO, NR_FILE (may be empty), NR_OUT.
# Prints the path of each picture, a line each; the exit code is 1 when a step did not come off.

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
: "${NR_WITH_WINE:?}" "${NR_DEMO:?}" "${NR_OUT:?}" "${DISPLAY:?}"
if [ -z "${NR_FILE:-}" ]; then
    sample=$top/samples/truss.nrv
    NR_FILE=Z:${sample//\//\\}
fi

demo=
window=

fail() {
    printf 'tour: %s\n' "$*" >&2
    exit 1
}

# xdo ARGS...: xdotool, which never hangs here for long.
xdo() { timeout 20 xdotool "$@" || fail "xdotool $1 failed"; }

# What is still open is asked to close, then ended.
finish() {
    [ -n "$demo" ] || return
    kill "$demo" 2>/dev/null
    wait "$demo" 2>/dev/null
}
trap finish EXIT

# Time for the program to take the input and paint.
settle() { sleep "${1:-0.4}"; }

shot() {
    local file=$NR_OUT/$1.png
    settle
    timeout 30 import -window root "$file" || fail "no picture $1"
    printf '%s\n' "$file"
}

# at X Y: the pointer to a place in thousandths of the window's width and height, in two steps so that it moves.
at() {
    local x=$((left + width * $1 / 1000)) y=$((top_edge + height * $2 / 1000))
    xdo mousemove --sync $((x - 3)) $((y - 2))
    xdo mousemove --sync "$x" "$y"
    settle 0.2
}

click() { xdo click 1; settle 0.2; }

# menu LETTERS...: the menu bar by its mnemonics.
menu() {
    xdo key --clearmodifiers "alt+$1"
    settle 0.3
    shift
    local letter
    for letter in "$@"; do
        xdo key "$letter"
        settle 0.3
    done
}

"$NR_WITH_WINE" "$NR_DEMO" "$NR_FILE" >"$NR_OUT/demo.log" 2>&1 &
demo=$!

for ((tries = 0; tries < 150; tries++)); do
    window=$(timeout 10 xdotool search --onlyvisible --name 'NRVectorView' 2>/dev/null | tail -n 1)
    [ -z "$window" ] || break
    kill -0 "$demo" 2>/dev/null || fail "the demo ended: $(cat "$NR_OUT/demo.log")"
    sleep 0.2
done
[ -n "$window" ] || fail "the demo showed no window"
eval "$(timeout 10 xdotool getwindowgeometry --shell "$window")"
left=$X top_edge=$Y width=$WIDTH height=$HEIGHT

at 500 900
shot 1-drawing

menu d
shot 2-menu
xdo key Escape
settle 0.3
xdo key Escape
settle 0.3

# A line over the drawing: its rubber band on the way, then the line itself, picked.
menu d l
at 250 750
click
at 400 500
at 640 250
shot 3-rubber-band
click
at 800 850
settle
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
xdo key Escape
settle 0.3
exit 0
