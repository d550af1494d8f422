#!/bin/sh
# Prints the line coverage of each layer after a run of the tests in a coverage build folder.
set -eu
build=$1
# Programs that a test kills leave unfinished profiles, which are left out.
llvm-profdata-19 merge -failure-mode=all -sparse -o "$build/tests.profdata" "$build"/reports/*.profraw
objects=""
for program in "$build"/bin/*_test "$build"/lib/*.so; do
    objects="$objects -object $program"
done
layers=$(sed -n 's/^add_subdirectory(\(.*\))$/\1/p' src/CMakeLists.txt)
for layer in $layers; do
    llvm-cov-19 export "$build/bin/velmora" $objects -summary-only -instr-profile "$build/tests.profdata" \
        -sources "$PWD/src/$layer" |
        python3 -c "
import json, sys
totals = json.load(sys.stdin)['data'][0]['totals']
lines, branches = totals['lines'], totals['branches']
print(f\"coverage {sys.argv[1]:9} {lines['percent']:5.1f} % of {lines['count']} lines,\"
      f\" {branches['percent']:5.1f} % of {branches['count']} branches\")" "$layer"
done
