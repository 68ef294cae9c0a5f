#!/bin/bash
# Installs the packages that building and testing need (as root, on Debian or Ubuntu); otherwise names what is missing.
# packages.sh [PACKAGE...]: these as well.
packages=(wine wine64 xvfb xauth x11-utils xdotool imagemagick fonts-wqy-microhei g++-mingw-w64-x86-64-posix cmake
    ninja-build ccache libgtest-dev googletest clang-format clang lld llvm doxygen python3 librsvg2-bin ghostscript
    "$@")
if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    for program in x86_64-w64-mingw32-g++-posix cmake ninja python3 clang-format clang lld-link llvm-dlltool doxygen rsvg-convert gs \
        Xvfb xdpyinfo xdotool import /usr/lib/wine/wine64 /usr/src/googletest/CMakeLists.txt; do
        command -v "$program" >/dev/null || [ -e "$program" ] || missing+=" $program"
    done
    [ -n "$missing" ] || exit 0
    printf 'This is neither Debian nor Ubuntu. Please install the equivalents of these packages: %s\nNot found here:%s\n' \
        "${packages[*]}" "$missing" >&2
    exit 1
fi
missing=()
for package in "${packages[@]}"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
done
[ ${#missing[@]} != 0 ] || exit 0
if [ "$(id -u)" = 0 ]; then
    apt() { DEBIAN_FRONTEND=noninteractive timeout 1200 apt-get -q "$@" </dev/null; }
    echo "== installing ${missing[*]}"
    apt install -y --no-install-recommends "${missing[@]}" && exit 0
    apt update && apt install -y --no-install-recommends "${missing[@]}" && exit 0
fi
printf 'Missing packages. Install them with:\n  sudo apt-get update && sudo apt-get install %s\n' "${missing[*]}" >&2
exit 1
