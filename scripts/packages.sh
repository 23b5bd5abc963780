# What each verb needs on Debian 12, and how it gets there.

PACKAGES_BUILD=(
    cmake ninja-build pkgconf g++-12 libgtest-dev
    libgtk-4-dev libwebkitgtk-6.0-dev libsoup-3.0-dev libsystemd-dev libsqlite3-dev nlohmann-json3-dev gnutls-bin
)
PACKAGES_CLANG=(clang-19 lld-19 llvm-19 libclang-rt-19-dev)
PACKAGES_LIBCXX=(libc++-19-dev libc++abi-19-dev)
PACKAGES_LINT=(clang-format-19 clang-tidy-19)
PACKAGES_DISPLAY=(xvfb xauth xdotool dbus-daemon fonts-nanum)

say() { printf '%s\n' "$*"; }

stop() {
    printf '%s\n' "$*" >&2
    exit 1
}

is_installed() { [[ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" == installed ]]; }

as_root() {
    if ((EUID == 0)); then
        "$@"
    else
        sudo "$@"
    fi
}

apt_get() { as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq -o Dpkg::Use-Pty=0 "$@"; }

# install_packages NAME...: those that are missing; elsewhere than on Debian it leaves that to the reader.
install_packages() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        say "This is not Debian: nothing is installed. What is needed, by its Debian names: $*"
        return
    fi
    local missing=() name
    for name in "$@"; do
        is_installed "$name" || missing+=("$name")
    done
    ((${#missing[@]})) || return 0
    ((EUID == 0)) || command -v sudo >/dev/null \
        || stop "Run this as root or install sudo; these packages are missing: ${missing[*]}"

    say "Installing ${missing[*]}"
    mkdir -p build/logs
    if ! { apt_get update && apt_get install -y --no-install-recommends "${missing[@]}"; } >build/logs/packages.log 2>&1 </dev/null; then
        tail -n 15 build/logs/packages.log >&2
        stop "The packages could not be installed; build/logs/packages.log has the whole story."
    fi
}
