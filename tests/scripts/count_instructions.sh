#!/bin/bash
# Counts the instructions of a piece of work and compares them with the stored figure:
# count_instructions.sh PROGRAM FUNCTION FIGURES. PROGRAM does in FUNCTION as many pieces as it is told,
# and prints what the figure depends on besides, "Qt 6.4.2" or "GCC 12". More than 10 % above the figure
# fails; so does a figure that is 10 % too high, which would hide the next slow-down.
set -euo pipefail
program=$1
function=$2
figures=$3
readonly kPieces=200
readonly kSkipped=77

command -v valgrind >/dev/null || { echo "valgrind is not installed"; exit "$kSkipped"; }
grep -qw avx2 /proc/cpuinfo || { echo "the figures are for processors with AVX2"; exit "$kSkipped"; }

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
QT_HASH_SEED=0 valgrind --tool=callgrind --callgrind-out-file="$folder/out" --collect-atstart=no \
    --toggle-collect="$function" "$program" "$kPieces" >"$folder/version" 2>"$folder/log" || {
    cat "$folder/log"
    exit 1
}
version=$(head -n 1 "$folder/version")
collected=$(sed -n 's/^.*Collected : \([0-9]*\)$/\1/p' "$folder/log")
((collected > 0)) || { echo "nothing was counted"; cat "$folder/log"; exit 1; }
measured=$((collected / kPieces))
stored=$(sed -n "s/^${version##* } //p" "$figures")
echo "$version: $measured instructions in $function, stored ${stored:-none}"
[ -n "$stored" ] || { echo "add \"${version##* } $measured\" to the stored figures"; exit "$kSkipped"; }
((measured * 10 <= stored * 11)) || { echo "slower than the stored figure"; exit 1; }
((measured * 11 >= stored * 10)) || { echo "faster: store the new figure"; exit 1; }
