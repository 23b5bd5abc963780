#!/usr/bin/env bash
# Runs a program with a home of its own, in which GNUstep keeps the preferences.
set -euo pipefail
home="$(mktemp -d)"
trap 'rm -rf "$home"' EXIT
HOME="$home" GNUSTEP_USER_ROOT="$home/GNUstep" "$@"
