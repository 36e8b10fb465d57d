#!/bin/sh
# Notes how it was called, the number of arguments first, so that empty ones are seen; then does or prints
# what the test has laid out for the command.
home=${FAKE_CONNECTOR:-${0%/*}}
printf '%s\0' "$#" "$@" >>"$home/calls"
# shellcheck disable=SC1090
if [ -f "$home/actions/$1" ]; then . "$home/actions/$1"; exit; fi
if [ -f "$home/answers/$1" ]; then exec cat "$home/answers/$1"; fi
