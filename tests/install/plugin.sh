#!/usr/bin/env bash
# plugin.sh LIBRARY: a library that contains the SDK exports its own function and the version of the SDK, and nothing else of ours.
# What the standard library's templates make of our types belongs to that library.
set -euo pipefail

diff -u --label expected --label "$1" - <(
    nm -D --defined-only "$1" | awk '{ print $3 }' | grep -vE '^_Z(S|NS|NKS|N9__gnu_cxx)' \
        | grep -iE 'zelvora|hostPlugin' | LC_ALL=C sort
) <<'LIST'
ZelvoraIOSVersionNumber
ZelvoraIOSVersionString
hostPluginRuns
LIST
