#!/usr/bin/env bash
# What bash offers for a command line that has been typed so far: the last word is completed.
# completion_test.sh FOLDER: where the build has put the completions.
# shellcheck source-path=SCRIPTDIR
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/assertions.sh"
for program in swabby swabbyctl; do
    # shellcheck disable=SC1090 # made by the build
    source "$1/$program.bash"
done
compopt() { :; }

while IFS='|' read -r typed offered; do
    read -r -a COMP_WORDS <<<"$typed"
    [[ $typed != *'  ' ]] || COMP_WORDS+=('')
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    COMPREPLY=()
    "_${COMP_WORDS[0]}"
    [[ ${COMPREPLY[*]} == "${offered# }" ]] || fail "$typed: ${COMPREPLY[*]}"
done <<'TABLE'
swabbyctl sta | startup
swabbyctl startup d | disable disabled
swabbyctl startup disable e |
swabbyctl --machine /usr/l che | check
swabbyctl --machine /usr/lib/loca | /usr/lib/locale
swabbyctl duplicates /usr/lib/loca | /usr/lib/locale
swabbyctl settings cpu | cpuYellow cpuRed
swabbyctl watch --in | --interval
swabbyctl watch --interval  |
swabbyctl quit --y | --yes
swabbyctl snapshot --y |
swabby --theme l | light
swabby --sec | --section
swabby --section sw | swabbyCheck
TABLE

finish
