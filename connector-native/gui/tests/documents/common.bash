# shellcheck shell=bash
# What the scripts here have in common; to be sourced.

# documents ROOT: all of them, without what a build has made and the faulty one that the checks are tried on.
documents() {
    find "$1" \( -path "$1/build" -o -path "$1/.git" -o -path "$1/connector-native/gui/tests/documents" \) -prune \
        -o -name '*.md' -print | sort
}
