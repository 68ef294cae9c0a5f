# What ./run and ./test share: builds, the Wine prefix, the virtual display, and ending all of it again.
# Sourced by bash. Everything it makes is under build/.

env_top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
env_build=$env_top/build

say() { printf '== %s\n' "$*"; }
die() { printf '%s\n' "$*" >&2; exit 1; }

# --- a run from its beginning to its end

# begin: installs missing packages, and waits for another run in this tree, which would use the same prefix and folders.
begin() {
    unset NR_WINEPREFIX NR_DISPLAY
    "$env_top/tools/packages.sh" || exit 1
    trap end EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
    mkdir -p "$env_build"
    exec 9>"$env_build/.lock"
    flock -n 9 && return
    say "another run is using this tree; waiting for its end"
    flock -w 1800 9 || die "the other run did not end within half an hour"
}

# Ends what was started here, and nothing else.
end() {
    if [ -n "$env_step" ]; then
        kill -TERM -- "-$env_step" 2>/dev/null || kill -TERM "$env_step" 2>/dev/null
        wait "$env_step" 2>/dev/null
    fi
    [ -z "$env_background" ] || kill "$env_background" 2>/dev/null
    [ -z "$env_wine" ] || { wineserver -k; wineserver -w; }
    [ -z "$env_xvfb" ] || kill "$env_xvfb" 2>/dev/null
}

# step SECONDS COMMAND...: runs it in a process group of its own, so that an interrupted run can end all of it.
step() {
    local seconds=$1 code
    shift
    timeout -k 10 "$seconds" "$@" </dev/null 9>&- &
    env_step=$!
    wait "$env_step"
    code=$?
    env_step=
    [ $code != 124 ] || printf 'ended after %s s: %s\n' "$seconds" "$*"
    return $code
}

# build PRESET [TARGETS...]
build() {
    local preset=$1 folder=$env_build/$1
    shift
    export CCACHE_DIR=${CCACHE_DIR:-$env_build/ccache} CCACHE_MAXSIZE=${CCACHE_MAXSIZE:-2G}
    export CCACHE_SLOPPINESS=pch_defines,time_macros # or it keeps nothing that reads a precompiled header
    mkdir -p "$folder"
    if [ ! -e "$folder/build.ninja" ]; then
        step 300 cmake -S "$env_top" --preset "$preset" >"$folder/configure.log" 2>&1 ||
            { cat "$folder/configure.log"; return 1; }
    fi
    step 3000 cmake --build "$folder" -j "$(nproc)" ${1:+--target "$@"} -- --quiet
}

# --- the virtual display and Wine

# start_display: a display that ends with this shell, and NR_DISPLAY with its number.
start_display() {
    local number=$env_build/display tries
    : >"$number"
    setpriv --pdeathsig TERM Xvfb -displayfd 8 -screen 0 1280x1024x24 -nolisten tcp -noreset -fbdir "$env_build" \
        8>"$number" >"$number.log" 2>&1 </dev/null 9>&- &
    env_xvfb=$!
    for ((tries = 0; tries < 200; tries++)); do
        NR_DISPLAY=:$(cat "$number")
        [ "$NR_DISPLAY" = : ] || ! DISPLAY=$NR_DISPLAY xdpyinfo >/dev/null 2>&1 || { export NR_DISPLAY; return 0; }
        kill -0 "$env_xvfb" 2>/dev/null || break
        sleep 0.05
    done
    cat "$number.log"
    return 1
}

# wine_environment: what every Windows program finds. Home and the server's own folder are in the prefix, so that nothing
# is written elsewhere.
# All of them stay on one processor, and the server with them: a program waits for its server hundreds of thousands of
# times, and to wake it on another, idle processor takes longer than all else (six times, measured with real windows).
wine_environment() {
    local processors
    processors=$(taskset -cp "$BASHPID" 2>/dev/null) && processors=${processors##*: } &&
        taskset -cp "${processors%%[,-]*}" "$BASHPID" >/dev/null 2>&1
    export WINEPREFIX=${NR_WINEPREFIX:-$env_build/wineprefix} WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all}
    export WINELOADER=/usr/lib/wine/wine64 WINESERVER=/usr/lib/wine/wineserver64
    export WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d;winedbg.exe=d'
    export LANG=C.UTF-8 LC_ALL=C.UTF-8
    export HOME=$WINEPREFIX/home XDG_CACHE_HOME=$WINEPREFIX/home/cache XDG_CONFIG_HOME=$WINEPREFIX/home/config
    export TMPDIR=$HOME/tmp
    mkdir -p "$TMPDIR"
    case ${NR_DISPLAY:-} in
        '') ;;
        none) unset DISPLAY ;;
        *) export DISPLAY=$NR_DISPLAY ;;
    esac
}

# quiet_wine SECONDS ARGS...: runs Wine without output, and with no pipe that its services would keep open.
quiet_wine() { (wine_environment; exec timeout -k 5 "$1" "$WINELOADER" "${@:2}" >/dev/null 2>&1 </dev/null 9>&-); }
wineserver() { (wine_environment; exec timeout -k 5 60 "$WINESERVER" "$@" >/dev/null 2>&1 </dev/null 9>&-); }

# make_prefix [MANAGED]: makes the prefix once, without Mono, Gecko, menus and crash dialog. The drawing's default face is
# mapped to an installed one under both its names (or dialog captions are boxes), which also lends its Chinese characters
# to the face that replaces all others, as Windows links fonts. MANAGED is N where no window manager runs, as on the
# virtual display: windows are then placed where their programs put them, at once.
make_prefix() {
    local prefix=${NR_WINEPREFIX:-$env_build/wineprefix} font='WenQuanYi Micro Hei'
    local fonts='HKCU\Software\Wine\Fonts\Replacements'
    local links='HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink'
    [ ! -e "$prefix/made-4" ] || return 0
    say "making the Wine prefix"
    wineserver -k
    rm -rf "$prefix"
    mkdir -p "$prefix/home"
    quiet_wine 180 wineboot -i && wineserver -w &&
        quiet_wine 60 reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d "${1:-N}" /f &&
        quiet_wine 60 reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f &&
        quiet_wine 60 reg add "$fonts" /v SimSun /d "$font" /f &&
        quiet_wine 60 reg add "$fonts" /v 宋体 /d "$font" /f &&
        quiet_wine 60 reg add "$links" /v 'DejaVu Sans' /t REG_MULTI_SZ /d "wqy-microhei.ttc,$font" /f || return 1
    wineserver -w
    # Window buttons are drawn with Marlett. Only the file is taken: its package also brings a caption face without Chinese.
    (cd "$prefix" && timeout 60 apt-get -q download fonts-wine && dpkg-deb --fsys-tarfile fonts-wine_*.deb |
        tar -xO ./usr/share/wine/fonts/marlett.ttf >drive_c/windows/Fonts/marlett.ttf) >/dev/null 2>&1 </dev/null 9>&- ||
        say "no font for window buttons: they will show digits"
    touch "$prefix/made-4"
}

# start_wine: a server that stays, its services with no pipe of ours, and a hidden window that holds the desktop open.
start_wine() {
    wineserver -k # what an interrupted run left
    wineserver -w
    env_wine=1
    wineserver -p
    quiet_wine 120 wineboot || return 1
    quiet_wine infinity "$1" &
}
