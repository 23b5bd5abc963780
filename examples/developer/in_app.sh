#!/usr/bin/env bash
# in_app.sh BUILD-FOLDER FOLDER|URL [--script FILE] [--pictures FOLDER] [--action NAME]...: shows a page author's pages in the
# example host, with what becomes of their messages beside them, until the window is closed. A script is carried out on a virtual
# display, and the exit status says whether all that it expects came true.
set -euo pipefail
top="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
source "$top/scripts/packages.sh"
source "$top/scripts/display.sh"

program="$top/$1/examples/developer/zelvora-developer"
shift
folder="$top/build/page/in-app"
# Each start is a fresh install.
rm -rf "$folder"
mkdir -p "$folder"

is_scripted() {
    local argument
    for argument in "$@"; do
        [[ "$argument" != --script && "$argument" != --script=* && "$argument" != -s ]] || return 0
    done
    return 1
}

# without_noise: what the libraries of a display without a desktop complain about.
without_noise() {
    grep --line-buffered -v -e '^(zelvora-developer:' -e '^dbus-daemon' -e '^X connection' -e '^$' -e WARNING || true
}

if is_scripted "$@"; then
    with_display "$folder" "$program" --data "$folder/data" "$@" 2>&1 >"$folder/sdk.log" \
        | tee "$folder/errors.log" | without_noise
elif [[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]]; then
    say "The SDK's lines are in $folder/sdk.log."
    "$program" --data "$folder/data" "$@" >"$folder/sdk.log"
else
    stop "There is no display here: pass a script, --script FILE, or start this on a desktop."
fi
