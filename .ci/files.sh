# shellcheck shell=bash disable=SC2154
# Which files the checks look at. Sourced after packaging/build.sh.

# A checkout that belongs to another user is still ours to read.
export GIT_CONFIG_COUNT=1 GIT_CONFIG_KEY_0=safe.directory GIT_CONFIG_VALUE_0='*'

# project_files PATTERN…: the project's files of these kinds, new ones too, ended by zero bytes.
project_files() {
    if git -C "$top" rev-parse --git-dir >/dev/null 2>&1; then
        git -C "$top" ls-files -z --cached --others --exclude-standard --deduplicate -- "$@" |
            while IFS= read -r -d '' file; do
                [[ ! -f $top/$file ]] || printf '%s\0' "$file"
            done
    else
        local pattern
        for pattern in "$@"; do
            (cd "$top" && find . -path ./build -prune -o -type f -name "${pattern##*/}" -print0)
        done
    fi
}

# change_base: the landed commit that this change starts from, or nothing when the history does not say.
change_base() {
    local branch base head
    head=$(git -C "$top" rev-parse -q --verify HEAD 2>/dev/null) || return 0
    for branch in origin/HEAD origin/main; do
        base=$(git -C "$top" merge-base HEAD "$branch" 2>/dev/null) || continue
        [[ $base == "$head" ]] || { echo "$base" && return 0; }
    done
    git -C "$top" rev-parse -q --verify HEAD~1 2>/dev/null || true
}
