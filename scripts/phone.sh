# The stage "phone": the phone's adapter and module, as far as they can be checked where there is no phone. The steps are in the
# order in which they find the most.

PHONE_STEPS=(phone_apple phone_decl phone_run phone_coverage phone_seeds phone_live phone_package phone_swift)

stage_phone() { run_steps "${PHONE_STEPS[@]}"; }

# The quick part: the device's sources are compiled, but not linked.
stage_phone_quick() { run_steps phone_decl phone_package phone_compile; }

# counted COMMAND...: adds up what the command says it checked: in a line "3 passed, 0 failed, 1 skipped", or else in lines that
# begin with "passed: ", "FAILED: " or "skipped". Without any of these it is one check.
counted() {
    local output status=0 line
    output="$("$@" 2>&1)" || status=$?
    say "$output"
    line="$(grep -E '^[0-9]+ passed, [0-9]+ failed' <<<"$output" | tail -n 1)" || true
    if [[ -n "$line" ]]; then
        s_passed=$((s_passed + $(sed -E 's/^([0-9]+) passed.*/\1/' <<<"$line")))
        s_failed=$((s_failed + $(sed -E 's/.* ([0-9]+) failed.*/\1/' <<<"$line")))
        s_skipped=$((s_skipped + $(sed -nE 's/.* ([0-9]+) skipped.*/\1/p' <<<"$line" | grep . || echo 0)))
    else
        local passed failed skipped
        passed="$(grep -c '^passed: ' <<<"$output")" || true
        failed="$(grep -c '^FAILED: ' <<<"$output")" || true
        skipped="$(grep -c '^skipped' <<<"$output")" || true
        if ((passed + failed + skipped == 0 && status == 0)); then
            passed=1
        fi
        s_passed=$((s_passed + passed)) s_failed=$((s_failed + failed)) s_skipped=$((s_skipped + skipped))
    fi
    if ((status != 0 && s_failed == 0)); then
        s_failed=1
    fi
    return "$status"
}

phone_apple() {
    local status=0
    counted build_phone ios-gate all || status=1
    counted tests/uikit/link/check.sh build/ios-gate/ZelvoraIOS.framework || status=1
    counted build_phone ios-gate-simulator all || status=1
    return "$status"
}

phone_compile() { counted build_phone ios-gate zelvora_module; }

phone_decl() { counted /usr/bin/python3 tests/uikit/audit/audit.py; }

# It counts the lines too.
phone_run() {
    build_phone uikit all || return 1
    rm -rf build/uikit/profiles
    LLVM_PROFILE_FILE="$PWD/build/uikit/profiles/%p.profraw" with_sanitizers run_phone_tests uikit
}

# What the step before it counted.
phone_coverage() { counted tests/uikit/coverage.sh build/uikit; }

with_sanitizers() {
    ASAN_OPTIONS=detect_stack_use_after_return=0:strict_string_checks=1 UBSAN_OPTIONS=print_stacktrace=1 "$@"
}

# With what the steps before it have built.
phone_seeds() {
    build_phone ios-gate all && build_phone uikit all || return 1
    counted tests/uikit/seeds.sh
}

# With a real engine, on a display.
phone_live() {
    build_phone uikit all && with_sanitizers run_phone_tests live with_display "$PWD/build/uikit"
}

phone_package() { counted tests/uikit/package.sh; }
phone_swift() { counted tests/uikit/swift.sh; }

# build_phone PRESET TARGET: on Linux the adapter and the module link the SDK of the build "clang".
build_phone() {
    local preset="$1" target="$2" launcher=()
    if [[ "$preset" == uikit* ]]; then
        build clang zelvora_to_link || return 1
    fi
    if command -v ccache >/dev/null; then
        launcher=(-DCMAKE_OBJCXX_COMPILER_LAUNCHER=ccache)
    fi
    build "$preset" "$target" "${launcher[@]}"
}

# run_phone_tests LABEL [COMMAND...]: as run_tests, those with this label, by a ctest that the command runs.
run_phone_tests() {
    local label="$1" report="$PWD/build/uikit/tests-$1.xml" status=0
    shift
    rm -f "$report"
    "$@" ctest --test-dir build/uikit -L "^$label\$" -j "$(nproc)" --output-on-failure --output-junit "$report" || status=$?
    count_tests "$report" "$status"
}
