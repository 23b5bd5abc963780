#!/usr/bin/env bash
# nothingBeforeMain.sh LIBRARY...: whether none of the static libraries has code that runs before `main`, which every start
# of a host would wait for, whether it opens the shop or not.
set -euo pipefail

(($# > 0)) || {
    echo "There is no library to look at." >&2
    exit 1
}
for library in "$@"; do
    sections="$(readelf --file-header --section-headers --wide "$library")"
    grep -q 'Class:.*ELF' <<<"$sections" || {
        echo "$library has no object that can be read." >&2
        exit 1
    }
    # The name of the object precedes its sections.
    early="$(awk '/^File:/ { file = $2 } /\.(preinit_array|init_array|ctors)/ { print file }' <<<"$sections" | sort -u)"
    if [[ -n "$early" ]]; then
        printf '%s\n' "These objects have code that runs before main:" "$early" >&2
        exit 1
    fi
done
echo "$# libraries"
