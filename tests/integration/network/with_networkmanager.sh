#!/bin/bash
# with_networkmanager.sh [--modem] COMMAND...
# Runs COMMAND where the real NetworkManager, on a system bus of its own, has connected the interface
# "wwan0" (10.79.0.2, default route). Its far end "cell" (10.79.0.1) is in a second network namespace.
# With --modem, wwan0 is the data port of a modem that a stand-in for ModemManager has, not connected yet.
# Everything is in namespaces that end with COMMAND, whose status this has; 77 where that is not possible.
# For COMMAND: DBUS_SYSTEM_BUS_ADDRESS; NETINFO_PEER, a process at the far end, so that
# "nsenter -n -t $NETINFO_PEER PROGRAM" runs there; NETINFO_SERVICES, a folder with bus.pid, nm.pid, mm.pid
# and the logs; NETINFO_STARTER, this script: "$NETINFO_STARTER --start bus|mm|nm" starts a service again.
set -euo pipefail

skip() { # REASON
    echo "SKIP: $1" >&2
    exit 77
}

enterNamespaces() { # COMMAND...
    local tool
    local -a namespaces=(--net --mount --pid --fork --kill-child --mount-proc)
    PATH=$PATH:/usr/sbin:/sbin
    for tool in NetworkManager nmcli dbus-daemon ip unshare nsenter; do
        command -v "$tool" >/dev/null || skip "$tool is not installed"
    done
    if [ "$1" = --modem ]; then
        /usr/bin/python3 -c 'import dbusmock' 2>/dev/null || skip "python3-dbusmock is not installed"
        # NetworkManager loads its modem part from a file of root's only, which a user's namespace has not.
        [ "$(id -u)" -eq 0 ] || skip "NetworkManager knows modems only when root runs it"
    fi
    [ "$(id -u)" -eq 0 ] || namespaces+=(--user --map-root-user)
    unshare "${namespaces[@]}" true 2>/dev/null || skip "namespaces are not allowed here"
    export PATH
    NETINFO_STARTER=$(realpath "$0")
    export NETINFO_STARTER
    exec unshare "${namespaces[@]}" bash "$0" --inside "$@" # killed, it takes everything with it
}

# NetworkManager keeps to these places; without udev it needs a /sys that cannot be written.
hideSystem() {
    if ! mount --make-rprivate / || ! mount -t sysfs -o ro sysfs /sys; then
        skip "/sys cannot be mounted here"
    fi
    NETINFO_SERVICES=$(mktemp -d)
    export NETINFO_SERVICES
    trap 'rm -rf "$NETINFO_SERVICES"' EXIT
    chmod 755 "$NETINFO_SERVICES" # other users may ask, too
    mount -t tmpfs tmpfs /run
    mount -t tmpfs tmpfs /var/lib/NetworkManager
    mount -t tmpfs tmpfs /etc/NetworkManager
}

writeConfiguration() {
    cat >/etc/NetworkManager/NetworkManager.conf <<-END
	[main]
	plugins=keyfile
	dns=none
	rc-manager=unmanaged
	auth-polkit=root-only
	no-auto-default=*
	hostname-mode=none
	systemd-resolved=false
	[connectivity]
	enabled=false
	END
    cat >"$NETINFO_SERVICES/bus.conf" <<-END
	<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
	 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
	<busconfig>
	  <type>system</type>
	  <listen>unix:path=$NETINFO_SERVICES/bus</listen>
	  <auth>EXTERNAL</auth>
	  <policy context="default">
	    <allow user="*"/>
	    <allow own="*"/>
	    <allow send_destination="*"/>
	    <allow receive_sender="*"/>
	  </policy>
	</busconfig>
	END
}

makeLink() {
    unshare --net sleep infinity &
    export NETINFO_PEER=$!
    ip link set lo up
    until [ "$(readlink "/proc/$NETINFO_PEER/ns/net")" != "$(readlink /proc/self/ns/net)" ]; do
        sleep 0.01
    done
    ip link add wwan0 type veth peer name cell netns "$NETINFO_PEER"
    nsenter -n -t "$NETINFO_PEER" ip addr add 10.79.0.1/24 dev cell
    nsenter -n -t "$NETINFO_PEER" ip link set cell up
}

fail() { # WORDS
    echo "error: $1" >&2
    tail -n 20 "$NETINFO_SERVICES"/*.log >&2
    exit 1
}

waitFor() { # COMMAND...
    local try
    for ((try = 0; try < 200; ++try)); do
        ! "$@" >/dev/null 2>&1 || return 0
        sleep 0.05
    done
    fail "still not true after ten seconds: $*"
}

logged() { # COMMAND...
    "$@" >>"$NETINFO_SERVICES/nmcli.log" 2>&1 || fail "failed: $*"
}

asksModemManager() {
    dbus-send --system --print-reply --dest=org.freedesktop.ModemManager1 /org/freedesktop/ModemManager1 \
        org.freedesktop.DBus.ObjectManager.GetManagedObjects
}

start() { # bus|mm|nm
    case "$1" in
    bus)
        rm -f "$NETINFO_SERVICES/bus"
        dbus-daemon --config-file="$NETINFO_SERVICES/bus.conf" --nofork --nopidfile --nosyslog \
            >>"$NETINFO_SERVICES/bus.log" 2>&1 &
        ;;
    mm)
        /usr/bin/python3 -m dbusmock --system --template "${NETINFO_STARTER%/*}/modemmanager_mock.py" \
            >>"$NETINFO_SERVICES/mm.log" 2>&1 &
        ;;
    nm) NetworkManager --debug >>"$NETINFO_SERVICES/nm.log" 2>&1 & ;; # in the foreground
    esac
    echo $! >"$NETINFO_SERVICES/$1.pid"
    case "$1" in
    bus) waitFor test -S "$NETINFO_SERVICES/bus" ;;
    mm) waitFor asksModemManager ;;
    nm) waitFor nmcli general ;;
    esac
}

connectEthernet() {
    logged nmcli device set wwan0 managed yes
    logged nmcli connection add type ethernet ifname wwan0 con-name cell \
        ipv4.method manual ipv4.addresses 10.79.0.2/24 ipv4.gateway 10.79.0.1 ipv6.method disabled
    logged nmcli --wait 10 connection up cell
}

hasModem() {
    nmcli -g TYPE device | grep -qx gsm
}

prepareModem() {
    waitFor hasModem
    logged nmcli connection add type gsm ifname '*' con-name cell apn internet autoconnect no ipv6.method disabled
}

startServices() { # [--modem]
    export DBUS_SYSTEM_BUS_ADDRESS=unix:path=$NETINFO_SERVICES/bus
    start bus
    if [ "${1:-}" = --modem ]; then
        start mm # first: NetworkManager may overlook one that comes later
        start nm
        prepareModem
    else
        start nm
        connectEthernet
    fi
}

case "${1:?usage: $0 [--modem] COMMAND...}" in
--start) start "$2" ;;
--inside)
    shift
    modem=
    if [ "$1" = --modem ]; then
        modem=$1
        shift
    fi
    hideSystem
    writeConfiguration
    makeLink
    startServices "$modem"
    "$@"
    ;;
*) enterNamespaces "$@" ;;
esac
