# The stages of `./run test` and `./run check`. A stage writes to its log, leaves its counts in s_passed, s_failed and
# s_skipped and, where it has more to say, a text in s_remark. A stage that cannot run has failed.

STAGES=(clang format docs libcxx phone simulation gcc soak page asan tsan tidy fuzz)
# Without "clang": "asan" runs the same tests with the same compiler, and "gcc" runs those that "asan" leaves out.
ALL_STAGES=(format docs libcxx phone simulation gcc soak page asan tsan tidy fuzz)

s_passed=0
s_failed=0
s_skipped=0
s_remark=""

test_stages() {
    local stages=() argument
    for argument in "$@"; do
        case "$argument" in
        --all) stages+=("${ALL_STAGES[@]}") ;;
        *)
            [[ " ${STAGES[*]} " == *" $argument "* ]] || stop "There is no stage \"$argument\"; there are ${STAGES[*]}."
            stages+=("$argument")
            ;;
        esac
    done
    ((${#stages[@]})) || stages=(clang)
    run_stages "${stages[@]}"
}

check_stages() {
    run_stages format layers plain_changes tidy_changes phone_quick
}

run_stages() {
    local stage passed=0 failed=0 begin=$SECONDS
    packages_of "$@"
    mkdir -p build/logs
    for stage in "$@"; do
        run_stage "$stage"
        passed=$((passed + s_passed))
        failed=$((failed + s_failed))
    done
    say "All of it took $(duration $((SECONDS - begin)))."
    say "$passed passed, $failed failed"
    ((failed == 0))
}

packages_of() {
    local packages=() stage
    for stage in "$@"; do
        case "$stage" in
        format) packages+=("${PACKAGES_FORMAT[@]}") ;;
        docs) packages+=("${PACKAGES_DOCS[@]}") ;;
        layers | simulation) packages+=("${PACKAGES_BUILD[@]}" "${PACKAGES_CLANG[@]}") ;;
        clang) packages+=("${PACKAGES_BUILD[@]}" "${PACKAGES_CLANG[@]}" "${PACKAGES_DISPLAY[@]}") ;;
        fuzz) packages+=("${PACKAGES_BUILD[@]}" "${PACKAGES_CLANG[@]}" "${PACKAGES_SANITIZERS[@]}") ;;
        asan | tsan)
            packages+=("${PACKAGES_BUILD[@]}" "${PACKAGES_CLANG[@]}" "${PACKAGES_SANITIZERS[@]}" "${PACKAGES_DISPLAY[@]}")
            ;;
        gcc | soak) packages+=("${PACKAGES_BUILD[@]}" "${PACKAGES_GCC[@]}" "${PACKAGES_DISPLAY[@]}") ;;
        libcxx) packages+=("${PACKAGES_BUILD[@]}" "${PACKAGES_CLANG[@]}" "${PACKAGES_LIBCXX[@]}") ;;
        phone | phone_quick)
            packages+=("${PACKAGES_BUILD[@]}" "${PACKAGES_CLANG[@]}" "${PACKAGES_SANITIZERS[@]}" "${PACKAGES_LIBCXX[@]}"
                "${PACKAGES_PHONE[@]}" "${PACKAGES_DISPLAY[@]}")
            ;;
        page) mapfile -t -O "${#packages[@]}" packages < <(page_packages) ;;
        plain_changes) packages+=("${PACKAGES_BUILD[@]}" "${PACKAGES_CLANG[@]}" "${PACKAGES_BENCH[@]}") ;;
        tidy | tidy_changes) packages+=("${PACKAGES_BUILD[@]}" "${PACKAGES_CLANG[@]}" "${PACKAGES_TIDY[@]}") ;;
        esac
    done
    ((${#packages[@]})) || return 0
    local unique
    mapfile -t unique < <(printf '%s\n' "${packages[@]}" | sort -u)
    install_packages "${unique[@]}"
}

run_stage() {
    local stage="$1" log="build/logs/$1.log" result="build/logs/$1.result" begin=$SECONDS skipped=""
    s_passed=0 s_failed=1 s_skipped=0 s_remark=""
    rm -f "$result"
    {
        s_failed=0
        if ! "stage_$stage" && ((s_failed == 0)); then
            s_failed=1
        fi
        declare -p s_passed s_failed s_skipped s_remark | sed 's/^declare -- //' >"$result"
    } 2>&1 | follow "$stage" "$log" || true
    if [[ -s "$result" ]]; then
        source "$result"
    fi
    ((s_skipped == 0)) || skipped=", $s_skipped skipped"
    printf '%-12s %5d passed, %d failed%s  %s\n' "$stage" "$s_passed" "$s_failed" "$skipped" \
        "$(duration $((SECONDS - begin)))"
    if ((s_failed)); then
        show_failure "$log"
        say "    The whole story: $log"
    fi
    if [[ -n "$s_remark" ]]; then
        say "$s_remark"
    fi
}

# run_steps STEP...: the steps of a stage. Each counts its checks; one that cannot run has failed.
run_steps() {
    local step passed=0 failed=0 skipped=0 begin
    for step in "$@"; do
        say "== $step"
        begin=$SECONDS
        s_passed=0 s_failed=0 s_skipped=0
        if ! "$step" && ((s_failed == 0)); then
            s_failed=1
        fi
        if ((s_passed + s_failed + s_skipped == 0)); then
            say "error: $step checked nothing"
            s_failed=1
        fi
        say "== $step: $s_passed passed, $s_failed failed, $s_skipped skipped, $(duration $((SECONDS - begin)))"
        passed=$((passed + s_passed)) failed=$((failed + s_failed)) skipped=$((skipped + s_skipped))
    done
    s_passed=$passed s_failed=$failed s_skipped=$skipped
    ((s_failed == 0))
}

one_passed() {
    s_passed=1
    s_failed=0
}

# run_tests PRESET [CTEST-OPTION...]: a build whose tests run on virtual displays, one for each processor.
run_tests() {
    local preset="$1" report status=0
    shift
    report="$PWD/build/$preset/tests.xml"
    rm -f "$report"
    # One more than there are processors: a test on a display waits much of its time.
    with_displays "$(nproc)" "$PWD/build/$preset" \
        ctest --test-dir "build/$preset" -j "$(($(nproc) + 1))" --output-on-failure --output-junit "$report" \
        --resource-spec-file "$PWD/build/$preset/displays/resources.json" "$@" || status=$?
    count_tests "$report" "$status"
}

# count_tests REPORT STATUS: what ctest reported, which ended with this status.
count_tests() {
    local report="$1" status="$2" total
    [[ -s "$report" ]] || return 1
    total="$(count_in "$report" tests)"
    s_failed="$(count_in "$report" failures)"
    s_skipped=$(($(count_in "$report" skipped) + $(count_in "$report" disabled)))
    s_passed=$((total - s_failed - s_skipped))
    # Programs that were not built, or no tests at all.
    if ((s_failed == 0 && (status != 0 || s_passed == 0))); then
        s_failed=1
    fi
    ((s_failed == 0))
}

count_in() { grep -oE "\b$2=\"[0-9]+\"" "$1" | head -n 1 | tr -dc 0-9; }

stage_clang() {
    build clang all && run_tests clang
}

# The build without precompiled headers, so that a missing include is seen: they help this compiler least.
stage_gcc() {
    build gcc all && run_tests gcc
}

# A short soak, with the programs that the stage before it has built.
stage_soak() {
    build gcc zelvora_examples && examples/soak.sh build/gcc --rounds 30 && one_passed
}

# It counts the lines of the SDK too.
stage_asan() {
    build asan all || return 1
    rm -rf build/asan/profiles
    local status=0
    ASAN_OPTIONS=detect_stack_use_after_return=0:strict_string_checks=1 \
    LSAN_OPTIONS="suppressions=$PWD/scripts/leaks.supp:print_suppressions=0" \
    UBSAN_OPTIONS=print_stacktrace=1 \
    LLVM_PROFILE_FILE="$PWD/build/asan/profiles/%4m%c.profraw" \
        run_tests asan || status=1
    s_remark="$(coverage_report build/asan)" || status=1
    return "$status"
}

stage_tsan() {
    build tsan all || return 1
    # GLib, GTK and WebKit are not built for this sanitizer, which does not see their locks: what goes on inside of them
    # is left out, what our code does in their threads is not.
    # JavaScriptCore's collector stops threads by signals, which this sanitizer delivers late, up to a standstill: the
    # pages of a test leave little enough to collect.
    # At its end a process waits for races of threads that are left: a second by itself, for each life of a simulated app too.
    JSC_useGC=0 \
    TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1:ignore_noninstrumented_modules=1:atexit_sleep_ms=10 \
        run_tests tsan
}

stage_libcxx() {
    build libcxx all && one_passed
}

# Many more worlds than the other builds live through, and therefore optimized.
stage_simulation() {
    build simulation zelvora_simulate || return 1
    ctest --test-dir build/simulation -L simulation --output-on-failure && one_passed
}

stage_layers() {
    build debug zelvora_architecture_tests || return 1
    local status=0 output
    output="$(build/debug/tests/architecture/zelvora_architecture_tests 2>&1)" || status=1
    say "$output"
    s_passed="$(sed -nE 's/^\[  PASSED  \] ([0-9]+) tests?\..*/\1/p' <<<"$output")"
    s_failed="$(grep -cE '^\[  FAILED  \] .*\([0-9]+ ms\)$' <<<"$output")" || true
    ((s_passed > 0)) || status=1
    return "$status"
}

our_sources() { git ls-files --cached --others --exclude-standard -- "$@"; }

stage_format() {
    our_sources '*.h' '*.cpp' '*.mm' | xargs -r clang-format-19 --dry-run --Werror && one_passed
}

# Public members without a comment, and references that lead nowhere.
stage_docs() {
    make_docs && one_passed
}

TIDY_FOLDERS=(ZelvoraPlatform ZelvoraIOS ZelvoraAdapters/shared ZelvoraAdapters/memory ZelvoraAdapters/gtk)

stage_tidy() {
    local folder
    for folder in "${TIDY_FOLDERS[@]}"; do
        if [[ -z "$(our_sources "$folder/*.cpp")" ]]; then
            say "There are no sources in $folder."
            return 1
        fi
    done
    tidy_files < <(our_sources "${TIDY_FOLDERS[@]/%//*.cpp}")
}

# changes_in FOLDER...: the files there that differ from the main branch or, on it, from the last commit.
changes_in() {
    local base
    base="$(git merge-base HEAD main 2>/dev/null || git rev-parse HEAD)"
    {
        git diff --name-only --diff-filter=d "$base" -- "$@"
        git ls-files --others --exclude-standard -- "$@"
    } | sort -u
}

stage_tidy_changes() {
    tidy_files < <(changes_in "${TIDY_FOLDERS[@]}" | grep -E '\.(h|cpp)$')
}

# The sources that every other build compiles together, each on its own, which shows what they forget to include.
stage_plain_changes() {
    local sources
    mapfile -t sources < <(changes_in bench examples tests | grep -E '\.cpp$' \
        | grep -vE '^(examples/(adapter|shop-app)|tests/(install|uikit))/' | sed "s|.*|$PWD/&^|")
    if ((${#sources[@]} == 0)); then
        say "There is nothing to compile."
    else
        cmake --preset plain >/dev/null && ninja -C build/plain "${sources[@]}" || return 1
    fi
    one_passed
}

# tidy_files: those that the input names. The files of a folder are read together, as far as they go together.
tidy_files() {
    local files folder
    files="$(cat)"
    if [[ -z "$files" ]]; then
        say "There is nothing to read."
        one_passed
        return
    fi
    cmake --preset debug >/dev/null || return 1
    rm -rf build/tidy
    mkdir -p build/tidy
    for folder in "${TIDY_FOLDERS[@]}"; do
        grep "^$folder/" <<<"$files" | split -l 16 --additional-suffix=.list - "build/tidy/${folder//\//-}-"
    done
    say "to read: $(find build/tidy -name '*.list' | wc -l)"
    find build/tidy -name '*.list' | sort | xargs -P "$(nproc)" -n 1 scripts/tidy.sh && one_passed
}

# coverage_report BUILD: the lines of the SDK that no test ran. What the tools find odd, such as a function that two programs
# compiled differently, is left to the log.
coverage_report() {
    local build="$1" programs=() program
    while IFS= read -r program; do
        programs+=(-object "$program")
    done < <(find "$build/tests" -type f -name 'zelvora*tests' -perm -u+x)
    llvm-profdata-19 merge -sparse "$build"/profiles/*.profraw -o "$build/tests.profdata" >&2 || return 1
    llvm-cov-19 export -format=lcov -instr-profile="$build/tests.profdata" "${programs[@]}" -sources ZelvoraIOS \
        >"$build/coverage.lcov" || return 1
    awk -f scripts/coverage.awk -v "top=$PWD/" -v what=ZelvoraIOS/ "$build/coverage.lcov"
}
