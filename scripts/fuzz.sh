# The fuzzers: `./run fuzz` and the stage "fuzz" of `./run test`. What a fuzzer learns stays in build/fuzz/learnt, an input that it
# stops on in build/fuzz/found.

FUZZERS=(description dispatch journal json-read json-write lookup url values)
FUZZ_STAGE_SECONDS=20

fuzz() {
    local targets=("${FUZZERS[@]}") seconds=60
    if [[ "${1:-}" =~ ^[a-z-]+$ ]]; then
        [[ " ${FUZZERS[*]} " == *" $1 "* ]] || stop "There is no fuzzer \"$1\"; there are ${FUZZERS[*]}."
        targets=("$1")
        shift
    fi
    if (($#)); then
        [[ "$1" =~ ^[0-9]+$ ]] && seconds="$1" || stop "\"$1\" is no number of seconds."
    fi
    install_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_CLANG[@]}" "${PACKAGES_SANITIZERS[@]}"
    say "Building the fuzzers"
    build_or_stop fuzz all
    run_fuzzers "$seconds" "${targets[@]}"
}

# From the same seed each time, so that a new failure comes from a change and not from chance.
stage_fuzz() {
    build fuzz all && FUZZ_SEED=1 run_fuzzers "$FUZZ_STAGE_SECONDS" "${FUZZERS[@]}" || return 1
    s_passed=${#FUZZERS[@]}
}

# run_fuzzers SECONDS NAME...: as many at once as there are processors. Says how often each ran, and fails if one found something.
run_fuzzers() {
    local seconds="$1" status=0
    shift
    mkdir -p build/fuzz/found
    export -f run_fuzzer
    printf '%s\n' "$@" | xargs -P "$(nproc)" -I NAME bash -c 'run_fuzzer NAME "$1"' - "$seconds" || status=1
    return "$status"
}

run_fuzzer() {
    local name="$1" seconds="$2" learnt="build/fuzz/learnt/$1" log="build/fuzz/$1.log" options=()
    mkdir -p "$learnt"
    if [[ -f "fuzz/dictionaries/$name.dict" ]]; then
        options+=("-dict=fuzz/dictionaries/$name.dict")
    fi
    if ! "build/fuzz/fuzz/zelvora-fuzz-$name" "${options[@]}" -max_total_time="$seconds" -print_final_stats=1 \
        -seed="${FUZZ_SEED:-0}" -rss_limit_mb=2048 -timeout=10 -artifact_prefix="build/fuzz/found/$name-" \
        "$learnt" "fuzz/corpus/$name" >"$log" 2>&1; then
        echo "$name: Failure"
        tail -n 40 "$log"
        return 1
    fi
    sed -nE "s/^stat::number_of_executed_units: +([0-9]+)$/\\1/p" "$log" \
        | awk -v "name=$name" -v "seconds=$seconds" '{ printf "%-12s %d runs, %d a second\n", name, $1, $1 / seconds }'
}
