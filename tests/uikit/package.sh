#!/usr/bin/env bash
# What is around the phone's code: the module map and the public headers, the property lists, the privacy manifest against
# what the framework takes from the system, and the Swift package against the tree. Where build/ios-gate has no framework,
# what needs one is skipped, and so is what needs a Swift compiler (see swift.sh) where there is none.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

framework=build/ios-gate/ZelvoraIOS.framework
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
status=0

# check NAME COMMAND...: one check; what the command says is shown if it fails.
check() {
    local name="$1" said
    shift
    if said="$("$@" 2>&1)"; then
        printf 'passed: %s\n' "$name"
    else
        printf 'FAILED: %s\n%s\n' "$name" "$said"
        status=1
    fi
}

# plistutil reads what is not well-formed, too.
is_property_list() {
    plistutil -i "$1" -o "$work/plist" && [[ -s "$work/plist" ]] \
        && python3 -c 'import plistlib, sys; plistlib.load(open(sys.argv[1], "rb"))' "$1"
}

# As plain Objective-C: nothing of C++ may be in what hosts import.
is_objective_c() {
    printf '#import "%s"\n' "$PWD/$1" >"$work/host.m"
    clang-19 -fsyntax-only -target arm64-apple-ios26.2 -fobjc-arc -fblocks -nostdlibinc -isystem tests/uikit/decl \
        -isystem /usr/include/x86_64-linux-musl -Wall -Wextra -Wnullability-completeness -Werror "$work/host.m"
}

# The block of the phone's guide, which imports the module where this has its header.
guide_is_objective_c() {
    sed -n '/^```objc$/,/^```$/{/^```/d;s/^@import ZelvoraIOS;.*/#import "ZelvoraIOS.h"\n#import <dispatch\/dispatch.h>/;p}' \
        docs/phone.md >"$work/guide.m"
    grep -q '^@implementation' "$work/guide.m" \
        && clang-19 -fsyntax-only -target arm64-apple-ios26.2 -fobjc-arc -fblocks -nostdlibinc -isystem tests/uikit/decl \
            -isystem /usr/include/x86_64-linux-musl -Imodule/ObjectiveC -Wall -Wextra -Wno-unused-parameter \
            -Wnullability-completeness -Werror "$work/guide.m"
}

umbrella_is_whole() {
    diff <(cd module/ObjectiveC && printf '%s\n' Zelvora*.h | grep -v '^ZelvoraIOS\.h$' | sort) \
        <(sed -nE 's/^#import "(.*)"$/\1/p' module/ObjectiveC/ZelvoraIOS.h | sort)
}

map_has_the_umbrella() { grep -qE "^$2module $3 \{\$" "$1" && grep -q '^    umbrella header "ZelvoraIOS.h"$' "$1"; }

# A file of the package that CMake writes: it must be what the addresses of the sources give.
package_files_are_current() {
    cmake -D "FOLDER=$work/package" -P cmake/ZelvoraPackage.cmake && diff -r module/Package "$work/package"
}

# The domains that the phone refuses without permission may have no host that the shop needs.
domain_is_refused() {
    ! cmake -D "FOLDER=$work/refused" -D "ZELVORA_TRACKING_DOMAINS=$1" -P cmake/ZelvoraPackage.cmake >"$work/refusal" 2>&1 \
        && grep -q "The tracking domains have $1" "$work/refusal"
}

# says TEXT ARGUMENT...: what the script says of these arguments. CMake breaks long lines.
says() {
    cmake "${@:2}" -D "FOLDER=$work/said" -P cmake/ZelvoraPackage.cmake >"$work/said.txt" 2>&1
    local result=$?
    tr -s '\n ' ' ' <"$work/said.txt" | grep -qF -- "$1" || { cat "$work/said.txt"; return 2; }
    return "$result"
}

is_refused_with() {
    says "$@"
    (($? == 1))
}

