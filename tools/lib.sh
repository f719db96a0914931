# Shared by this tree's scripts, which source it: they run in the top folder, with a standard input
# that is always there, and share a few words.
# shellcheck shell=bash
root=$(CDPATH='' cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd -P)
cd "$root" || exit
[ -t 0 ] || exec </dev/null

say() { printf '%s\n' "$*"; }

fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# alone FILE: waits, and says so, while another script has the lock FILE. It is held until this one and
# the commands that it started have ended.
alone() {
    local lock
    command -v flock >/dev/null || return 0
    exec {lock}>>"$1"
    flock -n "$lock" || {
        say "${0##*/}: waits for another one, process $(cat "$1"), that works here"
        flock "$lock"
    }
    printf '%s' $$ >"$1"
}

# A terminal that can rewrite its line, as ninja and ctest then do.
on_terminal() { [ -t 1 ] && [ "${TERM:-dumb}" != dumb ]; }

# quietly LOG COMMAND...: what the command prints goes to the file LOG, and its end to the screen
# only if it fails.
quietly() {
    local log=$1
    shift
    if ! "$@" >"$log" 2>&1; then
        tail -n 40 "$log" >&2
        return 1
    fi
}

# Copies standard input, but of the line that ninja and ctest print for each step that went well
# only about ten, so that a long run shows in a log that it goes on and no more than that.
only_tenths() {
    local line shown=0 tenth
    while IFS= read -r line; do
        [[ $line =~ ^\ +Start\ +[0-9]+: ]] && continue
        if [[ $line =~ ^\[([0-9]+)/([0-9]+)\]\  || $line =~ ^\ *([0-9]+)/([0-9]+)\ Test\ .*\ Passed\  ]]; then
            tenth=$((10 * BASH_REMATCH[1] / BASH_REMATCH[2]))
            [ "$tenth" -gt "$shown" ] || continue
            shown=$tenth
            line="  ${BASH_REMATCH[1]} of ${BASH_REMATCH[2]}"
        fi
        printf '%s\n' "$line"
    done
}
