# What ./run and ./test share: packages, builds, the Wine prefix, the virtual display, and ending all of it again.
# Sourced by bash. Everything it makes lies under build/.

HOUSE_TOP=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
HOUSE_BUILD=$HOUSE_TOP/build
HOUSE_WINE=/usr/lib/wine/wine64
HOUSE_PACKAGES=(wine wine64 xvfb xauth x11-utils xdotool imagemagick fonts-wqy-microhei librsvg2-bin
    g++-mingw-w64-x86-64-posix cmake ninja-build ccache libgtest-dev googletest clang-format python3)

house_say() { printf '== %s\n' "$*"; }
house_die() { printf '%s\n' "$*" >&2; exit 1; }

# --- packages

house_missing_packages() {
    local package
    for package in "${HOUSE_PACKAGES[@]}"; do
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || printf '%s ' "$package"
    done
}

house_packages() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        house_packages_elsewhere
        return
    fi
    local missing
    missing=$(house_missing_packages)
    [ -n "$missing" ] || return 0
    if [ "$(id -u)" != 0 ]; then
        house_die "Missing packages: $missing
Install them with: sudo apt-get install $missing"
    fi
    house_say "installing $missing"
    # shellcheck disable=SC2086 # a list of words
    house_apt install -y --no-install-recommends $missing ||
        { house_apt update && house_apt install -y --no-install-recommends $missing; } ||
        house_die "Could not install: $missing
Try: apt-get update && apt-get install $missing"
}

house_apt() { DEBIAN_FRONTEND=noninteractive timeout 1200 apt-get -q "$@" </dev/null; }

# No Debian: nothing is installed, but what is missing is named.
house_packages_elsewhere() {
    local missing='' program
    for program in x86_64-w64-mingw32-g++-posix cmake ninja python3 clang-format Xvfb xdpyinfo xdotool import \
        "$HOUSE_WINE" /usr/src/googletest/CMakeLists.txt; do
        command -v "$program" >/dev/null || [ -e "$program" ] || missing="$missing $program"
    done
    [ -z "$missing" ] || house_die "This needs Debian or Ubuntu, or by hand what stands there as: ${HOUSE_PACKAGES[*]}
Not found here:$missing"
}

# --- one at a time

# Two runs in one tree would share prefix and build folders: the second waits.
house_lock() {
    mkdir -p "$HOUSE_BUILD"
    exec 9>"$HOUSE_BUILD/.lock"
    if ! flock -n 9; then
        house_say "another run is going on in this tree; waiting for its end"
        flock -w 1800 9 || house_die "the other run did not end within half an hour"
    fi
}

house_unlock() { exec 9>&-; }

# --- steps that can be broken off

HOUSE_STEP=

# house_step SECONDS COMMAND...: runs it in a process group of its own, so that house_stop can end all of it.
house_step() {
    local seconds=$1
    shift
    timeout -k 10 "$seconds" "$@" </dev/null 9>&- &
    HOUSE_STEP=$!
    wait "$HOUSE_STEP"
    local code=$?
    HOUSE_STEP=
    [ $code != 124 ] || printf 'broken off after %s s: %s\n' "$seconds" "$*"
    return $code
}

# --- building

# house_build PRESET [TARGETS...]
house_build() {
    local preset=$1 folder=$HOUSE_BUILD/$1
    shift
    export CCACHE_DIR=$HOUSE_BUILD/ccache CCACHE_MAXSIZE=1G
    mkdir -p "$folder"
    if [ ! -e "$folder/build.ninja" ]; then
        house_step 300 cmake -S "$HOUSE_TOP" --preset "$preset" >"$folder/configure.log" 2>&1 ||
            { cat "$folder/configure.log"; return 1; }
    fi
    house_step 3000 cmake --build "$folder" -j "$(nproc)" ${1:+--target "$@"} -- --quiet
}

# --- the display

HOUSE_XVFB=

house_display() {
    # One that an interrupted run left behind.
    local old
    old=$(cat "$HOUSE_BUILD/xvfb.pid" 2>/dev/null)
    if [ -n "$old" ] && grep -qa "^Xvfb.*$HOUSE_BUILD/xvfb" "/proc/$old/cmdline" 2>/dev/null; then
        kill "$old"
    fi
    mkdir -p "$HOUSE_BUILD/xvfb"
    : >"$HOUSE_BUILD/xvfb/number"
    Xvfb -displayfd 8 -screen 0 1280x1024x24 -nolisten tcp -noreset -fbdir "$HOUSE_BUILD/xvfb" \
        8>"$HOUSE_BUILD/xvfb/number" >"$HOUSE_BUILD/xvfb/log" 2>&1 </dev/null 9>&- &
    HOUSE_XVFB=$!
    echo "$HOUSE_XVFB" >"$HOUSE_BUILD/xvfb.pid"
    local tries number
    for ((tries = 0; tries < 200; tries++)); do
        number=$(cat "$HOUSE_BUILD/xvfb/number")
        if [ -n "$number" ] && DISPLAY=:$number xdpyinfo >/dev/null 2>&1; then
            export NR_DISPLAY=:$number
            return 0
        fi
        kill -0 "$HOUSE_XVFB" 2>/dev/null || break
        sleep 0.05
    done
    cat "$HOUSE_BUILD/xvfb/log"
    return 1
}