own_addresses=(-D ZELVORA_ADDRESS_PRODUCTION_WEB_HOST=shop.test -D ZELVORA_ADDRESS_DEVELOPMENT_WEB_HOST=dev.shop.test
    -D ZELVORA_ADDRESS_PRODUCTION_API_BASE=https://api.shop.test
    -D ZELVORA_ADDRESS_DEVELOPMENT_API_BASE=https://api-dev.shop.test
    -D ZELVORA_ADDRESS_LOOKUP_ENDPOINT=https://lookup.shop.test/
    -D ZELVORA_ADDRESS_TRACKING_ENDPOINT=https://collector.test/v1/events)

six_addresses_are_written_in_silence() {
    cmake "${own_addresses[@]}" -D "FOLDER=$work/own" -P cmake/ZelvoraPackage.cmake >"$work/own.txt" 2>&1 \
        && [[ ! -s "$work/own.txt" ]] && [[ "$(grep -c '\.test' "$work"/own/include/ZelvoraIOS/ZelvoraSDK/internal/*.h)" == 6 ]] \
        && grep -qF '<string>collector.test</string>' "$work/own/PrivacyInfo.xcprivacy"
}

raw_values_agree() {
    diff <(sed -nE 's/.*rawValues \{ (.*) \};/\1/p' ZelvoraIOS/ZelvoraSDKError.cpp) \
        <(sed -nE 's/^  case [a-z]+ = ("[A-Z]+")$/\1/p' module/Swift/ZelvoraSDKError.swift | paste -sd, | sed 's/,/, /g')
}

framework_is_whole() {
    local file
    for file in Info.plist PrivacyInfo.xcprivacy Modules/module.modulemap; do
        [[ -s "$framework/$file" ]] || { echo "there is no $file"; return 1; }
    done
    diff <(cd module/ObjectiveC && printf '%s\n' *.h) <(cd "$framework/Headers" && printf '%s\n' *.h) \
        && cmp module/module.modulemap "$framework/Modules/module.modulemap"
}

package_can_be_read() {
    local root="$ZELVORA_SWIFT_ROOT" scratch
    scratch=$(mktemp -d "${root%/}/tmp/zelvora-package.XXXXXX") || return 1
    cp -r Package.swift ZelvoraPlatform ZelvoraIOS ZelvoraAdapters module "$scratch/"
    local inside="${scratch#"${root%/}"}" enter=(chroot "$root")
    [[ "$root" != / ]] || enter=()
    "${enter[@]}" swift package --disable-sandbox --package-path "$inside" dump-package >"$work/dump.json" \
        && "${enter[@]}" swift package --disable-sandbox --package-path "$inside" describe --type json >"$work/targets.json"
    local result=$?
    rm -rf "$scratch"
    ((result == 0)) && python3 - "$work/targets.json" <<'PYTHON'
import json, sys
targets = {target["name"]: target for target in json.load(open(sys.argv[1]))["targets"]}
assert set(targets) == {"ZelvoraCore", "ZelvoraObjC", "ZelvoraIOS"}, sorted(targets)
assert targets["ZelvoraIOS"]["module_type"] == "SwiftTarget", targets["ZelvoraIOS"]["module_type"]
other = [file for target in targets.values() for file in target["sources"] if not file.endswith((".cpp", ".mm", ".swift"))]
assert not other, other
PYTHON
}

for header in module/ObjectiveC/*.h; do
    check "$(basename "$header") is Objective-C by itself" is_objective_c "$header"
done
check "the guide's Objective-C compiles" guide_is_objective_c
check "the umbrella header names every public header" umbrella_is_whole
check "the framework's module map" map_has_the_umbrella module/module.modulemap "framework " ZelvoraIOS
check "the package's module map" map_has_the_umbrella module/ObjectiveC/module.modulemap "" ZelvoraObjC
check "the severities are the same in C++ and in Swift" raw_values_agree
check "the package's privacy manifest is a property list" is_property_list module/Package/PrivacyInfo.xcprivacy
check "the example's Info.plist is a property list" is_property_list examples/ios/Shop/Info.plist
check "the package has the addresses and the manifest that CMake writes" package_files_are_current
for domain in lookup.zelvora.example zelvora.example shop.zelvora.example mall.shop.zelvora.example; do
    check "$domain is refused as a tracking domain" domain_is_refused "$domain"
done
check "six addresses are written in silence" six_addresses_are_written_in_silence
check "an address that there is not is refused" is_refused_with "There is no address ZELVORA_ADDRESS_LOOKUP" \
    -D ZELVORA_ADDRESS_LOOKUP=https://lookup.shop.test/
for host in https://shop.test shop.test/ shop.test/kr; do
    check "$host is refused as a web host" is_refused_with "ZELVORA_ADDRESS_PRODUCTION_WEB_HOST is a host without a scheme" \
        "${own_addresses[@]}" -D "ZELVORA_ADDRESS_PRODUCTION_WEB_HOST=$host"
done
check "an address that stays under .example is warned of" says "no event arrives: ZELVORA_ADDRESS_LOOKUP_ENDPOINT " \
    "${own_addresses[@]}" -D ZELVORA_ADDRESS_LOOKUP_ENDPOINT=https://lookup.zelvora.example/
check "a tracking domain that stays under .example is warned of" says "no event arrives: ZELVORA_TRACKING_DOMAINS " \
    "${own_addresses[@]}" -D ZELVORA_TRACKING_DOMAINS=collector.zelvora.example
check "the package's targets hold every source once" python3 tests/uikit/package/tree.py Package.swift

if [[ -e "$framework/ZelvoraIOS" ]]; then
    check "the framework is whole" framework_is_whole
    check "the framework's Info.plist is a property list" is_property_list "$framework/Info.plist"
    check "the privacy manifest agrees with the binary" python3 tests/uikit/package/privacy.py \
        "$framework/PrivacyInfo.xcprivacy" "$framework/ZelvoraIOS"
else
    echo "skipped: no framework in build/ios-gate to compare the privacy manifest with"
fi
if [[ -n "${ZELVORA_SWIFT_ROOT:-}" ]]; then
    check "the package can be read" package_can_be_read
else
    echo "skipped: no Swift compiler; set ZELVORA_SWIFT_ROOT"
fi
exit "$status"
