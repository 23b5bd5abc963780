#!/usr/bin/env bash
# keep_display.sh FOLDER: starts a display, writes its variables to FOLDER/environment, and ends it with the end of the input.
set -euo pipefail
source "${BASH_SOURCE[0]%/*}/display.sh"

variables=(DISPLAY XAUTHORITY DBUS_SESSION_BUS_ADDRESS HOME
    XDG_DATA_HOME XDG_CONFIG_HOME XDG_CACHE_HOME XDG_STATE_HOME XDG_RUNTIME_DIR
    GDK_BACKEND GSETTINGS_BACKEND GTK_A11Y NO_AT_BRIDGE)

if [[ "${2:-}" == started ]]; then
    # Who sees the file reads all of it.
    echo 'unset WAYLAND_DISPLAY' >"$1/environment.part"
    for name in "${variables[@]}"; do
        printf 'export %s=%q\n' "$name" "${!name}"
    done >>"$1/environment.part"
    mv "$1/environment.part" "$1/environment"
    exec cat
fi
with_display "$1" "${BASH_SOURCE[0]}" "$1" started
