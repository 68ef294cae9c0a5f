#!/bin/bash
# Which lines of Source/ the suites run: ./test --coverage [NAME...]. build/coverage/results/coverage.txt keeps what it
# prints. Ends with 1 where too few lines ran, or others than tools/uncovered.txt says did not.
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
export NR_ROUNDS=1500 # mutated streams a suite: this build is slow
step 3000 ctest --test-dir "$folder" -j 1 --no-label-summary --output-on-failure -R "$pattern" | tail -n 40
set -o pipefail
python3 -B tools/coverage.py "$folder" | tee "$folder/results/coverage.txt"
