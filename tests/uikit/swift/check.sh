#!/usr/bin/env bash
# Runs where the Swift compiler is, at the top of a copy of the sources: type-checks the overlay and hosts against it, as
# a framework and as a package, and leaves what interface.py reads in out/. Prints a line for each check, "passed: ..." or
# "FAILED: ...", and ends with 1 if one failed.
set -uo pipefail
cd "$(dirname "$0")/../../.."

swift=tests/uikit/swift
failed=0

# The phone's frameworks are modules of our own declarations. Their module map is named, as a search alone would not
# connect a header that is included by another module with the module it belongs to.
phone=(-target x86_64-pc-linux-gnu -I out/phone)
clang=(-Xcc -fmodule-map-file="$PWD/$swift/modules/module.modulemap" -Xcc -isystem -Xcc tests/uikit/decl -Xcc -fblocks)

compile() { swiftc -frontend -enable-objc-interop "${phone[@]}" "${clang[@]}" "$@"; }

passed() { printf 'passed: %s\n' "$1"; }

wrong() {
    printf 'FAILED: %s\n' "$1"
    [[ ! -s out/log ]] || sed 's/^/    /' out/log
    failed=1
}

# must_compile NAME ARGUMENT...: without an error or a warning, but that our stand-ins know no library evolution.
must_compile() {
    if compile "${@:2}" >out/log 2>&1 && ! grep -F 'warning: ' out/log | grep -qvF 'library evolution'; then
        passed "$1"
    else
        wrong "$1"
    fi
}

# must_be_rejected NAME FILE ARGUMENT...: with the error that the file names after "rejected:".
must_be_rejected() {
    local name="$1" file="$2" expected
    expected=$(sed -n 's|^// rejected: ||p' "$file")
    if compile "${@:3}" -typecheck "$file" >out/log 2>&1; then
        : >out/log
        wrong "$name compiles"
    elif ! grep -qF "error: $expected" out/log || [[ -z "$expected" ]]; then
        wrong "$name is rejected for another reason than \"$expected\""
    else
        passed "$name"
    fi
}

mkdir -p out/phone out/symbols out/framework/ZelvoraIOS.framework/{Headers,Modules} out/package
cp module/ObjectiveC/*.h out/framework/ZelvoraIOS.framework/Headers/
cp module/module.modulemap out/framework/ZelvoraIOS.framework/Modules/

for overlay in ObjectiveC Foundation UIKit; do
    must_compile "stand-in for the $overlay overlay" -swift-version 5 -suppress-warnings -emit-module -parse-as-library \
        -module-name "$overlay" "$swift/mock/$overlay.swift" -o "out/phone/$overlay.swiftmodule"
done

framework=(-F out/framework -I out/framework)
package=(-I module/ObjectiveC -I out/package)
overlay=(-emit-module -parse-as-library -module-name ZelvoraIOS module/Swift/*.swift)
must_compile "the overlay in a framework" "${framework[@]}" -swift-version 6 -enable-library-evolution \
    -import-underlying-module "${overlay[@]}" -o out/framework/ZelvoraIOS.swiftmodule \
    -emit-module-interface-path out/framework/ZelvoraIOS.swiftinterface -emit-symbol-graph \
    -emit-symbol-graph-dir out/symbols -symbol-graph-minimum-access-level public
must_compile "the overlay in a package" "${package[@]}" -swift-version 6 "${overlay[@]}" \
    -o out/package/ZelvoraIOS.swiftmodule
must_compile "the overlay, Swift 5" "${package[@]}" -swift-version 5 -suppress-warnings "${overlay[@]}" -o out/swift5.swiftmodule

for version in 5 6; do
    for form in framework package; do
        declare -n search="$form"
        for host in "$swift"/hosts/*.swift; do
            must_compile "$(basename "$host" .swift), $form, Swift $version" "${search[@]}" -swift-version "$version" \
                -typecheck "$host"
        done
        must_compile "examples/ios, $form, Swift $version" "${search[@]}" -swift-version "$version" -parse-as-library \
            -module-name Shop -typecheck examples/ios/Shop/*.swift
        for host in "$swift"/rejected/*.swift; do
            must_be_rejected "$(basename "$host" .swift) is rejected, $form, Swift $version" "$host" "${search[@]}" \
                -swift-version "$version"
        done
    done
done
for host in "$swift"/rejected/swift6/*.swift; do
    must_be_rejected "$(basename "$host" .swift) is rejected, framework, Swift 6" "$host" "${framework[@]}" -swift-version 6
    must_be_rejected "$(basename "$host" .swift) is rejected, package, Swift 6" "$host" "${package[@]}" -swift-version 6
done

exit "$failed"
