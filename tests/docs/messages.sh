#!/usr/bin/env bash
# messages.sh: whether docs/troubleshooting.md has every message of the SDK and its adapters that a host's engineer may meet.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

page=docs/troubleshooting.md
folders=(ZelvoraIOS ZelvoraPlatform ZelvoraAdapters/memory ZelvoraAdapters/gtk ZelvoraAdapters/shared)

# The first text of each call, up to where something is put into it.
messages() {
    grep -rhoPz --include='*.cpp' \
        '(ZelvoraLogger::[ew]\(\s*|fatalError\(\s*|complain\(\s*|G_LOG_LEVEL_WARNING,\s*)"([^"\\]|\\.)*"' "${folders[@]}" \
        | tr '\0\n' '\n ' | sed -E -e 's/^[^"]*"//' -e 's/".*$//' -e 's/\\$//' -e 's/%.*$//' -e 's/ +$//' | sort -u
}

# Every text of several words in what is told of a layout, of the host or of a page.
parts() {
    {
        cat ZelvoraAdapters/shared/Layout/internal/LayoutReport.cpp ZelvoraAdapters/memory/WebKit/internal/PageScript.cpp
        grep -rhoPz --include='*.cpp' 'complain\([^;]*;' "${folders[@]}" | tr '\0' '\n'
    } | grep -oE '" [a-z][^"]*"|"[a-z]+ [a-z]+ [a-z][^"]*"' | sed -E -e 's/"//g' -e 's/ +$//' | sort -u
}

missing=0

# demand COUNT: whether the page has every line of the input, which are more than COUNT.
demand() {
    local count=0 message
    while IFS= read -r message; do
        [[ -n "$message" ]] || continue
        count=$((count + 1))
        if ! grep -qF -- "$message" "$page"; then
            echo "$page does not have: $message" >&2
            missing=1
        fi
    done
    ((count > $1)) || { echo "Only $count messages were found: they are written in another way now." >&2; exit 1; }
}

demand 30 < <(messages)
demand 12 < <(parts)
exit "$missing"
