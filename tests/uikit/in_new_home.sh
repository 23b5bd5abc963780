#!/usr/bin/env bash
# Runs a program with a home of its own, in which GNUstep keeps the preferences: it asks the user database for the user's home,
# not HOME.
set -euo pipefail
home="$(mktemp -d)"
trap 'rm -rf "$home"' EXIT
echo "GNUSTEP_USER_DEFAULTS_DIR=$home/Defaults" >"$home/GNUstep.conf"
HOME="$home" GNUSTEP_CONFIG_FILE="$home/GNUstep.conf" "$@"
