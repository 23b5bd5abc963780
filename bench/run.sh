#!/usr/bin/env bash
# Runs every benchmark: bench/run.sh BUILD-FOLDER. Each compares with a reference in the same run and prints ratios.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/packages.sh
source scripts/display.sh

build="$(realpath "$1")"
folder="$build/bench"

# All functions of the SDK in a shared library without symbols.
print_size() {
    local library="$folder/size.so"
    clang++-19 -shared -fuse-ld=lld -Wl,--whole-archive "$build/ZelvoraIOS/libZelvoraIOS.a" \
        "$build/ZelvoraPlatform/libzelvora_platform.a" -Wl,--no-whole-archive -o "$library"
    llvm-strip-19 "$library"
    say "Size"
    local documented
    documented="$(awk -F ' *[|] *' '$2 == "the SDK with its platform layer, stripped" { print $3 }' docs/performance.md)"
    say "  the SDK with its platform layer, stripped: $(($(stat -c %s "$library") / 1024)) KiB; in the docs: $documented"
}

# The SDK logs to standard output, which is discarded.
"$folder/zelvora-bench-events" >/dev/null
"$folder/zelvora-bench-opening" >/dev/null
"$folder/zelvora-bench-storage" >/dev/null
"$folder/zelvora-bench-lengths" "$folder" >/dev/null
gnuplot -e "folder='$folder'" bench/lengths.gnuplot
say "  The plots, to be compared with those of the docs: $1/bench/saving.svg and $1/bench/opening.svg"
"$folder/zelvora-bench-json" >/dev/null
"$folder/zelvora-bench-bridge" >/dev/null
for program in page messages prewarm; do
    if ! with_display "$folder" "$folder/zelvora-bench-$program" 2>&1 >/dev/null \
        | grep -v -e '^dbus-daemon' -e '^$' -e WARNING -e '^X connection'; then
        stop "The benchmark \"$program\" in the engine failed."
    fi
done
print_size
