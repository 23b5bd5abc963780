# What each verb needs on Debian 12, and how it gets there.

PACKAGES_BUILD=(
    cmake ninja-build pkgconf binutils libstdc++-12-dev libgtest-dev
    libgtk-4-dev libadwaita-1-dev libwebkitgtk-6.0-dev libsoup-3.0-dev libsystemd-dev nlohmann-json3-dev gnutls-bin esbuild
)
PACKAGES_GCC=(gcc-12 g++-12)
PACKAGES_CLANG=(clang-19 lld-19)
PACKAGES_SANITIZERS=(libclang-rt-19-dev llvm-19)
PACKAGES_LIBCXX=(libc++-19-dev libc++abi-19-dev)
PACKAGES_PHONE=(libgnustep-base-dev libobjc-12-dev musl-dev python3-clang-19 libplist-utils)
PACKAGES_TIDY=(clang-tidy-19 git)
PACKAGES_FORMAT=(clang-format-19 git)
PACKAGES_DOCS=(doxygen)
PACKAGES_BENCH=(libsqlite3-dev libsimdjson-dev llvm-19 gnuplot-nox)
PACKAGES_DISPLAY=(xvfb xauth xdotool dbus-daemon at-spi2-core fonts-nanum)

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

apt_get() {
    # The descriptor of the progress is closed for the packages' own scripts, and some of these fail if it is their output.
    # sudo passes on no other descriptor, so it is opened behind it.
    as_root env DEBIAN_FRONTEND=noninteractive sh -c 'exec apt-get "$@" 3>&1' apt-get \
        -qq -o Dpkg::Use-Pty=0 -o APT::Status-Fd=3 "$@" 2>&1 </dev/null
}

# install_packages NAME...: those that are missing; elsewhere than on Debian it leaves that to the reader.
install_packages() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        say "This is not Debian: nothing is installed. What is needed, by its Debian names: $*"
        return
    fi
    local missing=() name begin=$SECONDS log=build/logs/packages.log
    for name in "$@"; do
        is_installed "$name" || missing+=("$name")
    done
    ((${#missing[@]})) || return 0
    ((EUID == 0)) || command -v sudo >/dev/null \
        || stop "Run this as root or install sudo; these packages are missing: ${missing[*]}"

    say "Installing ${missing[*]}"
    mkdir -p build/logs
    if ! { apt_get update && apt_get install -y --no-install-recommends "${missing[@]}"; } | follow packages "$log"; then
        tail -n 15 "$log" >&2
        stop "The packages could not be installed; $log has the whole story."
    fi
    say "Installed them in $(duration $((SECONDS - begin)))."
}
