#!/usr/bin/env bash
# exports.sh compare|update FOLDER: compares what the shared libraries in the folder export with the lists in exports/, or
# rewrites the lists. Both compilers give the same lists: left out are inline functions and templates, which each library
# has copies of, and what the compiler adds to a class (tables, type information, thunks).
set -euo pipefail

verb="$1" libraries="$2"
lists="$(dirname "${BASH_SOURCE[0]}")/exports"

exports_of() {
    nm -DC --defined-only "$1" \
        | sed -nE 's/^[0-9a-f]+ [TDBR] //p' \
        | sed -E -e 's/std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >/std::string/g' \
              -e 's/std::basic_string_view<char, std::char_traits<char> >/std::string_view/g' \
              -e 's/\[abi:cxx11\]//g' -e 's/ >/>/g' \
              -e '/^(vtable|VTT|typeinfo( name)?) for |thunk to /d' -e '/[Zz]elvora/!d' \
        | LC_ALL=C sort -u
}

found=0 differing=0
for library in "$libraries"/lib[zZ]elvora*.so; do
    list="$lists/$(basename "$library" .so).txt"
    found=$((found + 1))
    if [[ "$verb" == update ]]; then
        exports_of "$library" >"$list"
    elif ! diff -u --label "$list" "$list" --label "$library" <(exports_of "$library"); then
        differing=$((differing + 1))
    fi
done

if ((found == 0)); then
    echo "There are no libraries of ours in $libraries." >&2
    exit 1
fi
if ((differing)); then
    echo "Lines with + are newly exported; lines with - no longer are. A host that is linked already needs those, unless they" >&2
    echo "are private. If the change is intended, write the new lists with: $0 update $libraries" >&2
    exit 1
fi
echo "All $found libraries export what is listed."
