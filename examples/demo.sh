#!/usr/bin/env bash
# demo.sh BUILD-FOLDER: starts the local service and the example host. With a display, shows the app until its window is
# closed. Without one, the app drives itself on a virtual display and leaves its pictures in BUILD-FOLDER/demo.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/packages.sh
source scripts/display.sh
source examples/service.sh

build="$1"
folder="$PWD/$build/demo"
trap stop_service EXIT

# host ARGUMENT...
host() { "$build/examples/host/zelvora-host" --service "$port" --certificates "$folder/service" "$@"; }

# walk NAME LOG ARGUMENT...: writes the SDK's diagnostic lines to LOG.log and the account of the walk to the screen.
walk() {
    local name="$1" log="$folder/$2.log" errors="$folder/$2.errors.log"
    shift 2
    # Screen readers are told nothing on a display without one, except where that is looked at.
    local -a told=()
    [[ "$*" != *--trees* ]] || told=(env -u NO_AT_BRIDGE GTK_A11Y=atspi)
    if ! with_display "$folder" "${told[@]}" "$build/examples/host/zelvora-host" --service "$port" --certificates "$folder/service" \
        --walk "$name" "$@" 2>&1 >"$log" | tee "$errors" | without_noise; then
        stop "The walk failed. $log has the lines of the SDK, $errors those of the libraries."
    fi
}

# gallery LANGUAGE APPEARANCE [ARGUMENT...]: a picture of every screen, in a folder of that name.
gallery() {
    local name="$1-$2" language="$1" appearance="$2"
    shift 2
    mkdir -p "$folder/$name"
    say "The screens in $language, $appearance: $folder/$name"
    LANGUAGE="$language" walk gallery "$name" --appearance "$appearance" --data "$folder/$name/app" \
        --pictures "$folder/$name" "$@" >/dev/null
}

# compare_trees LANGUAGE: what a screen reader is told of some of these screens, beside what it should be told.
compare_trees() {
    local language="$1" expected name
    for expected in "examples/accessibility/$language"/*.tree; do
        name="$(basename "$expected")"
        diff -u "$expected" "$folder/$language-light/$name" || stop "A screen reader is told something else of $name."
    done
    say "A screen reader is told what it should: examples/accessibility/$language"
}

# opening ARGUMENT...: the milliseconds that the app needs, the middle one of three times.
opening() {
    local _
    for _ in 1 2 3; do
        walk opening opening --data "$folder/app" "$@"
    done | sed -n 's/^opening //p' | sort -n | sed -n 2p
}

mkdir -p "$folder"
if [[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]]; then
    start_service "$folder/service"
    say "The app opens. The collector shows what arrives: https://collector.zelvora.localhost:$port/"
    host --data "$folder/own" --prewarm
else
    rm -rf "$folder"
    start_service "$folder/service"
    say "There is no display: the app drives itself on a virtual one."
    for name in first second; do
        walk "$name" "$name" --data "$folder/app" --pictures "$folder"
    done
    say ""
    say "From start to the page's first message: $(opening) ms, and after gtk::prewarm() $(opening --prewarm) ms."
    for language in ko en; do
        gallery "$language" light --trees "$PWD/$build/examples/accessibility/zelvora-accessibility"
        compare_trees "$language"
        gallery "$language" dark
    done
    say "Pictures and logs are in $folder."
fi
