# shellcheck shell=bash
# What the scripts here have in common.

fail() {
    echo "failed: $*" >&2
    exit 1
}

# equal WHAT ACTUAL EXPECTED
equal() {
    [ "$2" = "$3" ] || fail "$1 is '$2' instead of '$3'"
}

# The one file that a pattern names.
only() {
    if [ $# -ne 1 ] || [ ! -e "$1" ]; then fail "expected one file, found: $*"; fi
    echo "$1"
}

# An entry's value: desktop_value FILE KEY
desktop_value() {
    sed -n "s/^$2=//p" "$1"
}

listing() {
    (cd "$1" && find . -mindepth 1 "${@:2}" -printf '%P %M %l\n' | sort)
}
