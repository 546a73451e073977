# shellcheck shell=bash
# What scripts/run, scripts/test and .ci/run share: packages, configuring, building, testing.
# Sourced by scripts that have set -euo pipefail.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)

# Group, Debian package (the same names in 12 and 13), what it provides.
readonly kPackages="\
program|g++|a C++17 compiler, GCC 12 or later, with its sanitizer run-time libraries
program|cmake|CMake 3.25 or later
program|ninja-build|the build tool Ninja
program|pkg-config|pkg-config
program|qt6-base-dev|Qt 6.4 or later: Core, Gui, Widgets, Test
program|qt6-tools-dev|Qt 6 LinguistTools for CMake
program|qt6-l10n-tools|Qt 6 lrelease, which compiles the translations
program|libcli11-dev|CLI11, command lines
program|libmnl-dev|libmnl, messages to and from the kernel
program|nlohmann-json3-dev|JSON for Modern C++
program|libsqlite3-dev|SQLite 3
program|libsystemd-dev|sd-bus, messages to and from NetworkManager and ModemManager
program|fonts-dejavu-core|a font that the pictures can be drawn with
test|ccache|ccache, which makes the second build quick
test|iproute2|ip, which makes the tests' network namespaces
test|tzdata|time zones
test|fish|a shell, whose completion is tested
test|zsh|another one
test|groff-base|groff, which checks the manual page
test|valgrind|callgrind, which counts the instructions of a frame
test|libc6-dbg|the symbols that valgrind needs of the C library
services|network-manager|NetworkManager, which the tests run in namespaces of their own
services|dbus|dbus-daemon, buses for it and for the accessibility test
services|python3-dbusmock|a stand-in for ModemManager
services|xvfb|Xvfb, a display for the accessibility test
services|xdotool|xdotool, which presses keys there
services|at-spi2-core|the accessibility bus
services|python3-gi|Python, which reads the accessible tree
services|gir1.2-atspi-2.0|what it reads the tree with
bench|libbenchmark-dev|Google Benchmark
bench|vnstat|a daemon that the SDK is measured beside; its service can be disabled
bench|dbus|dbus-daemon, which both find on a desktop
bench|python3|Python, which sends known traffic
qt5|qtbase5-dev|Qt 5.15: Core, Gui, Widgets, Test
qt5|qttools5-dev|Qt 5 LinguistTools and lrelease
fuzz|clang|Clang
fuzz|libclang-rt-dev|Clang's libFuzzer and sanitizer run-time libraries"

readonly kUnavailable=69 # exit statuses as in sysexits.h: this system is not one of those known here
readonly kNoPermission=77

fail() { # STATUS LINE...
    local status=$1
    shift
    printf 'error: %s\n' "$1" >&2
    shift
    (($# == 0)) || printf '%s\n' "$@" >&2
    exit "$status"
}

# NETINFO_OS_RELEASE names another file, for the tests of this script.
osField() { # NAME
    local file=${NETINFO_OS_RELEASE:-/etc/os-release}
    [ ! -r "$file" ] || sed -n "s/^$1=\"\{0,1\}\([^\"]*\)\"\{0,1\}\$/\1/p" "$file" | head -n 1
}

# Debian 12 or 13, or a system that says it is made from one of them.
isKnownSystem() {
    command -v apt-get >/dev/null && command -v dpkg-query >/dev/null || return 1
    case "$(osField ID):$(osField VERSION_ID)" in
    debian:12 | debian:13) return 0 ;;
    debian:*) return 1 ;;
    esac
    case " $(osField ID_LIKE) " in
    *" debian "*) ;;
    *) return 1 ;;
    esac
    case "$(osField DEBIAN_CODENAME):$(osField VERSION_CODENAME)" in
    bookworm:* | trixie:* | :bookworm | :trixie) return 0 ;;
    esac
    return 1
}

packageRows() { # GROUP...
    local group name provides wanted
    while IFS='|' read -r group name provides; do
        for wanted in "$@"; do
            [ "$group" != "$wanted" ] || printf '%s|%s\n' "$name" "$provides"
        done
    done <<<"$kPackages"
}

