# Virtual displays, each with a message bus and a home of its own, so that nothing of the user's desktop is seen or changed.

# with_display FOLDER COMMAND...: FOLDER keeps the home.
with_display() {
    local home="$1/home" runtime status=0
    shift
    rm -rf "$home"
    mkdir -p "$home"/{data,config,cache,state}
    # The paths of sockets have to be short.
    runtime="$(mktemp -d /tmp/zelvora-XXXXXX)"
    env -u WAYLAND_DISPLAY -u DBUS_SESSION_BUS_ADDRESS \
        HOME="$home" XDG_DATA_HOME="$home/data" XDG_CONFIG_HOME="$home/config" XDG_CACHE_HOME="$home/cache" \
        XDG_STATE_HOME="$home/state" XDG_RUNTIME_DIR="$runtime" \
        GDK_BACKEND=x11 GSETTINGS_BACKEND=memory GTK_A11Y=none NO_AT_BRIDGE=1 \
        xvfb-run -a -s "-screen 0 1280x1024x24" dbus-run-session -- "$@" || status=$?
    rm -rf "$runtime"
    return "$status"
}

# with_displays COUNT FOLDER COMMAND...: COUNT displays for tests, and one more for COMMAND. ZELVORA_DISPLAYS names the folder
# that has for each of them a folder, 0 and up, with its variables in the file "environment"; "resources.json" lists them for
# ctest. All of it ends with COMMAND, or when this shell is killed.
with_displays() {
    local count="$1" displays="$2/displays" pids=() number status=0
    shift 2
    rm -rf "$displays"
    mkdir -p "$displays"
    # A display ends when no process has this pipe open for writing.
    mkfifo "$displays/open"
    exec 9<>"$displays/open"
    for ((number = 0; number <= count; number++)); do
        mkdir "$displays/$number"
        # In a session of its own, so that the interrupt key does not kill what has to clean up.
        setsid "${BASH_SOURCE[0]%/*}/keep_display.sh" "$displays/$number" \
            <"$displays/open" 9>&- >"$displays/$number/log" 2>&1 &
        pids+=($!)
    done
    if wait_for_displays "$count" "$displays"; then
        list_displays "$count" >"$displays/resources.json"
        (
            exec 9>&-
            source "$displays/$count/environment"
            ZELVORA_DISPLAYS="$displays" exec setpriv --pdeathsig TERM "$@"
        ) || status=$?
    else
        status=1
    fi
    exec 9>&-
    wait "${pids[@]}" || true
    return "$status"
}

wait_for_displays() {
    local count="$1" displays="$2" number
    for ((number = 0; number <= count; number++)); do
        for _ in {1..300}; do
            [[ ! -e "$displays/$number/environment" ]] || continue 2
            sleep 0.1
        done
        echo "Display $number did not start:" >&2
        cat "$displays/$number/log" >&2
        return 1
    done
}

list_displays() {
    local number separator=""
    printf '{ "version": { "major": 1, "minor": 0 }, "local": [ { "displays": ['
    for ((number = 0; number < $1; number++)); do
        printf '%s { "id": "%d" }' "$separator" "$number"
        separator=","
    done
    printf ' ] } ] }\n'
}
