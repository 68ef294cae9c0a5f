#!/bin/bash
# Every header and source is as clang-format would write it. Mend with: clang-format -i FILE
set -o pipefail
cd "${1:-$(dirname "${BASH_SOURCE[0]}")/../..}" || exit 1
folders=()
for folder in afx kx Source render capi demo tools bench tests samples; do
    [ ! -d "$folder" ] || folders+=("$folder")
done
[ ${#folders[@]} != 0 ] || exit 1
find "${folders[@]}" \( -name '*.h' -o -name '*.c' -o -name '*.cpp' \) -print0 |
    xargs -0 -r -n 8 -P "$(nproc)" clang-format --dry-run -Werror 2>&1