missingPackages() { # GROUP...
    local name
    packageRows "$@" | cut -d '|' -f 1 | while read -r name; do
        dpkg-query -W -f '${db:Status-Status}\n' "$name" 2>/dev/null | grep -qx installed || echo "$name"
    done
}

refuseUnknownSystem() { # GROUP...
    local system
    system=$(osField PRETTY_NAME)
    fail "$kUnavailable" \
        "these scripts set up Debian 12 and 13; this is ${system:-an unknown system}." \
        "Needed here, with the name of the Debian package that provides it:" \
        "$(packageRows "$@" | while IFS='|' read -r name provides; do
            printf '  %-18s %s\n' "$name" "$provides"
        done)" \
        "With these installed, build by hand as CONTRIBUTING.md tells."
}

# Installs what of the groups is missing; asks for nothing when all of it is there.
ensurePackages() { # GROUP...
    isKnownSystem || refuseUnknownSystem "$@"
    local -a missing asRoot=()
    read -r -d '' -a missing <<<"$(missingPackages "$@")" || true # ends without a NUL
    ((${#missing[@]} > 0)) || return 0

    local byHand="apt-get install --no-install-recommends ${missing[*]}"
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "$kNoPermission" \
            "packages are missing, and this user is neither root nor has sudo. As root, run:" "  $byHand"
        asRoot=(sudo)
    fi
    echo "Installing ${missing[*]}"
    local -a apt=("${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y
        -o DPkg::Lock::Timeout=300 -o Dpkg::Use-Pty=0)
    # An unreachable extra source must not stop us: the install below tells whether the lists serve.
    quietly "${apt[@]}" update || echo "warning: apt-get update failed; trying with the lists there are" >&2
    quietly "${apt[@]}" install --no-install-recommends "${missing[@]}" ||
        fail "$kUnavailable" "the packages could not be installed. The command was:" "  $byHand"
}

# Runs a command and shows its output only when it fails.
quietly() { # COMMAND...
    local log status=0
    log=$(mktemp)
    "$@" >"$log" 2>&1 </dev/null || status=$?
    ((status == 0)) || cat "$log" >&2
    rm -f "$log"
    return "$status"
}

prepareEnvironment() {
    # Qt complains about a session without any locale, as bare systems have.
    [ -n "${LC_ALL:-}${LC_CTYPE:-}${LANG:-}" ] || export LC_CTYPE=C.UTF-8
    if command -v ccache >/dev/null; then
        if [ -z "${CCACHE_DIR:-}" ] && [ ! -w "${HOME:-/nonexistent}" ]; then
            export CCACHE_DIR=$root/.cache/ccache
        fi
        export CCACHE_SLOPPINESS=pch_defines,time_macros # what precompiled headers need
        export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
    fi
}

# A build folder that came with a copied source tree belongs to the other place: start it afresh.
configure() { # BUILD-FOLDER CMAKE-ARGUMENT...
    local folder=$1
    shift
    local -a fresh=()
    if [ -f "$folder/CMakeCache.txt" ] &&
        ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$folder/CMakeCache.txt"; then
        fresh=(--fresh)
    fi
    (cd "$root" && quietly cmake "${fresh[@]}" "$@")
}

buildPreset() { # PRESET
    prepareEnvironment
    configure "$root/build/$1" --preset "$1"
    (cd "$root" && cmake --build --preset "$1" --parallel "$(nproc)")
}

testPreset() { # PRESET CTEST-ARGUMENT...
    local preset=$1
    local -a fixedAddresses=()
    shift
    # Where the kernel randomises many address bits, memory may land on the sanitizers' shadow.
    if [[ $preset =~ ^(asan-|tsan-|fuzz$) ]] && setarch "$(uname -m)" -R true 2>/dev/null; then
        fixedAddresses=(setarch "$(uname -m)" -R)
    fi
    (cd "$root" && "${fixedAddresses[@]}" ctest --preset "$preset" "$@")
}
