#!/usr/bin/env bash
# tests/uikit/seeds.sh [NUMBER...]: plants one fault at a time in a copy of the sources; a named check must fail for each. Needs the
# builds "clang" and "ios-gate", whose libraries it links.
set -euo pipefail
top="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
tree="$top/build/seeds"
log="$top/build/logs/phone_seeds.log"
passed=0
failed=0

copy_sources() {
    mkdir -p "$tree" "$(dirname "$log")"
    # With their times, so that what did not change is not compiled again.
    git -C "$top" ls-files -z --cached --others --exclude-standard \
        | tar -C "$top" --ignore-failed-read --null -T - -cf - | tar -C "$tree" -xf -
}

configure() {
    local launcher=()
    if command -v ccache >/dev/null; then
        launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_OBJCXX_COMPILER_LAUNCHER=ccache)
    fi
    (
        cd "$tree"
        cmake --preset uikit "${launcher[@]}" -DZELVORA_COVERAGE=OFF "-DZELVORA_BUILD_TO_LINK=$top/build/clang"
        cmake --preset ios-gate "${launcher[@]}" "-DZELVORA_BUILD_TO_LINK=$top/build/ios-gate"
    )
}

make_target() { cmake --build "$tree/build/$1" --target "$2"; }

# Checks. Each says whether the sources in the copy are right.
test_passes() { # PROGRAM TEST
    make_target uikit "$1" || { echo "the program does not build, which is another fault"; exit 2; }
    local program
    program="$(find "$tree/build/uikit/tests/uikit" -type f -name "$1")"
    "$tree/tests/uikit/in_new_home.sh" timeout 60 "$program" "--gtest_filter=$2" | tee "$tree/output" || return 1
    grep -q "^\[  PASSED  \] [1-9]" "$tree/output" || { echo "there is no such test"; exit 2; }
}
device_compiles() { make_target ios-gate zelvora_module; }
exports_are_right() {
    make_target ios-gate zelvora_framework || { echo "the framework does not link, which is another fault"; exit 2; }
    (cd "$tree" && tests/uikit/link/check.sh build/ios-gate/ZelvoraIOS.framework)
}
manifest_is_right() {
    make_target ios-gate zelvora_framework || { echo "the framework does not link, which is another fault"; exit 2; }
    local framework="$tree/build/ios-gate/ZelvoraIOS.framework"
    python3 "$tree/tests/uikit/package/privacy.py" "$framework/PrivacyInfo.xcprivacy" "$framework/ZelvoraIOS"
}

# seed NAME FILE EDIT CHECK...: the check must pass without the fault and fail with it.
seed() {
    local name="$1" file="$2" edit="$3" status=0
    shift 3
    echo "== $name: $*"
    if ! ("$@"); then
        report FAILED "$name: $* fails without the fault, too"
        return
    fi
    # Some edits are of several files.
    local files=()
    read -ra files <<<"$file"
    (cd "$tree" && sed -i -E "$edit" "${files[@]}")
    if (cd "$tree" && for one in "${files[@]}"; do ! cmp -s "$one" "$top/$one" || exit 0; done; exit 1); then
        ("$@") || status=$?
        case "$status" in
        0) report FAILED "$name: $* passes in spite of it" ;;
        2) report FAILED "$name: $* could not run" ;;
        *) report passed "$name: $* fails" ;;
        esac
    else
        report FAILED "$name: there is nothing to edit in $file"
    fi
    for one in "${files[@]}"; do
        cp "$top/$one" "$tree/$one"
    done
}

report() {
    printf '%s: %s\n' "$1" "$2" | tee /dev/fd/3
    if [[ "$1" == passed ]]; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
    fi
}

adapter=ZelvoraAdapters/uikit

seed_1() {
    seed "a peer that does not let go" $adapter/UIKit/Bond.h '/^ +m_kept = nil;$/d' \
        test_passes uikit_life LifetimeTest.ContainersThatAreOpenedAndPoppedManyTimesLeaveNothing
}
seed_2() {
    seed "the boolean check taken out" $adapter/Foundation/Values.mm '/numberWithBool:(YES|NO)\]\)$/{N;d}' \
        test_passes uikit_contract_services 'Phone/JSONSerializationContract/*.ReadsEachKindAsItself'
}
seed_3() {
    seed "a wrong selector" $adapter/UIKit/Gestures.mm 's/@selector\(gestureDidChange:\)/@selector(gestureHasChanged:)/' \
        test_passes uikit_contract_ui 'Phone/GestureContract/*.ADragFromTheLeftEdgeBeginsChangesAndEnds'
}
seed_4() {
    seed "a recognizer whose delegate is not kept" $adapter/UIKit/Gestures.mm '/_recognizer = \[made\]/{n;d}' \
        test_passes uikit_contract_ui 'Phone/ViewControllerContract/*.TheSwipeToPopIsTheSameAtEachCallAndKeepsItsDelegate'
}
seed_5() {
    seed "a missing hop to the main thread" $adapter/Platform.mm \
        's/dispatch_get_main_queue\(\)/dispatch_get_global_queue(0, 0)/' \
        test_passes uikit_life SequenceTest.ADeferredStartPushesAContainerOnTheEntryPage
}
seed_6() {
    seed "a handler that stays after its view" $adapter/WebKit/UserContentController.mm \
        '/::removeScriptMessageHandler\(/,/^}/{/_handler = nullptr|removeObjectForKey|removeScriptMessageHandlerForName/d}' \
        test_passes uikit_contract_ui 'Phone/WebViewContract/*.ARemovedHandlerIsNotCalled'
}
seed_7() {
    seed "an API newer than the oldest phone" tests/uikit/decl/WebKit/WebKit.h \
        's/API_AVAILABLE_IOS\(16\.4\)/API_AVAILABLE_IOS(27.0)/' device_compiles
}
seed_8() {
    seed "a class that is not exported" module/ObjectiveC/ZelvoraLogger.h '/ZELVORA_EXPORT$/d; s/^ZELVORA_EXPORT //' \
        exports_are_right
}
seed_9() {
    seed "an API whose reason is not declared" "$adapter/Foundation/Clock.mm tests/uikit/link/symbols.txt" \
        's/(return \{) \[NSDate date\].timeIntervalSince1970/\1 static_cast<double>(mach_absolute_time())/; s/^_malloc$/&\n_mach_absolute_time/; s/^#import <Foundation.*/&\nextern "C" unsigned long long mach_absolute_time(void);/' \
        manifest_is_right
}

# What is built goes to the log, what came of it to the caller.
exec 3>&1 >"$log" 2>&1
copy_sources
configure
numbers=("$@")
((${#numbers[@]})) || numbers=(1 2 3 4 5 6 7 8 9)
for number in "${numbers[@]}"; do
    "seed_$number"
done
echo "$passed passed, $failed failed" >&3
((failed == 0))
