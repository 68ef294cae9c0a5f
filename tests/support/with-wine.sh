#!/bin/bash
# Runs one Windows program under Wine: with-wine.sh PROGRAM [ARGS...]; its exit code is the program's.
#   NR_WINEPREFIX  the prefix (default: build/wineprefix, as made by ./test)
#   NR_DISPLAY     the X display; "none" for none (default: the caller's DISPLAY)
#   NR_TIMEOUT     seconds until the program is ended, then the exit code is 124 (default 300)
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
. "$top/tools/env.sh"
wine_environment
case $1 in
*_tests.exe)
    # On a busy machine Wine sometimes ends a program before its first instruction, at once and without output. A test
    # program prints first what it runs, so such a start is recognized. It is repeated once, with a message.
    log=$env_build/start.$$
    trap 'rm -f "$log"' EXIT
    begun=$SECONDS
    timeout -k 5 "${NR_TIMEOUT:-300}" "$WINELOADER" "$@" </dev/null >"$log" 2>&1
    code=$?
    if [ "$code" != 0 ] && [ ! -s "$log" ] && [ $((SECONDS - begun)) -le 2 ]; then
        echo "$(basename "$1") did not start (exit code $code); starting it once more"
        timeout -k 5 "${NR_TIMEOUT:-300}" "$WINELOADER" "$@" </dev/null >"$log" 2>&1
        code=$?
    fi
    cat "$log"
    exit "$code"
    ;;
esac
exec timeout -k 5 "${NR_TIMEOUT:-300}" "$WINELOADER" "$@" </dev/null
