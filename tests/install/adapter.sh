#!/usr/bin/env bash
# adapter.sh first_use|first_shop|suites|next_use|last_use BUILD NAME: whether the frame of the adapter NAME, built in BUILD, stops
# with the name of what it lacks: when the SDK is first used on it, when a shop is opened, in the first test of each contract suite,
# or, where the first rows of docs/porting.md are written, in the use that the SDK makes of it on another thread; and whether it
# ends well where all is written that the SDK asks for.
# adapter.sh write SOURCES NAME FOLDER: puts sources of that adapter where they belong in its frame.
set -euo pipefail

verb="$1" build="$2" name="$3" frame="${4:-}"
suites="$(dirname "${BASH_SOURCE[0]}")/../../ZelvoraContract"

# lacks METHOD COMMAND...: the command does not survive, and says that METHOD, an expression, is missing.
lacks() {
    local method="$1" output status=0
    shift
    output="$("$@" 2>&1)" || status=$?
    if ((status == 0)) || ! grep -qE "Fatal error: the adapter $name has no $method yet" <<<"$output"; then
        echo "$* ended with $status and does not say what is missing:" >&2
        tail -n 5 <<<"$output" >&2
        return 1
    fi
}

check_first_use() { lacks Bundle::bundleIdentifier "$build/first-use"; }

check_first_shop() { lacks NavigationController::pushViewController "$build/first-shop"; }

check_next_use() { lacks UserDefaults::object "$build/first-use"; }

# Other threads need the time to ask.
check_last_use() {
    local output begin="$SECONDS"
    output="$("$build/first-use" 2>&1)" || { echo "first-use failed:" >&2; tail -n 5 <<<"$output" >&2; return 1; }
    grep -qx "Nothing is missing so far: the SDK asked for nothing more in 5 s." <<<"$output"
    ((SECONDS - begin >= 4)) || { echo "first-use did not wait." >&2; return 1; }
}

# Each replaces the file of the frame that has its name, and no other is written.
check_write() {
    local source target
    for source in "$build"/*; do
        target="$(find "$frame/ZelvoraAdapters" "$frame/tests" -name "$(basename "$source")")"
        [[ -f "$target" ]] || { echo "The frame has no $(basename "$source")." >&2; return 1; }
        cp "$source" "$target"
    done
    # What needs more than is written only takes time to compile.
    sed -i -e '/UserDefaultsTest.cpp$/,/PlatformTest.cpp$/d' -e '/^# A shop on the screen/,/^$/d' "$frame/CMakeLists.txt"
    ! grep -q first-shop "$frame/CMakeLists.txt"
}

check_suites() {
    local tests file suite prefix failed=0 count=0
    tests="$("$build/contract-tests" --gtest_list_tests)"
    for file in "$suites"/*Contract.h; do
        suite="$(basename "$file" .h)"
        prefix="$(grep -oE "^[A-Za-z0-9]+/$suite/0\." <<<"$tests" | head -n 1)" || true
        [[ -n "$prefix" ]] || { echo "$suite is not among the tests." >&2; failed=1; continue; }
        lacks '[A-Za-z]+::[A-Za-z, ]+' "$build/contract-tests" "--gtest_filter=$prefix*" || failed=1
        count=$((count + 1))
    done
    echo "$count suites"
    ((count > 10 && failed == 0))
}

"check_$verb"
