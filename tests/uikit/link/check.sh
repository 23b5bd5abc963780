#!/usr/bin/env bash
# tests/uikit/link/check.sh FRAMEWORK: whether the linked framework exports what hosts use and nothing else, takes from the
# system what is known to be there, runs on the oldest phone and is small enough.
set -euo pipefail
folder="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
binary="$1/ZelvoraIOS"
oldest=26.2
most_bytes=320000
# The names of libc++ and of what it stands on.
libcxx='^(__Z(S|NK?S|T[IVS](S|NS|N10__cxxabiv1)|d[al]|n[aw])|___cxa_|___gxx_|___dynamic_cast)'
export LC_ALL=C
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
passed=0
failed=0

# check NAME COMMAND...: one check; what the command says is shown if it fails.
check() {
    local name="$1" said
    shift
    if said="$("$@" 2>&1)"; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        printf 'error: %s\n%s\n' "$name" "$said"
    fi
}

headers() { llvm-objdump-19 --macho --private-headers "$binary"; }
loaded() { headers | awk -v kind="$1" '$1 == "cmd" { is = $2 == kind } is && $1 == "name" { print $2 }' | sort; }

exports_are_golden() {
    llvm-objdump-19 --macho --exports-trie "$binary" | sed -nE 's/^0x[0-9A-Fa-f]+ +([^ ]+).*/\1/p' | sort >"$work/exports"
    diff <(sort "$folder/exports.txt") "$work/exports"
}

# What symbols.txt lists, its classes as the linker names them, and libc++.
undefined_are_known() {
    sed -E 's/#.*//; s/[[:space:]]+$//; /^\[/d; /^$/d' "$folder/symbols.txt" \
        | awk '/^@/ { name = substr($0, 2); print "_OBJC_CLASS_$_" name; print "_OBJC_METACLASS_$_" name; next } { print }' \
        | sort -u >"$work/known"
    llvm-nm-19 --undefined-only --format=just-symbols "$binary" | sort -u >"$work/undefined"
    [[ -s "$work/undefined" ]]
    if comm -13 "$work/known" "$work/undefined" | grep -vE "$libcxx"; then
        return 1
    fi
}

oldest_phone_runs_it() { headers | awk '$1 == "minos" { print $2 }' | diff <(echo "$oldest") -; }
weak_are_golden() { loaded LC_LOAD_WEAK_DYLIB | diff "$folder/weak.txt" -; }
loaded_are_golden() { loaded LC_LOAD_DYLIB | diff "$folder/loaded.txt" -; }

is_small() {
    llvm-strip-19 -x -S -o "$work/stripped" "$binary"
    local bytes
    bytes="$(stat -c %s "$work/stripped")"
    echo "$bytes bytes stripped, of $most_bytes" >"$work/size"
    cat "$work/size"
    ((bytes <= most_bytes))
}

check "the exports differ from exports.txt" exports_are_golden
check "it takes symbols from the system that symbols.txt does not list" undefined_are_known
check "the oldest phone that runs it is not that of $oldest" oldest_phone_runs_it
check "the frameworks that it can do without differ from weak.txt" weak_are_golden
check "the libraries that it loads differ from loaded.txt" loaded_are_golden
check "it is too large" is_small

cat "$work/size"
echo "$(wc -l <"$work/undefined") undefined, $(wc -l <"$work/exports") exported"
echo "$passed passed, $failed failed"
((failed == 0))
