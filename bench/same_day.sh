#!/bin/bash
# same_day.sh BUILD-FOLDER
# What the SDK, vnStat's daemon and the kernel say of the same traffic of the same day: a link between two
# network namespaces, 300 MB one way and 150 MB the other way over TCP. Both programs run beside each
# other, with a folder of their own. Fails when the SDK's figures are not the kernel's. Needs root.
set -euo pipefail

readonly kDownload=300000000
readonly kUpload=150000000
readonly kBytesPerSecond=50000000 # the daemon refuses what is faster than it believes the link to be
readonly kSkipped=77

skip() { # REASON
    echo "SKIP: $1" >&2
    exit "$kSkipped"
}

enterNamespace() { # BUILD-FOLDER
    local tool
    local -a namespaces=(--net --mount --pid --fork --kill-child --mount-proc)
    PATH=$PATH:/usr/sbin:/sbin
    for tool in ip unshare nsenter vnstat vnstatd python3; do
        command -v "$tool" >/dev/null || skip "$tool is not installed"
    done
    [ "$(id -u)" -eq 0 ] || skip "only root may do this"
    export PATH
    unshare "${namespaces[@]}" bash -c 'mount -t sysfs -o ro sysfs /sys &&
        ip link add va type veth peer name vb' 2>/dev/null || skip "namespaces are not allowed here"
    exec unshare "${namespaces[@]}" bash "$0" --inside "$1"
}

# Without IPv6 and with fixed neighbours nothing flows but what is sent.
makeLink() {
    ip link set lo up
    unshare --net sleep infinity &
    there=$!
    until [ "$(readlink "/proc/$there/ns/net")" != "$(readlink /proc/self/ns/net)" ]; do sleep 0.1; done
    ip link add va address 02:00:00:00:00:01 type veth peer name vb address 02:00:00:00:00:02 netns "$there"
    sysctl -qw net.ipv6.conf.va.disable_ipv6=1
    nsenter -n -t "$there" sysctl -qw net.ipv6.conf.vb.disable_ipv6=1
    ip addr add 10.83.0.1/24 dev va
    ip link set va up
    nsenter -n -t "$there" ip addr add 10.83.0.2/24 dev vb
    nsenter -n -t "$there" ip link set vb up
    ip neigh add 10.83.0.2 lladdr 02:00:00:00:00:02 dev va nud permanent
    nsenter -n -t "$there" ip neigh add 10.83.0.1 lladdr 02:00:00:00:00:01 dev vb nud permanent
    ip route add default via 10.83.0.2
}

readonly kTransfer='
import socket, sys, time
listens, address, total, rate = sys.argv[1] == "receive", sys.argv[2], int(sys.argv[3]), int(sys.argv[4])
if listens:
    server = socket.create_server((address, 5001))
    print("listening", flush=True)
    peer, _ = server.accept()
    while total > 0:
        total -= len(peer.recv(65536)) or sys.exit("cut")
else:
    peer = socket.create_connection((address, 5001))
    began, sent = time.monotonic(), 0
    while sent < total:
        sent += peer.send(bytes(min(65536, total - sent)))
        time.sleep(max(0, began + sent / rate - time.monotonic()))
    peer.shutdown(socket.SHUT_WR)
    peer.recv(1)
'

transfer() { # down|up BYTES
    local receiver
    local -a far=(nsenter -n -t "$there") here=()
    local -a from=("${far[@]}") to=("${here[@]}")
    local address=10.83.0.1
    if [ "$1" = up ]; then
        from=("${here[@]}") to=("${far[@]}") address=10.83.0.2
    fi
    : >"$folder/receiver"
    "${to[@]}" python3 -c "$kTransfer" receive "$address" "$2" 0 >>"$folder/receiver" &
    receiver=$!
    until grep -q listening "$folder/receiver"; do sleep 0.1; done
    "${from[@]}" python3 -c "$kTransfer" send "$address" "$2" "$kBytesPerSecond"
    wait "$receiver"
}

kernelCounters() {
    echo "$(cat /sys/class/net/va/statistics/rx_bytes) $(cat /sys/class/net/va/statistics/tx_bytes)"
}

startPeer() {
    mkdir "$folder/peer"
    cat >"$folder/peer.conf" <<-END
	DatabaseDir "$folder/peer"
	PollInterval 2
	UpdateInterval 2
	SaveInterval 1
	OfflineSaveInterval 30
	DaemonUser ""
	DaemonGroup ""
	END
    vnstatd --nodaemon --config "$folder/peer.conf" >"$folder/peer.log" 2>&1 &
    peer=$!
}

tellTable() {
    local down up peerDown peerUp before after
    read -r down up < <(sed -n 's/^today //p' "$folder/velq.log")
    read -r peerDown peerUp < <(vnstat --config "$folder/peer.conf" -i va --json d | python3 -c '
import json, sys
day = json.load(sys.stdin)["interfaces"][0]["traffic"]["day"][-1]
print(day["rx"], day["tx"])')
    read -r -a before <<<"$1"
    read -r -a after <<<"$2"
    printf '| | download | upload |\n|---|---|---|\n'
    printf '| sent over TCP | %d | %d |\n' "$kDownload" "$kUpload"
    printf '| kernel, end less begin | %d | %d |\n' $((after[0] - before[0])) $((after[1] - before[1]))
    printf '| SDK, daily report | %d | %d |\n' "$down" "$up"
    printf '| vnStat, day (--json) | %d | %d |\n' "$peerDown" "$peerUp"
    printf '| kernel, since the link was made | %d | %d |\n' "${after[0]}" "${after[1]}"
    vnstat --config "$folder/peer.conf" -i va -d 1 --style 0
    ((down == after[0] - before[0] && up == after[1] - before[1]))
}

compare() { # BUILD-FOLDER
    local before after user
    mount -t sysfs -o ro sysfs /sys # that of this namespace
    folder=$(mktemp -d)
    trap 'rm -rf "$folder"' EXIT
    makeLink
    transfer down 10000000 # before anybody counts
    sleep 1
    before=$(kernelCounters)
    VELQ_DATA_DIR=$folder/velq DBUS_SYSTEM_BUS_ADDRESS=unix:path=$folder/bus \
        "$1/tests/velq_user" run >"$folder/velq.log" &
    user=$!
    startPeer
    sleep 5 # both have their first reading
    transfer down "$kDownload"
    transfer up "$kUpload"
    sleep 5 # and their last one
    after=$(kernelCounters)
    kill "$user" "$peer" # both write what is pending
    wait "$user" "$peer"
    tellTable "$before" "$after"
}

if [ "${1:-}" = --inside ]; then
    compare "$2"
else
    [ -x "${1:?a build folder}/tests/velq_user" ] || { echo "build velq_user first"; exit 64; }
    enterNamespace "$(realpath "$1")"
fi
