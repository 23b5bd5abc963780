# The package for page authors: `./run page` and the stage "page" of `./run test`.

# Each step counts its checks.
PAGE_STEPS=(page_unit)

page() {
    local verb="${1:-}"
    case "$verb" in
    "")
        run_stages page
        say "The package: $(ls build/page/*.tgz)"
        ;;
    *) stop "There is no \"$verb\"; ./run help lists what there is." ;;
    esac
}

stage_page() {
    page_build && run_steps "${PAGE_STEPS[@]}"
}

# With Node.js as it is installed, from wherever it came; else Debian's.
page_packages() {
    local major
    major="$(node -p 'process.versions.node.split(".")[0]' 2>/dev/null)" || major=0
    if ((major < 18)) || ! command -v npm >/dev/null; then
        printf '%s\n' nodejs npm
    fi
    printf '%s\n' chromium
}

# What the lock file names is fetched once.
page_build() {
    if [[ page/package-lock.json -nt page/node_modules/.package-lock.json ]]; then
        npm --prefix page ci || return 1
        touch page/node_modules/.package-lock.json
    fi
    npm --prefix page run check && npm --prefix page run build
}

page_unit() { counted_tap node page/tools/test.mjs; }

# counted_tap COMMAND...: adds up what the command reports as TAP.
counted_tap() {
    local output status=0
    output="$("$@" 2>&1)" || status=$?
    say "$output"
    s_passed=$((s_passed + $(tap_count pass "$output")))
    s_failed=$((s_failed + $(tap_count fail "$output") + $(tap_count cancelled "$output")))
    s_skipped=$((s_skipped + $(tap_count skipped "$output")))
    return "$status"
}

tap_count() { sed -nE "s/^# $1 ([0-9]+)$/\1/p" <<<"$2" | awk '{ sum += $1 } END { print sum + 0 }'; }
