# Read by ./test --bench: builds the benchmark, runs it, prints its table and compares its ratios with the stored ones.
begin
build release nrvv_bench nrvv_demo minimal_host || exit 1
start_display && make_prefix && start_wine "$env_build/release/bin/keepalive.exe" || exit 1
# What a user's desktop has. Without it Wine looks for font settings in files at each selection of a font.
DISPLAY=$NR_DISPLAY xprop -root -f RESOURCE_MANAGER 8s -set RESOURCE_MANAGER $'Xft.antialias:\t1\nXft.rgba:\tnone\n'
step 3000 tests/support/with-wine.sh "$env_build/release/bin/nrvv_bench.exe" --json "Z:$env_build/bench.json" \
    "${bench_options[@]}" || exit 1
python3 -B bench/compare.py bench/baseline.json "$env_build/bench.json"
exit
