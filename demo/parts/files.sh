# shellcheck shell=bash disable=SC2154
# Files with a size and an age. Folders are measured by the blocks they occupy, so their contents must
# occupy some; a few shared blocks, linked into many folders, keep the whole machine small.

# One block for each of these sizes in MiB; any sum of them can be made.
block_sizes=(36 20 10 5 3 2)

write_blocks() {
    mkdir -p "$machine/blocks"
    local size
    for size in "${block_sizes[@]}"; do
        reserve "$machine/blocks/$size" "$size"
    done
}

# reserve FILE MIB: a file of zeros that really occupies its size.
reserve() {
    fallocate -l "$2MiB" "$1" 2>/dev/null || head -c "$(($2 * 1048576))" /dev/zero >"$1"
}

# fill FOLDER SIZE…: the folder with the blocks of these sizes in it.
fill() {
    local folder=$1 size
    shift
    mkdir -p "$folder"
    for size in "$@"; do
        ln "$machine/blocks/$size" "$folder/data-$size" 2>/dev/null ||
            cp "$machine/blocks/$size" "$folder/data-$size"
    done
}

# sparse FILE MIB: a file of that length which occupies nothing; for what is measured by its length.
sparse() {
    mkdir -p "$(dirname "$1")"
    dd if=/dev/null of="$1" bs=1048576 seek="$2" 2>/dev/null
}

# text FILE KIB WORDS: real contents of that length, the same for the same words.
text() {
    mkdir -p "$(dirname "$1")"
    yes "$3" 2>/dev/null | head -c "$(($2 * 1024))" >"$1" || true
}

# at SECONDS FORMAT: that moment, in seconds since 1970, as the format says; a Mac's date has another option for it.
at() {
    date -d "@$1" "$2" 2>/dev/null || date -r "$1" "$2"
}

# aged DAYS FILE…: last changed that many days before the demo's morning.
aged() {
    local days=$1
    shift
    touch -t "$(at $((now - days * 86400)) +%Y%m%d%H%M.%S)" -- "$@"
}

xml_text() {
    sed -e 's/&/\&amp;/g' -e 's/</\&lt;/g' -e 's/>/\&gt;/g' <<<"$1"
}

json_text() {
    sed -e 's/\\/\\\\/g' -e 's/"/\\"/g' <<<"$1"
}