# --- Wine

# The environment of every Windows program. Home and the server's own folder lie in the prefix, so that nothing is
# written elsewhere.
# All of them stay on one processor, and the server with them: a program waits for its server hundreds of thousands of
# times, and to wake it on another, idle processor takes longer than all else (six times, measured with real windows).
house_wine_env() {
    local processors
    processors=$(taskset -cp "$BASHPID" 2>/dev/null) && processors=${processors##*: } &&
        taskset -cp "${processors%%[,-]*}" "$BASHPID" >/dev/null 2>&1
    export WINEPREFIX=${NR_WINEPREFIX:-$HOUSE_BUILD/wineprefix} WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all}
    export WINELOADER=$HOUSE_WINE WINESERVER=/usr/lib/wine/wineserver64
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

# house_wine SECONDS ARGS...: quiet, with no pipe in its hands.
house_wine() {
    local seconds=$1
    shift
    (house_wine_env; exec timeout -k 5 "$seconds" "$HOUSE_WINE" "$@" >/dev/null 2>&1 </dev/null 9>&-)
}

house_wineserver() { (house_wine_env; exec timeout -k 5 60 "$WINESERVER" "$@" >/dev/null 2>&1 </dev/null 9>&-); }

# house_prefix [MANAGED]: makes the prefix once: no Mono, no Gecko, no menus, no crash dialog, and the drawing's default
# face mapped to an installed one (under both its names, or dialog captions stay boxes), which also lends its Chinese
# characters to the face that stands for all others, as Windows links fonts. MANAGED is N where no window
# manager runs, as on the virtual display: windows then stand where their programs put them, at once.
house_prefix() {
    local prefix=${NR_WINEPREFIX:-$HOUSE_BUILD/wineprefix}
    [ ! -e "$prefix/house-made-3" ] || return 0
    house_say "making the Wine prefix"
    house_wineserver -k
    rm -rf "$prefix"
    mkdir -p "$prefix/home"
    house_wine 180 wineboot -i || return 1
    house_wineserver -w
    local fonts='HKCU\Software\Wine\Fonts\Replacements'
    house_wine 60 reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d "${1:-N}" /f &&
        house_wine 60 reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f &&
        house_wine 60 reg add "$fonts" /v SimSun /d 'WenQuanYi Micro Hei' /f &&
        house_wine 60 reg add "$fonts" /v 宋体 /d 'WenQuanYi Micro Hei' /f &&
        house_wine 60 reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink' /v 'DejaVu Sans' \
            /t REG_MULTI_SZ /d 'wqy-microhei.ttc,WenQuanYi Micro Hei' /f || return 1
    house_wineserver -w
    house_caption_font "$prefix/drive_c/windows/Fonts" || house_say "no caption font: window buttons will show digits"
    touch "$prefix/house-made-3"
}

# house_caption_font FOLDER: the one font that window buttons and menu arrows are drawn with. Its package is not
# installed whole: it also brings a face for captions that knows no Chinese, and takes precedence there.
house_caption_font() {
    local file=marlett.ttf inside=usr/share/wine/fonts folder=$HOUSE_BUILD/caption-font
    if [ -e "/$inside/$file" ]; then
        cp "/$inside/$file" "$1/"
        return
    fi
    command -v apt-get >/dev/null && command -v dpkg-deb >/dev/null && command -v tar >/dev/null || return 1
    rm -rf "$folder"
    mkdir -p "$folder" && (
        cd "$folder" &&
            timeout -k 5 60 apt-get -q download fonts-wine >/dev/null 2>&1 </dev/null 9>&- &&
            dpkg-deb --fsys-tarfile fonts-wine_*.deb | tar -xO "./$inside/$file" >"$file" && [ -s "$file" ] &&
            cp "$file" "$1/"
    )
    local code=$?
    rm -rf "$folder"
    return $code
}

HOUSE_WINE_STARTED=

# house_start_wine [KEEPALIVE]: a server that stays, its services with no pipe of ours, and a window to hold the desktop.
house_start_wine() {
    house_wineserver -k # what an interrupted run left behind
    house_wineserver -w
    HOUSE_WINE_STARTED=1
    house_wineserver -p
    house_wine 120 wineboot || return 1
    [ -z "${1:-}" ] || (house_wine_env; exec "$HOUSE_WINE" "$1" >/dev/null 2>&1 </dev/null 9>&-) &
}

# Ends what was started here, and nothing else. Safe to call twice.
house_stop() {
    if [ -n "$HOUSE_STEP" ]; then
        kill -TERM -- "-$HOUSE_STEP" 2>/dev/null || kill -TERM "$HOUSE_STEP" 2>/dev/null
        wait "$HOUSE_STEP" 2>/dev/null
        HOUSE_STEP=
    fi
    if [ -n "$HOUSE_WINE_STARTED" ]; then
        house_wineserver -k
        house_wineserver -w
        HOUSE_WINE_STARTED=
    fi
    if [ -n "$HOUSE_XVFB" ]; then
        kill "$HOUSE_XVFB" 2>/dev/null
        wait "$HOUSE_XVFB" 2>/dev/null
        HOUSE_XVFB=
        rm -f "$HOUSE_BUILD/xvfb.pid"
    fi
}
