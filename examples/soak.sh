#!/usr/bin/env bash
# soak.sh BUILD-FOLDER [--busy COUNT] [ARGUMENT...]: starts the local service and the example host, which opens the shop again and
# again on a virtual display and lets its pages use and close it. COUNT loops spin beside it. The arguments are the host's: --rounds
# COUNT, --seed NUMBER.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/packages.sh
source scripts/display.sh
source examples/service.sh

build="$1"
folder="$PWD/$build/soak"
shift
arguments=()
busy=0
loops=()

while (($# > 0)); do
    case "$1" in
    --busy)
        busy="${2:?how many loops}"
        shift
        ;;
    *) arguments+=("$1") ;;
    esac
    shift
done

end_all() {
    stop_service
    ((${#loops[@]} == 0)) || kill "${loops[@]}" 2>/dev/null || true
}
trap end_all EXIT

rm -rf "$folder"
mkdir -p "$folder"
start_service "$folder/service"
for ((i = 0; i < busy; i++)); do
    while :; do :; done &
    loops+=($!)
done
begin=$SECONDS
status=0
with_display "$folder" "$build/examples/host/zelvora-host" --service "$port" --certificates "$folder/service" \
    --data "$folder/app" --walk soak "${arguments[@]}" 2>&1 >"$folder/host.log" \
    | tee "$folder/errors.log" | without_noise || status=1
say "It took $((SECONDS - begin)) s, with $busy loops beside it."
((status == 0)) || stop "$folder/host.log has the lines of the SDK, $folder/errors.log those of the libraries."
