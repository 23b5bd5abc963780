#!/usr/bin/env bash
# links.sh: whether the links of the documents lead to files of the tree, and to headings in them.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
# Headings are in Korean, too.
export LC_ALL=C.UTF-8

# headings PAGE: as links name them.
headings() {
    sed -nE '/^```/,/^```$/!s/^#+ //p' "$1" | tr '[:upper:]' '[:lower:]' | sed -E -e 's/[^[:alnum:] _-]//g' -e 's/ /-/g'
}

# pages: the documents of the tree. Sources that were downloaded as an archive have no Git to ask.
pages() { find . \( -name build -o -name node_modules -o -name '.?*' \) -prune -o -name '*.md' -printf '%P\n'; }

# links: "PAGE:LINK" of each in the text, but for those that lead elsewhere in the world.
links() {
    local page
    while IFS= read -r page; do
        sed '/^```/,/^```$/d' "$page" | { grep -oE '\]\([^) ]+\)' || true; } \
            | sed -nE -e '/\(https?:/d' -e "s|^\]\((.*)\)$|$page:\1|p"
    done < <(pages)
}

broken=0 count=0
while IFS=: read -r page link; do
    target="${link%%#*}" heading=""
    [[ "$link" != *"#"* ]] || heading="${link#*#}"
    count=$((count + 1))
    file="$page"
    [[ -z "$target" ]] || file="$(dirname "$page")/$target"
    if [[ ! -e "$file" ]]; then
        echo "$page: there is no $target" >&2
        broken=1
    elif [[ -n "$heading" ]] && ! headings "$file" | grep -qxF -- "$heading"; then
        echo "$page: there is no heading for $link" >&2
        broken=1
    fi
done < <(links)
((count > 20)) || { echo "Only $count links were found." >&2; exit 1; }
exit "$broken"
