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
watched=$("$swabbyctl" --machine "$machine" watch --refreshes 20 --interval 60 --json)
lines=$(grep -c . <<<"$watched")
((lines == 20)) || fail "$lines lines for 20 refreshes"
expect_text 'a warning' '"health":"yellow"' "$watched"
expect_text 'trouble' '"health":"red"' "$watched"
expect_text 'the end of it' '"health":"yellow"' "$(tail -n 1 <<<"$watched")"
expect_text 'the runaway program' 'Clip Press is using 9[0-9]%' "$watched"
refuse_text 'the runaway program at the end' 'Clip Press' "$(tail -n 1 <<<"$watched")"
refuse_text 'growth before a quarter of an hour' '"leakSuspects":\[\{' "$(head -n 15 <<<"$watched")"
expect_text 'steady growth' '"leakSuspects":\[\{.*Chart Room' "$(tail -n 1 <<<"$watched")"
expect_text 'a hot machine' '"thermalState":"serious"' "$watched"
expect_text 'browsers' '"browserName":"Safari"' "$watched"
refuse_text 'Swabby itself' '/Swabby\.app/' "$watched"

# The startup list tells its kinds apart.
startup=$("$swabbyctl" --machine "$machine" startup --json)
expect_text 'an orphan' 'com\.inkwell\.updater' "$startup"
expect_text 'an item without a label' 'fonts-backup\.plist' "$startup"
expect_text 'a login item' 'Tile Tidy' "$startup"
refuse_text "the system's own" 'com\.apple\.demo-relay' "$startup"
refuse_text 'a file that is no property list' 'com\.broken' "$startup"

# The other scenarios are what they are called.
"$make_machine" "$scratch/calm" --scenario calm >/dev/null
expect_text 'calm' '"health":"green","healthIssues":\[\]' \
    "$("$swabbyctl" --machine "$scratch/calm" watch --refreshes 3 --json | tail -n 1)"
"$make_machine" "$scratch/trouble" --scenario trouble >/dev/null
trouble=$("$swabbyctl" --machine "$scratch/trouble" snapshot --json)
for words in 'Your Mac is overheating' 'almost out of memory' 'almost out of storage space'; do
    expect_text 'trouble' "$words" "$trouble"
done

finish
