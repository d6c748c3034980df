# Sourced by on_x11 and on_wayland: runs a command while servers run, and ends them afterwards.

me=$(basename "$0")
logs=$(mktemp -d)
servers=() names=()

end_all() {
    local i
    for ((i = ${#servers[@]} - 1; i >= 0; --i)); do
        kill "${servers[i]}" 2>/dev/null
        wait "${servers[i]}" 2>/dev/null
    done
    rm -rf "$logs"
}
trap end_all EXIT
trap 'exit 143' TERM
trap 'exit 130' INT

unlucky() {
    return 1
}

# complain SERVER WHAT: prints a message and the end of the server's log.
complain() {
    echo "$me: ${names[$1]} $2"
    tail -n 20 "$logs/$1.log"
}

# start NAME FILE COMMAND...: starts a server and waits until it has written FILE or listens on it,
# for at most 60 seconds.
start() {
    local number=${#servers[@]} file=$2
    names+=("$1")
    shift 2
    "$@" >"$logs/$number.log" 2>&1 &
    servers+=($!)
    for ((tenths = 0; tenths < 600; ++tenths)); do
        [ -s "$file" ] || [ -S "$file" ] && return
        kill -0 "${servers[number]}" 2>/dev/null || break
        sleep 0.1
    done
    complain "$number" "does not start"
    exit 1
}

# run COMMAND...: exits with the command's status. Reports its failure and servers that have ended. A
# command that failed by no fault of its own, as unlucky() tells, is run again, twice at most.
run() {
    local status number tries
    for tries in 1 2 3; do
        "$@" 2> >(tee "$logs/errors" >&2) &
        wait $!
        status=$?
        [ "$status" -ne 0 ] && [ "$tries" -lt 3 ] || break
        sleep 0.5 # for tee
        unlucky || break
        echo "$me: run again: $*"
    done
    [ "$status" -eq 0 ] || echo "$me: status $status of: $*"
    for number in "${!servers[@]}"; do
        kill -0 "${servers[number]}" 2>/dev/null || complain "$number" "has ended"
    done
    exit "$status"
}
