#!/bin/bash
# Runs one Windows program under Wine: with-wine.sh PROGRAM [ARGS...]; its exit code is the program's.
#   NR_WINEPREFIX  the prefix (default: build/wineprefix, as made by ./test)
#   NR_DISPLAY     the X display; "none" for none (default: the caller's DISPLAY)
#   NR_TIMEOUT     seconds until the program is ended, then the exit code is 124 (default 300)
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
. "$top/tools/house.sh"
house_wine_env
exec timeout -k 5 "${NR_TIMEOUT:-300}" "$HOUSE_WINE" "$@" </dev/null
