#!/usr/bin/env bash
# tidy.sh LIST: clang-tidy over the files of one folder that the file LIST names. It spends its time on the headers of the
# system, so they are read as one program, without those that have a helper of the same name as another: these are read alone.
set -euo pipefail

list="$1"
batch="${list%.list}.cpp"
folder="$(sed -nE '1s,^(ZelvoraAdapters/[^/]+|[^/]+)/.*,\1,p' "$list")"

# What the sources of the folder are compiled with.
options="$(awk -v "sources=$PWD/$folder/" -v "generated=$PWD/build/debug/$folder/" '
    /"command":/ { command = $0 }
    /"file":/ && (index($0, sources) || index($0, generated)) { print command }
' build/debug/compile_commands.json \
    | grep -oE -- '(-I|-isystem |-D)[^ ]+' | awk '!seen[$0]++' | tr '\n' ' ' || true)"
if [[ -z "$options" ]]; then
    echo "No source of $folder is part of the build." >&2
    exit 1
fi

# The sources that do not compile in the company of those before them.
odd_ones() {
    # shellcheck disable=SC2086 # the options are words
    clang++-19 -std=c++23 $options -fsyntax-only -ferror-limit=0 -fno-caret-diagnostics "$batch" 2>&1 \
        | grep -E ': (fatal )?error: ' | cut -d : -f 1 | sort -u | grep -oFf "$list" | sort -u
}

together="$(<"$list")"
alone=""
for _ in 1 2 3; do
    # shellcheck disable=SC2001
    sed 's|.*|#include "&" // NOLINT(bugprone-suspicious-include)|' <<<"$together" >"$batch"
    odd="$(odd_ones || true)"
    [[ -n "$odd" ]] || break
    alone+="$odd"$'\n'
    together="$(grep -vxFf <(printf '%s\n' "$odd") <<<"$together" || true)"
done

status=0
for source in "$batch" $alone; do
    # shellcheck disable=SC2086 # the options are words
    clang-tidy-19 --quiet --config-file=.clang-tidy "$source" -- -std=c++23 $options 2>&1 || status=1
done
echo "read: $list"
exit "$status"
