# Configuring and building the presets of CMakePresets.json, each in build/<preset>.

# build PRESET TARGET [CMAKE-OPTION...]
build() {
    local preset="$1" target="$2" launcher=()
    shift 2
    if command -v ccache >/dev/null; then
        launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    fi
    cmake --preset "$preset" "${launcher[@]}" "$@" && cmake --build "build/$preset" --target "$target" -- -k 0
}

# build_or_stop PRESET TARGET [CMAKE-OPTION...]: says how far it is, and no more unless it fails.
build_or_stop() {
    local log="build/logs/$1.log"
    mkdir -p build/logs
    if ! build "$@" 2>&1 | follow "$1" "$log"; then
        show_failure "$log" >&2
        stop "The build failed; $log has the whole story."
    fi
}

# The lines of a log that say what went wrong.
show_failure() {
    local pattern='(error:|CMake Error|^FAILED|: Failure$|\*\*\*(Failed|Timeout|Exception|Not Run)|SUMMARY: |^Fatal error|No such file)'
    if grep -qE "$pattern" "$1"; then
        grep -E -A 6 "$pattern" "$1" | sed -E 's/\.{4,}/ ... /' | cut -c 1-240 | sed -n '1,120s/^/    /p'
        sed -n '/^The following tests FAILED:/,/^Errors while/p' "$1" | sed 's/^/    /'
    else
        tail -n 40 "$1" | cut -c 1-240 | sed 's/^/    /'
    fi
}
