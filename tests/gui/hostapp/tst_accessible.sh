#!/bin/bash
# Every control of the running program that can have the focus has a name for a screen reader:
# tst_accessible.sh SKYLET. It runs on a display and buses of its own.
set -euo pipefail
skylet=$1
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
readonly kSkipped=77
readonly kSeconds=100

for tool in Xvfb xdotool dbus-run-session; do
    command -v "$tool" >/dev/null || { echo "$tool is not installed"; exit "$kSkipped"; }
done
[ -e /usr/share/dbus-1/services/org.a11y.Bus.service ] || { echo "at-spi2-core is not installed"; exit "$kSkipped"; }
/usr/bin/python3 -c 'import gi; gi.require_version("Atspi", "2.0")' 2>/dev/null ||
    { echo "python3-gi or gir1.2-atspi-2.0 is not installed"; exit "$kSkipped"; }

folder=$(mktemp -d)
display=
cleanup() {
    [ -z "$display" ] || kill "$display" 2>/dev/null || true
    rm -rf "$folder"
}
trap cleanup EXIT

mkdir -m 700 "$folder/run" "$folder/home"
export HOME=$folder/home XDG_RUNTIME_DIR=$folder/run
mkfifo "$folder/number"
Xvfb -displayfd 5 -screen 0 1280x800x24 -nolisten tcp -noreset 5>"$folder/number" >"$folder/log" 2>&1 &
display=$!
read -r -t 20 number <"$folder/number" || { echo "Xvfb did not start"; cat "$folder/log"; exit 1; }
export DISPLAY=:$number
timeout "$kSeconds" dbus-run-session -- /usr/bin/python3 "$here/accessible_names.py" "$skylet"
