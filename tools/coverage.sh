#!/bin/bash
# Which lines of Source/ the suites run: ./test --coverage [NAME...]. Prints the share of each source, and every block that
# no test ran; build/coverage/results/coverage.txt keeps it.
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1
. tools/env.sh
pattern=$(IFS='|'; echo "${*:-.}")
folder=$env_build/coverage

begin
say "building coverage"
build coverage all || die "the build failed"
start_display && make_prefix && start_wine "$folder/bin/keepalive.exe" || die "no Wine on a virtual display"
# What earlier runs have counted.
find "$folder" -name '*.gcda' -delete
rm -rf "$folder/results"
mkdir -p "$folder/results"
say "testing coverage"
# One at a time: two programs that end at once would lose counts of each other.
step 3000 ctest --test-dir "$folder" -j 1 --no-label-summary --output-on-failure -R "$pattern" | tail -n 40
python3 -B tools/coverage.py "$folder" | tee "$folder/results/coverage.txt"
