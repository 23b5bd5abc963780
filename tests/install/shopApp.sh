#!/usr/bin/env bash
# shopApp.sh PROGRAM: starts the example app, opens the shop by its action, waits for the error of a service that does not exist,
# and quits it.
set -euo pipefail

application=com.example.shopapp
output="$(mktemp)"
"$1" >"$output" &
app=$!
trap 'kill "$app" 2>/dev/null || true; rm -f "$output"' EXIT

# within SECONDS COMMAND...: repeats the command until it succeeds.
within() {
    local last=$((SECONDS + $1))
    shift
    until "$@"; do
        kill -0 "$app" || return 1
        ((SECONDS < last)) || { echo "This never succeeded: $*" >&2; cat "$output" >&2; return 1; }
        sleep 0.1
    done
}

within 30 gapplication action "$application" open-shop 2>/dev/null
within 60 grep -q "The shop cannot be opened: E200" "$output"
gapplication action "$application" quit
wait "$app"
grep -qF "[ZelvoraSDK-debug] Initialized" "$output"
