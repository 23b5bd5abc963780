#!/usr/bin/env bash
# Type-checks the Swift half of the module and hosts against it, and compares the interface that hosts see with
# module/ZelvoraIOS.swiftinterface. Needs a Swift compiler of 6.0 or later: ZELVORA_SWIFT_ROOT names the root of a system
# that has one. "/" is this one; another, such as a chroot of the next Debian with swiftlang and libc6-dev, is entered
# with chroot, so as root. With --update it writes the interface instead of comparing it.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

root="${ZELVORA_SWIFT_ROOT:-}"
if [[ -z "$root" ]]; then
    echo "skipped: no Swift compiler; set ZELVORA_SWIFT_ROOT"
    exit 0
fi

scratch=$(mktemp -d "${root%/}/tmp/zelvora-swift.XXXXXX")
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$scratch/tests/uikit" "$scratch/examples"
cp -r tests/uikit/decl tests/uikit/swift "$scratch/tests/uikit/"
cp -r module "$scratch/"
cp -r examples/ios "$scratch/examples/"

in_root() {
    if [[ "$root" == / ]]; then
        "$@"
    else
        chroot "$root" "$@"
    fi
}

status=0
in_root bash "${scratch#"${root%/}"}/tests/uikit/swift/check.sh" || status=1

golden=module/ZelvoraIOS.swiftinterface
python3 tests/uikit/swift/interface.py "$scratch/out/framework/ZelvoraIOS.swiftinterface" \
    "$scratch/out/symbols/ZelvoraIOS.symbols.json" "$golden" >"$scratch/interface" || status=1
if [[ "${1:-}" == --update ]]; then
    cp "$scratch/interface" "$golden"
elif diff -u "$golden" "$scratch/interface"; then
    echo "passed: the interface that hosts see"
else
    echo "FAILED: the interface that hosts see differs from $golden"
    status=1
fi
exit "$status"
