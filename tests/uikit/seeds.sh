#!/usr/bin/env bash
# tests/uikit/seeds.sh [NUMBER...]: plants faults, one at a time; for each a named check must say what is wrong, and must find
# nothing without it. Needs the builds "uikit" and "ios-gate", which stay as they are: see seeds/relink.py.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

# The programs count the lines that they run.
export LLVM_PROFILE_FILE=/dev/null
adapter=ZelvoraAdapters/uikit
framework=build/ios-gate/ZelvoraIOS.framework

# Checks of a program or of a framework's binary. Each says whether it is right.
test_passes() { # TEST PROGRAM
    local said
    said="$(tests/uikit/in_new_home.sh timeout 60 "$2" "--gtest_filter=$1" 2>&1)" || { echo "$said"; return 1; }
    grep -q '^\[  PASSED  \] [1-9]' <<<"$said" || { echo "There is no such test."; return 1; }
}
exists() { [[ -s "$1" ]]; }
link_is_right() { tests/uikit/link/check.sh "$(dirname "$1")"; }
manifest_is_right() { python3 tests/uikit/package/privacy.py "$framework/PrivacyInfo.xcprivacy" "$1"; }

# seed NUMBER FAULT FILE EDIT SAID BUILT CHECK...: without the edit the check must pass on what was built; with it, the check or
# already the compiler must say SAID.
seed() {
    local number="$1" fault="$2" file="$3" edit="$4" said="$5" built="$6"
    shift 6
    local work="build/seeds/$number" planted output=""
    planted="$work/$(basename "$built")"
    rm -rf "$work"
    mkdir -p "$work/edited/$(dirname "$file")"
    sed -E "$edit" "$file" >"$work/edited/$file"
    if cmp -s "$file" "$work/edited/$file"; then
        fail "$fault: there is nothing to edit in $file"
    elif ! output="$("$@" "$built" 2>&1)"; then
        fail "$fault: $* fails without it, too"
    elif output="$({ relink "$work/edited" "$built" "$planted" && "$@" "$planted"; } 2>&1)"; then
        fail "$fault: $* passes in spite of it"
    elif ! grep -qF "$said" <<<"$output"; then
        fail "$fault: $* fails, but does not say \"$said\""
    fi
    echo "passed: $fault: $*"
}

relink() { # EDITED BUILT PLANTED
    local build target
    build="$(cut -d / -f 1-2 <<<"$2")"
    target="$(basename "$2")"
    [[ "$2" != "$framework"/* ]] || target=zelvora_framework
    python3 tests/uikit/seeds/relink.py "$build" "$1" "$target" "$3" "${link_options[@]}"
}

fail() {
    printf 'FAILED: %s\n%s\n' "$1" "$(tail -n 40 <<<"$output")"
    exit 1
}

link_options=()
test_program() { printf 'build/uikit/tests/uikit/%s' "$1"; }

seed_1() {
    seed 1 "a peer that does not let go" $adapter/UIKit/Bond.h '/^ +m_kept = nil;$/d' \
        "liveCount" "$(test_program life/uikit_life)" \
        test_passes LifetimeTest.ContainersThatAreOpenedAndPoppedManyTimesLeaveNothing
}
seed_2() {
    seed 2 "the boolean check taken out" $adapter/Foundation/Values.mm '/numberWithBool:(YES|NO)\]\)$/{N;d}' \
        "[  FAILED  ]" "$(test_program contract/uikit_contract_services)" \
        test_passes 'Phone/JSONSerializationContract/*.ReadsEachKindAsItself'
}
seed_3() {
    seed 3 "a wrong selector" $adapter/UIKit/Gestures.mm 's/@selector\(gestureDidChange:\)/@selector(gestureHasChanged:)/' \
        "exception thrown" "$(test_program contract/uikit_contract_ui)" \
        test_passes 'Phone/GestureContract/*.ADragFromTheLeftEdgeBeginsChangesAndEnds'
}
seed_4() {
    seed 4 "a recognizer whose delegate is not kept" $adapter/UIKit/Gestures.mm '/_recognizer = \[made\]/{n;d}' \
        "[  FAILED  ]" "$(test_program contract/uikit_contract_ui)" \
        test_passes 'Phone/ViewControllerContract/*.TheSwipeToPopIsTheSameAtEachCallAndKeepsItsDelegate'
}
seed_5() {
    seed 5 "a missing hop to the main thread" $adapter/Platform.mm \
        's/dispatch_get_main_queue\(\)/dispatch_get_global_queue(QOS_CLASS_DEFAULT, 0)/' \
        "off the main thread" "$(test_program life/uikit_life)" \
        test_passes SequenceTest.ADeferredStartPushesAContainerOnTheEntryPage
}
seed_6() {
    seed 6 "a handler that stays after its view" $adapter/WebKit/UserContentController.mm \
        '/::removeScriptMessageHandler\(/,/^}/{/_handler = nullptr|removeObjectForKey|removeScriptMessageHandlerForName/d}' \
        "[  FAILED  ]" "$(test_program contract/uikit_contract_ui)" \
        test_passes 'Phone/WebViewContract/*.ARemovedHandlerIsNotCalled'
}
seed_7() {
    seed 7 "an API newer than the oldest phone" $adapter/WebKit/WebView.mm \
        's/^namespace zelvora::uikit \{$/@interface WKWebView (Newer)\n- (void)beNewer API_AVAILABLE_IOS(27.0);\n@end\n&/; s/^( +)\[m_native goBack\];$/&\n\1[m_native beNewer];/' \
        "only available on iOS 27.0 or newer" $framework/ZelvoraIOS exists
}
seed_8() {
    seed 8 "a class that is not exported" module/ObjectiveC/ZelvoraLogger.h 's/^ZELVORA_EXPORT //' \
        "< _OBJC_CLASS_\$_ZelvoraLogger" $framework/ZelvoraIOS link_is_right
}
seed_9() {
    # Not among what the framework may take from the system.
    link_options=("-Wl,-U,_mach_absolute_time")
    seed 9 "an API whose reason is not declared" $adapter/Foundation/Clock.mm \
        's/(return \{) \[NSDate date\].timeIntervalSince1970/\1 static_cast<double>(mach_absolute_time())/; s/^#import <Foundation.*/&\nextern "C" unsigned long long mach_absolute_time(void);/' \
        "SystemBootTime is used but not declared" $framework/ZelvoraIOS manifest_is_right
}

if (($# == 1)); then
    "seed_$1"
else
    numbers=("$@")
    ((${#numbers[@]})) || numbers=(1 2 3 4 5 6 7 8 9)
    printf '%s\n' "${numbers[@]}" | xargs -P "$(nproc)" -n 1 "$0"
fi
