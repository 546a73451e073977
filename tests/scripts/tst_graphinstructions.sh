#!/bin/bash
# Counts the instructions of a trend graph's frame and compares them with the stored figure:
# tst_graphinstructions.sh GRAPH_FRAMES FIGURES. More than 10 % above it fails; so does a figure
# that is 10 % too high, which would hide the next slow-down.
set -euo pipefail
program=$1
figures=$2
readonly kFrames=200
readonly kSkipped=77

command -v valgrind >/dev/null || { echo "valgrind is not installed"; exit "$kSkipped"; }
grep -qw avx2 /proc/cpuinfo || { echo "the figures are for processors with AVX2"; exit "$kSkipped"; }

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
QT_HASH_SEED=0 valgrind --tool=callgrind --callgrind-out-file="$folder/out" --collect-atstart=no \
    --toggle-collect=measuredFrames "$program" "$kFrames" >"$folder/version" 2>"$folder/log" || {
    cat "$folder/log"
    exit 1
}
version=$(sed -n 's/^Qt //p' "$folder/version")
collected=$(sed -n 's/^.*Collected : \([0-9]*\)$/\1/p' "$folder/log")
((collected > 0)) || { echo "nothing was counted"; cat "$folder/log"; exit 1; }
measured=$((collected / kFrames))
stored=$(sed -n "s/^$version //p" "$figures")
echo "Qt $version: $measured instructions a frame, stored ${stored:-none}"
[ -n "$stored" ] || { echo "add \"$version $measured\" to the stored figures"; exit "$kSkipped"; }
((measured * 10 <= stored * 11)) || { echo "slower than the stored figure"; exit 1; }
((measured * 11 >= stored * 10)) || { echo "faster: store the new figure"; exit 1; }
