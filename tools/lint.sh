#!/bin/bash
# clang-tidy (.clang-tidy) and cppcheck (.cppcheck) over the sources that ship: ./test --lint [FILE...]
# Ends with 1 when there is a finding.
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1
. tools/env.sh
tools/packages.sh clang-tidy cppcheck || exit 1
files=("$@")
[ ${#files[@]} != 0 ] || files=({afx,kx,Source,render,capi}/*.cpp)
compiler=x86_64-w64-mingw32-g++-posix
gcc=$(dirname "$($compiler -print-libgcc-file-name)")/include/c++
flags=(-DUNICODE -D_UNICODE -DWINVER=0x0601 -D_WIN32_WINNT=0x0601 -D_WIN32_IE=0x0800 -DNOMINMAX -DSTRICT
    -DNRVECTORVIEW_BUILD -DNRAFX_BUILD -DNRKX_EXPORTS -I{Source,afx,kx,render,capi,capi/include})
headers=(-isystem "$gcc" -isystem "$gcc/x86_64-w64-mingw32" -isystem "$gcc/backward"
    -isystem /usr/x86_64-w64-mingw32/include)
found=0
say "clang-tidy"
# Its count of warnings in the system's headers goes to the other stream.
printf '%s\n' "${files[@]}" | xargs -P "$(nproc)" -I{} clang-tidy --quiet {} -- --target=x86_64-w64-mingw32 -std=c++17 \
    "${flags[@]}" "${headers[@]}" 2>/dev/null || found=1
say "cppcheck"
cppcheck --quiet --enable=warning,performance,portability --std=c++17 --platform=win64 --language=c++ -j "$(nproc)" \
    --inline-suppr --suppressions-list=.cppcheck --error-exitcode=1 "${flags[@]}" "${files[@]}" || found=1
[ $found = 0 ] && echo "nothing found in ${#files[@]} files"
exit $found
