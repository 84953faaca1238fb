# shellcheck shell=bash disable=SC2154,SC2317
# Swabby beside the programs that do the same, each pair in turns. Sourced by ./bench, which has built what is measured
# here and sets programs. Everything is made in one scratch folder and deleted again.

place=$(mktemp -d "${TMPDIR:-/var/tmp}/swabby-peers.XXXXXX")
running=()
finish() {
    ((${#running[@]} == 0)) || kill "${running[@]}" 2>/dev/null || true
    wait
    rm -rf -- "$place"
}
trap finish EXIT

home=$place/home
mkdir -p "$home/Downloads" "$home/Desktop"
mkdir -m 700 "$home/run"
# at_home COMMAND…: as a person with this home alone, who has no session bus.
at_home() {
    env -u XDG_CONFIG_HOME -u XDG_DATA_HOME -u XDG_CACHE_HOME HOME="$home" XDG_RUNTIME_DIR="$home/run" \
        DBUS_SESSION_BUS_ADDRESS=disabled: "$@"
}

# took COMMAND…: the milliseconds until it has ended, whatever it says.
took() {
    local began=$EPOCHREALTIME ended
    at_home "$@" >"$place/said" 2>"$place/complained" || true
    ended=$EPOCHREALTIME
    figure=$(awk -v us=$((${ended/[.,]/} - ${began/[.,]/})) 'BEGIN { printf "%.1f", us / 1000 }')
}

# The middle one of the lines, and the first and third quarter.
quarters() {
    sort -g | awk '{ line[NR] = $1 } END { printf "%s %s %s", line[int((3 * NR + 3) / 4)], line[int((NR + 1) / 2)], line[int((NR + 3) / 4)] }'
}

# beside WHAT PEER GOAL ROUNDS OURS THEIRS: calls the functions in turn, each of which sets figure, and prints the
# medians and that of the ratios of the rounds. The first round only brings everything into memory.
beside() {
    local what=$1 peer=$2 goal=$3 rounds=$4 ours=$5 theirs=$6 round mine
    local list=$place/figures
    : >"$list"
    for ((round = 0; round <= rounds; round++)); do
        "$ours"
        mine=$figure
        "$theirs"
        ((round == 0 && rounds > 1)) || echo "$mine $figure" >>"$list"
    done
    local own other ratio high low
    read -r _ own _ < <(cut -d' ' -f1 "$list" | quarters)
    read -r _ other _ < <(cut -d' ' -f2 "$list" | quarters)
    read -r high ratio low < <(awk '{ printf "%.4f\n", $1 / ($2 > 0 ? $2 : 0.001) }' "$list" | quarters)
    printf '%-34s %-24s %6d %10.1f %10.1f %7.3f   %.3f to %.3f%s\n' "$what" "$peer" "$rounds" "$own" "$other" "$ratio" \
        "$low" "$high" "${goal:+, goal $goal$(awk -v r="$ratio" -v g="$goal" 'BEGIN { if (r > g) printf ": MISSED" }')}"
}


printf '\n%-34s %-24s %6s %10s %10s %7s   %s\n' what beside rounds 'Swabby ms' 'peer ms' ratio 'middle half of the ratios'

# Exact copies: what is listed leaves out what lies in deeper folders and what takes a block or less. Whole programs,
# from the terminal.
folders=("$home/Downloads" "$home/Desktop")
our_duplicates() { took "$programs/swabbyctl" duplicates; }
with_jdupes() { took jdupes -q -X size+=:4097 "${folders[@]}"; }
with_fdupes() { took fdupes -q -G 4097 "${folders[@]}"; }
with_rdfind() { took rdfind -dryrun true -minsize 4097 -outputname /dev/null "${folders[@]}"; }
with_rmlint() { took rmlint -T df -s 4097- -o summary:stdout "${folders[@]}"; }
duplicates() { # duplicates KIND GOAL ROUNDS
    local peer
    rm -rf -- "${folders[@]}"
    "$programs/swabby_duplicates" make "$1" "$home"
    cat "${folders[0]}"/* "${folders[1]}"/* >/dev/null
    beside "duplicates, $1" jdupes "$2" "$3" our_duplicates with_jdupes
    for peer in rmlint rdfind fdupes; do
        beside "duplicates, $1" "$peer" '' $((($3 + 1) / 2)) our_duplicates "with_$peer"
    done
}
duplicates small 0.45 15
duplicates mixed 0.20 9
duplicates large 0.16 3
rm -rf -- "${folders[@]}"

# What folders take, and projects among many folders.
tree=$place/tree
"$programs/cleanup_scans" make "$tree"
our_sizes() { took "$programs/cleanup_scans" size "$tree"; }
with_du() { took du -sk "$tree"/cache*; }
with_gdu() { took gdu --non-interactive --no-progress --summarize "$tree"; }
beside 'sizes of 20 folders' du 0.50 15 our_sizes with_du
beside 'sizes of 20 folders' gdu '' 9 our_sizes with_gdu
our_projects() { took "$programs/cleanup_scans" search "$tree"; }
with_find() { took find "$tree"/root* -maxdepth 5 -type d -name node_modules -prune -print; }
beside 'projects among 100,000 folders' find 0.30 15 our_projects with_find
rm -rf -- "$tree"

# The start of the main window and what it costs while nobody touches it, on a display and a bus of their own, with a
# day of history.
exec 3>"$place/display" 4>"$place/bus"
Xvfb -displayfd 3 -screen 0 1600x1000x24 -nolisten tcp -noreset >/dev/null 2>&1 &
running+=($!)
at_home dbus-daemon --session --nofork --print-address=4 >/dev/null 2>&1 &
running+=($!)
until [[ -s $place/display && -s $place/bus ]]; do sleep 0.1; done
DISPLAY=:$(<"$place/display")
bus=$(<"$place/bus")
export DISPLAY
openbox >/dev/null 2>&1 &
running+=($!)
at_home "$programs/swabbyctl" settings hasCompletedOnboarding true >/dev/null
mkdir -p "$home/.local/share/Swabby"
awk -v now=$(($(date +%s) - 978307200)) 'BEGIN { # counted from 2001
    printf "["
    for (i = 1439; i >= 0; --i)
        printf "%s{\"date\":%d,\"cpu\":%d,\"mem\":40}", (i == 1439 ? "" : ","), now - 60 * i, 10 + (i * 7) % 60
    print "]"
}' >"$home/.local/share/Swabby/history.json"
first_picture() {
    figure=$(at_home DBUS_SESSION_BUS_ADDRESS="$bus" "$programs/swabby_first_picture" "$1" 2>/dev/null | cut -d' ' -f2)
}
our_start() { first_picture "$programs/swabby"; }
with_monitor() { first_picture gnome-system-monitor; }
with_stacer() { first_picture stacer; }
beside 'start, first picture' gnome-system-monitor 0.40 7 our_start with_monitor
beside 'start, first picture' stacer 0.50 7 our_start with_stacer

# Its processor time since it was started, children included, in milliseconds.
processor_time() {
    local fields
    fields=$(<"/proc/$1/stat")
    # shellcheck disable=SC2206 # words are what is wanted
    fields=(${fields##*) })
    echo $(((fields[11] + fields[12] + fields[13] + fields[14]) * 1000 / $(getconf CLK_TCK)))
}
at_home DBUS_SESSION_BUS_ADDRESS="$bus" "$programs/swabby" >/dev/null 2>&1 &
swabby=$!
script --quiet --return --command 'stty columns 200 rows 50; exec btop' /dev/null >/dev/null </dev/null 2>&1 &
terminal=$!
running+=("$swabby" "$terminal")
sleep 15
btop=$(pgrep -P "$terminal")
our_minute() {
    local before=("$(processor_time "$swabby")" "$(processor_time "$btop")")
    sleep 60
    theirs=$(($(processor_time "$btop") - before[1]))
    figure=$(($(processor_time "$swabby") - before[0]))
}
with_btop() { figure=$theirs; }
beside 'window open for a minute' btop 0.067 4 our_minute with_btop
