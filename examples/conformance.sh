#!/usr/bin/env bash
# conformance.sh BUILD-FOLDER SITE REPORT: shows the suite's pages in the example host on a virtual display, and saves what they were
# answered as a JSON file.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/packages.sh
source scripts/display.sh
source examples/service.sh

build="$1"
site="$2"
report="$3"
folder="$PWD/$build/conformance"
trap stop_service EXIT

rm -rf "$folder"
mkdir -p "$folder"
start_service "$folder/service" --site "$site"
status=0
with_display "$folder" "$build/examples/host/zelvora-host" --service "$port" --certificates "$folder/service" \
    --data "$folder/app" --walk conformance --report "$report" 2>&1 >"$folder/host.log" \
    | tee "$folder/errors.log" | without_noise || status=1
((status == 0)) || stop "$folder/host.log has the lines of the SDK, $folder/errors.log those of the libraries."
