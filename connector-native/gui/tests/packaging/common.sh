# shellcheck shell=bash
# Functions of all scripts here.

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

tree_archive() {
    only "$1"/brindlecove-connector-gui-[0-9]*.tar.xz
}

portable_archive() {
    only "$1"/brindlecove-connector-gui-portable-*.tar.xz
}

# An entry's value: desktop_value FILE KEY
desktop_value() {
    sed -n "s/^$2=//p" "$1"
}

listing() {
    (cd "$1" && find . -mindepth 1 "${@:2}" -printf '%P %M %l\n' | sort)
}

# The process of the program under test, and the id of its window.
program=
window=

# show_window PROGRAM: starts it on the display and waits for its window.
show_window() {
    "$1" &
    program=$!
    window=$(timeout 30 xdotool search --sync --onlyvisible --pid "$program" --name '^Brindlecove Connector$') ||
        fail "$1 shows no window"
}

# window_property NAME
window_property() {
    xprop -id "$window" "$1"
}

# await_property NAME TEXT: waits until the property holds the text.
await_property() {
    for _ in $(seq 100); do
        [[ $(window_property "$1") != *"$2"* ]] || return 0
        sleep 0.1
    done
    return 1
}

# Ends the program by SIGTERM; fails if it has ended before or ends otherwise.
stop() {
    kill "$program" || fail "the program has ended by itself"
    wait "$program" || equal "the program's end" $? $((128 + 15))
    program=
}

# clean_up DIRECTORY: the last thing a script does, however it ends.
clean_up() {
    [ -z "$program" ] || kill "$program" 2>/dev/null || true
    rm -rf "$1"
}

# debian_source: where this machine's own package sources have Debian.
debian_source() {
    # shellcheck disable=SC2016 # apt expands it
    apt-get indextargets --format '$(REPO_URI) $(RELEASE)' 'Created-By: Packages' 'Component: main' |
        awk '$2 !~ /[-\/]/ { print $1; exit }'
}

# make_bare_debian RELEASE ROOT: a Debian with nothing installed, which gets its packages as this machine does.
make_bare_debian() {
    debootstrap --variant=minbase "$1" "$2" "$(debian_source)" >"$2.log" 2>&1 ||
        { cat "$2.log" >&2; fail "there is no $1"; }
    apt-config dump | grep -E '^Acquire::(https?::Proxy|Check-)' >"$2/etc/apt/apt.conf.d/outside" || true
}
