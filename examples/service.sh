# Starting the local service for a script; the script sets `build`.

service_pid=""

stop_service() { [[ -z "$service_pid" ]] || kill "$service_pid" 2>/dev/null || true; }

# start_service DATA [ARGUMENT...]: sets `port`. The script calls stop_service when it ends.
start_service() {
    local data="$1" output="$1/service.log"
    shift
    mkdir -p "$data"
    # Emptied first, so that the loop below cannot read the port of an earlier service.
    : >"$output"
    "$build/examples/service/zelvora-service" --data "$data" "$@" >"$output" 2>&1 &
    service_pid=$!
    for _ in {1..100}; do
        port="$(sed -n 's/^listening //p' "$output")"
        [[ -n "$port" ]] && return
        kill -0 "$service_pid" 2>/dev/null || break
        sleep 0.1
    done
    cat "$output" >&2
    stop "The local service did not start."
}

# without_noise: what the libraries of a display without a desktop complain about.
without_noise() {
    grep --line-buffered -v -e '^(zelvora-host:' -e '^dbus-daemon' -e '^X connection' -e '^$' -e WARNING || true
}
