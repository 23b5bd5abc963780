#!/usr/bin/env bash
# tests/uikit/syntax.sh FILE...: checks sources for the device without making objects.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
gate=tests/uikit
llvm=/usr/lib/llvm-19/include/c++/v1
mkdir -p build/stubs/site

# Debian's libc++ 19 with availability switched on: what is newer than the oldest phone does not compile.
sed '/_LIBCPP_HAS_NO_VENDOR_AVAILABILITY_ANNOTATIONS/d' "$llvm/__config_site" >build/stubs/site/__config_site

for file in "$@"; do
    language=()
    if [[ "$file" == *.mm || "$file" == *.h ]]; then
        language=(-x objective-c++ -fobjc-arc -fobjc-arc-exceptions -fobjc-weak -Wobjc-missing-super-calls
            -Warc-repeated-use-of-weak -Wnullable-to-nonnull-conversion)
    fi
    clang++-19 -fsyntax-only -target arm64-apple-ios26.2 "${language[@]}" -std=c++23 -nostdinc++ -nostdlibinc \
        -isystem build/stubs/site -isystem "$llvm" -isystem "$gate/decl" -D_GNU_SOURCE -isystem "$gate/runtime/muslshim" \
        -isystem /usr/include/x86_64-linux-musl -I. -Imodule/ObjectiveC -fvisibility=hidden -Wall -Wextra -Werror \
        -Wunguarded-availability-new "$file"
done
