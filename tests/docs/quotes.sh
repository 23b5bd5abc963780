#!/usr/bin/env bash
# quotes.sh compare|update PAGE FOLDER: whether the page quotes every file of the folder as it is, or makes it so. A file's code is
# below a line that begins with its path from the top of the tree: `examples/app/main.cpp`.
set -euo pipefail

verb="$1" page="$2" folder="$3"
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

quoting() {
    awk -v folder="$folder/" '
        index($0, "`" folder) == 1 { file = $0; sub(/^`/, "", file); sub(/`.*/, "", file) }
        inside && /^```$/ { inside = 0 }
        !inside { print }
        file != "" && /^```[a-z]/ {
            while ((status = (getline line < file)) > 0) print line
            if (status < 0) { print "There is no " file > "/dev/stderr"; exit 1 }
            close(file)
            file = ""
            inside = 1
        }
    ' "$page"
}

for file in "$folder"/*; do
    if ! grep -q "^\`$file\`" "$page"; then
        echo "$page does not quote $file" >&2
        exit 1
    fi
done

if [[ "$verb" == update ]]; then
    quoted="$(quoting && echo .)"
    printf '%s' "${quoted%.}" >"$page"
elif ! diff -u --label "$page" "$page" --label "$folder" <(quoting); then
    echo "Change the file, and then the page with: tests/docs/quotes.sh update $page $folder" >&2
    exit 1
fi
