#!/bin/bash
# Every header compiles alone, and twice in a row.
cmake --build "$NR_BUILD" --target header_checks -- -k 0 --quiet
