#!/usr/bin/env bash
# ownFiles.sh BUILD PREFIX: a host that added the sources to its build installs its own file, and none of ours.
set -euo pipefail

cmake --install "$1" --prefix "$2"
diff -u --label expected --label "$2" - <(cd "$2" && find . -type f) <<<./share/host/CMakeLists.txt
