# What a long command is doing, in one line.

# follow LABEL LOG: copies its input to LOG, and says how far ninja, ctest, apt or clang-tidy have come: on a terminal in a line
# that is rewritten, elsewhere every half minute.
follow() {
    local label="$1" log="$2" begin=$SECONDS said=$SECONDS line doing="" was="" done=0 all=0
    while IFS= read -r line; do
        printf '%s\n' "$line" >&4
        if [[ "$line" =~ ^\[([0-9]+)/([0-9]+)\]\  ]]; then
            doing="building ${BASH_REMATCH[1]} of ${BASH_REMATCH[2]}"
        elif [[ "$line" =~ ^\ *([0-9]+)/([0-9]+)\ Test ]]; then
            doing="testing ${BASH_REMATCH[1]} of ${BASH_REMATCH[2]}"
        elif [[ "$line" =~ ^dlstatus:[^:]*:([0-9]+) ]]; then
            doing="downloading packages, ${BASH_REMATCH[1]} %"
        elif [[ "$line" =~ ^pmstatus:[^:]*:([0-9]+) ]]; then
            doing="installing packages, ${BASH_REMATCH[1]} %"
        elif [[ "$line" =~ ^to\ read:\ ([0-9]+) ]]; then
            all="${BASH_REMATCH[1]}"
        elif [[ "$line" == read:* ]]; then
            done=$((done + 1))
            doing="reading $done of $all"
        fi
        [[ "$doing" != "$was" ]] || continue
        was="$doing"
        if [[ -t 1 ]]; then
            printf '\r%-9s %s  %s\e[K' "$label" "$doing" "$(duration $((SECONDS - begin)))"
        elif ((SECONDS - said >= 30)); then
            said=$SECONDS
            printf '%-9s %s  %s\n' "$label" "$doing" "$(duration $((SECONDS - begin)))"
        fi
    done 4>"$log"
    if [[ -t 1 ]]; then
        printf '\r\e[K'
    fi
}

duration() { printf '%d:%02d' $(($1 / 60)) $(($1 % 60)); }
