#!/usr/bin/env bash
# pkgconfig.sh PREFIX LIBRARY-FOLDER PACKAGES SOURCE PROGRAM: builds a host with the flags of pkg-config only, and runs it.
# The compiler and its flags are in CXX and CXXFLAGS.
set -euo pipefail

prefix="$1" libraries="$1/$2" packages="$3" source="$4" program="$5"
export PKG_CONFIG_PATH="$libraries/pkgconfig"
own="$(dirname "$source")/own"

# shellcheck disable=SC2046,SC2086
"$CXX" $CXXFLAGS -std=c++23 -I"$own" "$source" -o "$program" $(pkg-config --cflags --libs $packages)
LD_LIBRARY_PATH="$libraries" "$program"
# The files name no fixed folder, so that the package can be moved.
! grep -rn "$prefix" "$PKG_CONFIG_PATH"
