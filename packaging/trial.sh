# shellcheck shell=bash disable=SC2154
# What the trials share: bare trees of a Debian release, a display that pictures are taken of, and waiting. Sourced
# after build.sh, by root; release, scratch and pictures are set by the trial, root is where things are tried: a tree,
# or nothing for this system.

root=${root:-}

# trial_alone ARGUMENT…: starts the trial again where what it mounts goes with its process.
trial_alone() {
    ((EUID == 0)) || { complain 'only root can do this' && exit 1; }
    [[ -n ${SWABBY_TRIAL:-} ]] || SWABBY_TRIAL=yes exec unshare --mount "$0" "$@"
}

# new_tree FOLDER: a bare tree of the release.
new_tree() {
    local mirror
    # shellcheck disable=SC2016 # apt-get fills these in
    mirror=$(apt-get indextargets --format '$(LABEL) $(REPO_URI)' | sed -n 's/^Debian //p' | head -n 1)
    say "Making a bare $release in $1."
    rm -rf -- "$1"
    mkdir -p "$(dirname "$1")"
    debootstrap --variant=minbase "$release" "$1" "$mirror" >"$1.log" 2>&1 || { tail -n 5 "$1.log" >&2 && exit 1; }
}

open_tree() {
    mount --bind /proc "$1/proc"
    mount --bind /dev "$1/dev"
    cp -L /etc/resolv.conf "$1/etc/resolv.conf"
}

inside() {
    if [[ -n $root ]]; then chroot "$root" "$@"; else "$@"; fi
}

running=()
# stop_running: what the trial has started and noted there.
stop_running() {
    ((${#running[@]} == 0)) || kill "${running[@]}" 2>/dev/null || true
}

# soon WHAT COMMAND…: the command succeeds within a minute and a half.
soon() {
    local what=$1 tries
    shift
    for ((tries = 0; tries < 450; tries++)); do
        ! "$@" >/dev/null 2>&1 || return 0
        sleep 0.2
    done
    complain "$what: not within a minute and a half"
    cat "$scratch/said" >&2 || true
    exit 1
}

# open_display: one that only this trial uses.
open_display() {
    exec 3>"$scratch/display"
    Xvfb -displayfd 3 -screen 0 1280x900x24 -nolisten tcp -noreset >/dev/null 2>&1 &
    running+=($!)
    soon 'a display' test -s "$scratch/display"
    DISPLAY=:$(cat "$scratch/display")
    export DISPLAY
}

shows() { [[ -n $(xdotool search --onlyvisible --class swabby) ]]; }

# picture NAME: of all the display.
picture() {
    mkdir -p "$pictures"
    import -window root "$pictures/$1.png"
    (($(identify -format '%k' "$pictures/$1.png") > 50)) || { complain "$1.png shows nothing" && exit 1; }
    say "Seen: $pictures/$1.png"
}
