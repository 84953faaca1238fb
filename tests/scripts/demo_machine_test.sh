#!/usr/bin/env bash
# The demo machine is what its maker promises: of one cast, safe to write again, and worth watching.
# shellcheck source-path=SCRIPTDIR
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/assertions.sh"
swabbyctl=$1
make_machine=$here/../../demo/make-machine

scratch=$(mktemp -d)
trap 'rm -rf -- "$scratch"' EXIT
export TZ=UTC
unset ANTHROPIC_API_KEY

# Written where it may be and nowhere else.
machine="$scratch/a busy <Mac>"
expect_status 'a new folder' 0 "$make_machine" "$machine"
first=$(cd "$machine" && find . -type f ! -path './blocks/*' -size -1000k -exec cksum {} + | sort -k3)
touch "$machine/left behind"
expect_status 'its own folder again' 0 "$make_machine" "$machine"
second=$(cd "$machine" && find . -type f ! -path './blocks/*' -size -1000k -exec cksum {} + | sort -k3)
[[ $first == "$second" ]] || fail 'the second machine differs from the first'
mkdir "$scratch/mine"
touch "$scratch/mine/letter"
expect_status "somebody's folder" 1 "$make_machine" "$scratch/mine"
[[ -e $scratch/mine/letter ]] || fail "somebody's letter is gone"
expect_status 'no folder' 2 "$make_machine"
expect_status 'an unknown scenario' 2 "$make_machine" "$scratch/other" --scenario party
occupied=$(du -sm "$machine" | cut -f1)
((occupied < 120)) || fail "it occupies $occupied MB"

# A watch of twenty minutes sees the load rise and fall, a program come and go, and one that keeps growing.
watched=$("$swabbyctl" --machine "$machine" --run-tools watch --refreshes 20 --interval 60 --json)
lines=$(grep -c . <<<"$watched")
((lines == 20)) || fail "$lines lines for 20 refreshes"
# shellcheck disable=SC2034 # read by its name
end=$(tail -n 1 <<<"$watched")
# The startup list tells its kinds apart.
# shellcheck disable=SC2034
startup=$("$swabbyctl" --machine "$machine" --run-tools startup --json)
while IFS=' ' read -r judge where pattern; do
    "$judge" "$where" "$pattern" "${!where}"
done <"$here/demo_machine.txt"
refuse_text 'growth before a quarter of an hour' '"leakSuspects":\[\{' "$(head -n 15 <<<"$watched")"

# The other scenarios are what they are called.
"$make_machine" "$scratch/calm" --scenario calm >/dev/null
expect_text 'calm' '"health":"green","healthIssues":\[\]' \
    "$("$swabbyctl" --machine "$scratch/calm" --run-tools watch --refreshes 3 --json | tail -n 1)"
"$make_machine" "$scratch/trouble" --scenario trouble >/dev/null
trouble=$("$swabbyctl" --machine "$scratch/trouble" --run-tools snapshot --json)
for words in 'Your Mac is overheating' 'almost out of memory' 'almost out of storage space'; do
    expect_text 'trouble' "$words" "$trouble"
done

finish
