#!/usr/bin/env bash
# on_display.sh PROGRAM...: runs a test on the display that ctest gave it of those that `with_displays` started. Without them
# the tests share the one display, and take turns, as it has one pointer and one focus.
set -euo pipefail

if [[ -n "${CTEST_RESOURCE_GROUP_0_DISPLAYS:-}" && -n "${ZELVORA_DISPLAYS:-}" ]]; then
    number="${CTEST_RESOURCE_GROUP_0_DISPLAYS#id:}"
    source "$ZELVORA_DISPLAYS/${number%%,*}/environment"
elif [[ -n "${DISPLAY:-}" && -n "${XDG_RUNTIME_DIR:-}" && "$*" != *--gtest_list_tests* ]]; then
    exec flock --close "$XDG_RUNTIME_DIR/zelvora-display.lock" "$@"
fi
exec "$@"
