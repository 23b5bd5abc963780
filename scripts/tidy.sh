#!/usr/bin/env bash
# tidy.sh LIST: clang-tidy over the sources that the file LIST names, together if they can be read together.
set -euo pipefail

list="$1"
batch="${list%.list}.cpp"
log="${list%.list}.log"

# What any of them was compiled with.
options="$(awk '
    NR == FNR { sources[$0]; next }
    /"command":/ { command = $0 }
    /"file":/ {
        for (source in sources)
            if (index($0, "/" source "\""))
                print command
    }
' "$list" build/coverage/compile_commands.json \
    | grep -oE -- '(-I|-isystem |-D)[^ ]+' | awk '!seen[$0]++' | tr '\n' ' ')"
if [[ -z "$options" ]]; then
    echo "No source of $list is part of the build." >&2
    exit 1
fi

sed 's|.*|#include "&" // NOLINT(bugprone-suspicious-include)|' "$list" >"$batch"
# shellcheck disable=SC2086 # the options are words
if clang-tidy-19 --quiet --config-file=.clang-tidy "$batch" -- -std=c++23 $options >"$log" 2>&1; then
    exit 0
fi
if ! grep -qF '[clang-diagnostic-error]' "$log"; then
    cat "$log"
    exit 1
fi
xargs clang-tidy-19 --quiet -p build/coverage <"$list"
