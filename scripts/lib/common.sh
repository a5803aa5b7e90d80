# Shared by the commands of ./dev: talking, timing, failing.
# shellcheck shell=bash

[ -n "${HOME:-}" ] || HOME=$(getent passwd "$(id -u)" | cut -d: -f6)
cache=$(realpath -m "${DIALWRIGHT_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/dialwright}")
export DIALWRIGHT_CACHE=$cache
logs=$root/build/logs

# The system's, for which the modules are installed; another may come first on the path.
python3() { /usr/bin/python3 "$@"; }

say() { printf '%s\n' "$*" >&2; }

die() {
    say "dev: $*"
    exit 1
}

refuse_arguments() {
    [ $# -eq 0 ] || { say "dev: '$1' is not an option here; see ./dev --help"; exit 2; }
}

# log_of TITLE: where the step of that title keeps what its command prints. A title can list every package that a bare
# machine lacks; a file name has to stay below 255 bytes.
log_of() { printf '%s' "$logs/$(printf '%s' "${1:0:100}" | tr -c 'A-Za-z0-9' '-').log"; }

# step TITLE COMMAND...: runs the command with its output in a log, shows that it is alive, says how long it took.
# On failure prints the end of the log and ends the run.
step() {
    local title=$1 log started now shown last
    shift
    mkdir -p "$logs"
    log=$(log_of "$title")
    started=$SECONDS
    shown=$SECONDS
    say "== $title"
    # Without descriptor 9, the lock of the cache: what outlives us must not hold it.
    "$@" >"$log" 2>&1 </dev/null 9>&- &
    local pid=$!
    trap 'kill "$pid" 2>/dev/null; exit 130' INT TERM
    while kill -0 "$pid" 2>/dev/null; do
        sleep 0.2
        now=$SECONDS
        if [ $((now - shown)) -ge 15 ]; then
            shown=$now
            last=$(tail -n 1 "$log" | tr -d '\r' | cut -c1-100)
            say "   $((now - started)) s: $last"
        fi
    done
    trap - INT TERM
    if ! wait "$pid"; then
        grep -nE 'error|FAILED|Error' "$log" | head -n 20 >&2 || true
        tail -n 25 "$log" >&2
        die "$title failed; the whole output is in ${log#"$root"/}"
    fi
    say "   done in $((SECONDS - started)) s"
}

# The files of ours that git knows or would know and that are there, filtered by a pattern.
our_files() {
    local file
    git -C "$root" ls-files --cached --others --exclude-standard -- "$@" | while read -r file; do
        [ ! -f "$root/$file" ] || printf '%s\n' "$file"
    done
}

command_clean() {
    refuse_arguments "$@"
    take_cache_lock
    rm -rf "$root/build" "$root/dist"
}
