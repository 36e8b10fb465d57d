# Functions to paint what is on the display; to be sourced.

# settle FILE: captures the display into FILE as soon as a window is there and no longer changes.
settle() {
    local file=$1 before
    before=$(mktemp --suffix .png)
    for _ in $(seq 60); do
        import -silent -window root -trim +repage "$file" 2>/dev/null
        if [ "$(identify -format %w "$file")" -gt 1000 ] && cmp -s "$file" "$before"; then
            rm -f "$before"
            return
        fi
        cp "$file" "$before"
        sleep 0.5
    done
    rm -f "$before"
    echo "the window did not settle" >&2
    return 1
}

# press KEY...: each key in turn, to the window that has the focus.
press() {
    xdotool key --clearmodifiers --delay 30 "$@"
}

# times N KEY: the same key N times.
times() {
    local keys=()
    for _ in $(seq "$1"); do keys+=("$2"); done
    press "${keys[@]}"
}

# turn_wheel N: down, by N notches.
turn_wheel() {
    xdotool click --repeat "$1" --delay 30 5
}
