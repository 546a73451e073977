#!/bin/bash
# Tests scripts/lib/setup.sh with stand-ins for the system's tools: nothing is installed.
set -euo pipefail
source=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

# Only these tools are found: the stand-ins and what setup.sh needs of the system.
mkdir "$work/bin"
for tool in bash cat cut dirname env grep head mktemp rm sed uname; do
    ln -s "$(command -v "$tool")" "$work/bin/$tool"
done
standIn() { # NAME BODY
    printf '#!%s/bin/bash\n%s\n' "$work" "$2" >"$work/bin/$1"
    chmod +x "$work/bin/$1"
}

# A system with every package, user root, whose apt-get logs its calls and "installs".
freshSystem() {
    rm -f "$work"/{log,missing,os-release} "$work/bin/sudo"
    touch "$work/log" "$work/missing"
    printf 'ID=debian\nVERSION_ID="12"\nPRETTY_NAME="Debian 12"\n' >"$work/os-release"
    standIn id 'echo 0'
    standIn dpkg-query "! grep -qx \"\${@: -1}\" '$work/missing' || exit 1; echo installed"
    standIn apt-get "echo \"apt-get[\$DEBIAN_FRONTEND] \$*\" >>'$work/log'"
}

# Runs a function of setup.sh; leaves its status in $status and both outputs in $output.
# shellcheck disable=SC2016
callSetup() { # FUNCTION ARGUMENT...
    status=0
    output=$(env -i PATH="$work/bin" TMPDIR="$work" NETINFO_OS_RELEASE="$work/os-release" \
        bash -c 'set -euo pipefail; source "$1/scripts/lib/setup.sh"; shift; "$@"' _ "$source" "$@" 2>&1) ||
        status=$?
}

check() { # STATEMENT CONDITION...
    local statement=$1
    shift
    if "$@"; then
        echo "PASS   : $statement"
    else
        echo "FAIL!  : $statement (status $status, log: $(cat "$work/log"), output: $output)"
        failures=$((failures + 1))
    fi
}
statusIs() { [ "$status" -eq "$1" ]; }
says() { grep -qF -- "$1" <<<"$output"; }
logged() { grep -qE -- "$1" "$work/log"; }
loggedNothing() { [ ! -s "$work/log" ]; }
timesLogged() { [ "$(grep -cE -- "$2" "$work/log")" -eq "$1" ]; }

freshSystem
callSetup ensurePackages program test qt5
check "a complete system succeeds" statusIs 0
check "a complete system leaves apt-get alone" loggedNothing

freshSystem
printf 'g++\nlibmnl-dev\n' >"$work/missing"
callSetup ensurePackages program test
check "missing packages are installed" statusIs 0
check "the lists are updated once, without questions" timesLogged 1 '^apt-get\[noninteractive\] .* update$'
check "only what is missing is installed, without questions" \
    timesLogged 1 '^apt-get\[noninteractive\] .* install --no-install-recommends g\+\+ libmnl-dev$'

freshSystem
echo qttools5-dev >"$work/missing"
callSetup ensurePackages program test
check "a package of another group is not installed" loggedNothing

freshSystem
echo ccache >"$work/missing"
standIn id 'echo 1000'
standIn sudo "echo \"sudo \$1\" >>'$work/log'; exec \"\$@\""
callSetup ensurePackages test
check "a user with sudo succeeds" statusIs 0
check "a user with sudo installs through it" timesLogged 2 '^sudo env$'

freshSystem
echo ccache >"$work/missing"
standIn id 'echo 1000'
callSetup ensurePackages test
check "without root and sudo the status is 77" statusIs 77
check "without root and sudo the command line is named" says 'apt-get install --no-install-recommends ccache'
check "without root and sudo nothing is tried" loggedNothing

freshSystem
echo ccache >"$work/missing"
standIn apt-get 'echo "E: no such thing"; exit 100'
callSetup ensurePackages test
check "a failed installation ends with 69" statusIs 69
check "a failed installation shows the tool's own words" says 'E: no such thing'
check "a failed installation names the command line" says 'apt-get install --no-install-recommends ccache'

freshSystem
echo ccache >"$work/missing"
standIn apt-get "echo \"\$*\" >>'$work/log'; [[ \$* != *update ]]"
callSetup ensurePackages test
check "failing to update the lists is no reason to stop" statusIs 0
check "failing to update the lists is told" says 'warning: apt-get update failed'

refused() { # STATEMENT
    callSetup ensurePackages program test
    check "$1 is refused with 69" statusIs 69
    check "$1: the packages are listed" says 'qt6-base-dev'
    check "$1: what they provide is told" says 'Qt 6.4 or later'
    check "$1: nothing is installed" loggedNothing
}
freshSystem
printf 'ID=fedora\nVERSION_ID=41\nPRETTY_NAME="Fedora Linux 41"\n' >"$work/os-release"
refused "another system"
check "another system is named" says 'Fedora Linux 41'
freshSystem
printf 'ID=debian\nVERSION_ID="11"\n' >"$work/os-release"
refused "an older Debian"
freshSystem
printf 'ID=debian\nVERSION_CODENAME=forky\n' >"$work/os-release"
refused "a Debian without a number"
freshSystem
printf 'ID=ubuntu\nID_LIKE=debian\nVERSION_ID="24.04"\nVERSION_CODENAME=noble\n' >"$work/os-release"
refused "a derivative of something else"
freshSystem
rm "$work/os-release"
refused "a system that does not say what it is"
freshSystem
rm "$work/bin/apt-get"
refused "a system without apt-get"

accepted() { # STATEMENT
    callSetup ensurePackages program
    check "$1 is accepted" statusIs 0
}
freshSystem
printf 'ID=debian\nVERSION_ID="13"\n' >"$work/os-release"
accepted "Debian 13"
freshSystem
printf 'ID=mydebian\nID_LIKE="debian"\nVERSION_ID="6"\nVERSION_CODENAME=other\nDEBIAN_CODENAME=bookworm\n' >"$work/os-release"
accepted "a derivative that names Debian 12"
freshSystem
printf 'ID=raspbian\nID_LIKE=debian\nVERSION_ID="13"\nVERSION_CODENAME=trixie\n' >"$work/os-release"
accepted "a derivative with Debian's own code name"

freshSystem
standIn cmake "echo \"cmake \$*\" >>'$work/log'"
mkdir "$work/build"
callSetup configure "$work/build" --preset dev-qt6
check "a new build folder is configured plainly" logged '^cmake --preset dev-qt6$'
echo "CMAKE_HOME_DIRECTORY:INTERNAL=$source" >"$work/build/CMakeCache.txt"
: >"$work/log"
callSetup configure "$work/build" --preset dev-qt6
check "a build folder of this tree is kept" logged '^cmake --preset dev-qt6$'
echo "CMAKE_HOME_DIRECTORY:INTERNAL=/elsewhere" >"$work/build/CMakeCache.txt"
callSetup configure "$work/build" --preset dev-qt6
check "a build folder of another tree starts afresh" logged '^cmake --fresh --preset dev-qt6$'

echo "$failures failed"
((failures == 0))
