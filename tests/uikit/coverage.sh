#!/usr/bin/env bash
# tests/uikit/coverage.sh BUILD: which lines of the phone's adapter and module the tests of this build ran. Fails below 95 %.
set -euo pipefail
build="$1"
least=95
programs=()
while IFS= read -r program; do
    programs+=(-object "$program")
done < <(find "$build/tests/uikit" -type f -perm -u+x -name 'uikit_*' | sort)
((${#programs[@]})) || { echo "error: there are no test programs in $build"; exit 1; }
llvm-profdata-19 merge -sparse "$build"/profiles/*.profraw -o "$build/tests.profdata"
llvm-cov-19 export -format=lcov -instr-profile="$build/tests.profdata" "${programs[@]}" \
    -sources ZelvoraAdapters/uikit module/ObjectiveC >"$build/coverage.lcov"
table="$(awk -f scripts/coverage.awk -v "top=$PWD/" -v "what=the phone's adapter and module" "$build/coverage.lcov")"
printf '%s\n' "$table"
share="$(sed -nE '1s/.*: ([0-9.]+) %.*/\1/p' <<<"$table")"
if awk -v share="$share" -v least="$least" 'BEGIN { exit !(share >= least) }'; then
    echo "1 passed, 0 failed"
else
    echo "error: $share % of the lines ran, fewer than $least %"
    echo "0 passed, 1 failed"
    exit 1
fi
