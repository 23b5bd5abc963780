#!/usr/bin/env bash
# demo.sh BUILD-FOLDER: starts the local service and the example host. With a display, shows the app until its window is
# closed. Without one, the app drives itself twice on a virtual display and leaves its pictures in BUILD-FOLDER/demo.
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

# walk NAME: writes the SDK's diagnostic lines to a file and the account of the walk to the screen.
walk() {
    local log="$folder/$1.log"
    if ! with_display "$folder" "$build/examples/host/zelvora-host" --service "$port" --certificates "$folder/service" \
        --data "$folder/app" --walk "$1" --pictures "$folder" 2>&1 >"$log" \
        | tee "$folder/$1.errors.log" | without_noise; then
        stop "The walk failed. $log has the lines of the SDK, $folder/$1.errors.log those of the libraries."
    fi
}

mkdir -p "$folder"
if [[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]]; then
    start_service "$folder/service"
    say "The app opens. The collector shows what arrives: https://collector.zelvora.localhost:$port/"
    host --data "$folder/own"
else
    rm -rf "$folder/app" "$folder/service" "$folder"/*.png
    start_service "$folder/service"
    say "There is no display: the app drives itself on a virtual one."
    walk first
    walk second
    say "Pictures and logs are in $folder."
fi
