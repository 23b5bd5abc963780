# The package for page authors: `./run page` and the stage "page" of `./run test`.

# Each step counts its checks.
PAGE_STEPS=(page_unit page_stand_in page_conformance)

page() {
    local verb="${1:-}"
    (($# == 0)) || shift
    case "$verb" in
    "")
        run_stages page
        say "The package: $(ls build/page/*.tgz)"
        ;;
    --serve) page_serve "$@" ;;
    --in-app) page_in_app "$@" ;;
    *) stop "There is no \"$verb\"; ./run help lists what there is." ;;
    esac
}

page_serve() {
    [[ -d "${1:-}" ]] || stop "Say which folder: ./run page --serve FOLDER"
    local packages
    mapfile -t packages < <(page_packages)
    install_packages "${packages[@]}"
    say "Building the package"
    mkdir -p build/logs
    if ! page_build 2>&1 | follow page build/logs/page.log; then
        show_failure build/logs/page.log >&2
        stop "The build failed; build/logs/page.log has the whole story."
    fi
    exec node page/serve/serve.mjs "$@"
}

page_in_app() {
    (($#)) || stop "Say what to show: ./run page --in-app FOLDER|URL"
    install_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_CLANG[@]}" "${PACKAGES_DISPLAY[@]}"
    say "Building the app"
    build_or_stop demo zelvora-developer
    exec examples/developer/in_app.sh build/demo "$@"
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
    printf '%s\n' chromium webkit2gtk-driver "${PACKAGES_BUILD[@]}" "${PACKAGES_GCC[@]}" "${PACKAGES_DISPLAY[@]}"
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

page_stand_in() { counted_tap node --test --test-reporter=tap page/browser/panel.test.mjs page/serve/serve.test.mjs; }

# The stage "gcc" has built the example. Its display is for the browser that needs one.
page_conformance() {
    build gcc zelvora_examples || return 1
    ZELVORA_BUILD=build/gcc counted_tap with_display "$PWD/build/page" \
        node --test --test-reporter=tap page/conformance/suite.test.mjs
}

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
