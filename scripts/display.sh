# A virtual display with a message bus and a home of its own, so that nothing of the user's desktop is seen or changed.

# with_display FOLDER COMMAND...: FOLDER keeps the home.
with_display() {
    local home="$1/home" runtime status=0
    shift
    rm -rf "$home"
    mkdir -p "$home"/{data,config,cache,state}
    # The paths of sockets are short or not at all.
    runtime="$(mktemp -d /tmp/zelvora-XXXXXX)"
    env -u WAYLAND_DISPLAY -u DBUS_SESSION_BUS_ADDRESS \
        HOME="$home" XDG_DATA_HOME="$home/data" XDG_CONFIG_HOME="$home/config" XDG_CACHE_HOME="$home/cache" \
        XDG_STATE_HOME="$home/state" XDG_RUNTIME_DIR="$runtime" \
        GDK_BACKEND=x11 GSETTINGS_BACKEND=memory GTK_A11Y=none NO_AT_BRIDGE=1 \
        xvfb-run -a -s "-screen 0 1280x1024x24" dbus-run-session -- "$@" || status=$?
    rm -rf "$runtime"
    return "$status"
}
