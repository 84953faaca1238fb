# shellcheck shell=bash
# What the tests of scripts are written with. Sourced.

failures=0

fail() {
    echo "FAIL: $*" >&2
    failures=$((failures + 1))
}

# expect_text WHAT PATTERN TEXT: the text matches the extended regular expression.
expect_text() {
    grep -qE -e "$2" <<<"$3" || fail "$1: nothing matches $2"
}

# refuse_text WHAT PATTERN TEXT: it does not.
refuse_text() {
    ! grep -qE -e "$2" <<<"$3" || fail "$1: something matches $2"
}

# expect_status WHAT STATUS COMMAND…: the command ends with that status; its words are left in $said.
expect_status() {
    local what=$1 wanted=$2 status=0
    shift 2
    said=$("$@" 2>&1) || status=$?
    ((status == wanted)) || fail "$what: ended with $status, not $wanted: $said"
}

finish() {
    ((failures == 0)) || exit 1
    echo 'all as expected'
}
