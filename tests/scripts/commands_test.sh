#!/usr/bin/env bash
# ./run and ./test install what is missing, only that, and say so when they cannot. The package tools are
# stand-ins that write down what they were asked; nothing is installed and nothing built.
# shellcheck source-path=SCRIPTDIR
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/assertions.sh"
top=$(cd "$here/../.." && pwd)

# Open to everybody, since a part is run as another user.
scratch=$(mktemp -d)
trap 'rm -rf -- "$scratch"' EXIT
chmod 0777 "$scratch"
asked=$scratch/asked
tools=$scratch/tools
mkdir -p "$tools" "$scratch/packaging"
cp "$top/packaging/build.sh" "$scratch/packaging/"
# Only what the functions use of the system, and neither sudo nor the real package tools.
for tool in bash basename dirname env grep sed; do
    ln -s "$(command -v "$tool")" "$tools/$tool"
done

stand_in() {
    printf '#!/bin/sh\n%s\n' "$2" >"$tools/$1"
    chmod +x "$tools/$1"
}

# need PURPOSE NAME…: as ./run asks for its packages, with only the stand-ins on the path.
as_whom=()
need() {
    rm -f "$asked"
    # shellcheck disable=SC2016 # the inner shell is to expand it
    "${as_whom[@]}" env PATH="$tools" bash -c 'source "$0"; need_packages "$@"' \
        "$scratch/packaging/build.sh" "$@"
}

stand_in apt-get "echo \"apt-get \$*\" >>'$asked'"
# As the real one: it tells of those it knows, and fails when it does not know them all.
# shellcheck disable=SC2016 # the stand-in is to expand it
stand_in dpkg-query 'shift 3
status=0
for name; do [ "$name" != cmake ] && echo "installed $name" || status=1; done
exit $status'

expect_status 'everything installed' 0 need testing g++ ninja-build
[[ -z $said && ! -e $asked ]] || fail "it asked for something although nothing is missing: $said"

if ((EUID == 0)); then
    expect_status 'one missing, as root' 0 need testing g++ cmake ninja-build
    expect_text 'the order' '^apt-get .*update$' "$(head -n 1 "$asked")"
    expect_text 'the request' '^apt-get .*install cmake$' "$(tail -n 1 "$asked")"
    expect_text 'what is said' 'Installing what testing needs .*: cmake$' "$said"
    as_whom=(setpriv --reuid 65534 --clear-groups)
fi

expect_status 'one missing, neither root nor sudo' 1 need testing g++ cmake
expect_text 'what is said' 'only root can install: apt-get install cmake$' "$said"
[[ ! -e $asked ]] || fail 'it asked although it may not'

stand_in sudo "echo \"sudo \$*\" >>'$asked'"
expect_status 'one missing, with sudo' 0 need testing g++ cmake
expect_text 'the request' '^sudo .*install cmake$' "$(tail -n 1 "$asked")"
stand_in sudo 'exit 1'
expect_status 'a refused sudo' 1 need testing cmake
expect_text 'what is said' 'as root: apt-get install cmake$' "$said"

rm "$tools/dpkg-query"
expect_status 'another system' 0 need testing cmake
expect_text 'what is said' 'Not a Debian system' "$said"

for command in run test bench demo/make-machine; do
    expect_status "$command --help" 0 "$top/$command" --help
    expect_text "$command --help" '^usage: ' "$said"
done

finish
