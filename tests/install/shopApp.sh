#!/usr/bin/env bash
# shopApp.sh PROGRAM [SERVICE]: starts the example app, opens the shop by its action and quits it. With the local service, the shop's
# page says its first word to the SDK; without it, the app tells the error of a service that does not exist.
set -euo pipefail

program="$1" service="${2:-}"
application=com.example.shopapp
folder="$(mktemp -d)"
output="$folder/output"
started=()
trap 'kill "${started[@]}" 2>/dev/null || true; rm -rf "$folder"' EXIT

# within SECONDS COMMAND...: repeats the command until it succeeds.
within() {
    local last=$((SECONDS + $1)) process
    shift
    until "$@"; do
        for process in "${started[@]}"; do kill -0 "$process" || return 1; done
        ((SECONDS < last)) || { echo "This never succeeded: $*" >&2; cat "$output" >&2; return 1; }
        sleep 0.1
    done
}

# A folder of its own, whose user has answered the question about tracking.
export XDG_DATA_HOME="$folder/data"
mkdir -p "$XDG_DATA_HOME/$application"
printf '[Tracking]\nAuthorization=denied\n' >"$XDG_DATA_HOME/$application/tracking.ini"

options=() expected="The shop cannot be opened: E001"
if [[ -n "$service" ]]; then
    "$service" --data "$folder/service" >"$folder/listening" &
    started+=($!)
    within 30 grep -q listening "$folder/listening"
    options=(--service "$(sed 's/listening //' "$folder/listening")" --certificates "$folder/service")
    expected="JS Message Received: "
fi
"$program" "${options[@]}" >"$output" &
app=$!
started+=("$app")

within 30 gapplication action "$application" open-shop 2>/dev/null
within 60 grep -q "$expected" "$output"
gapplication action "$application" quit
wait "$app"
grep -qF "[ZelvoraSDK-debug] Initialized" "$output"
