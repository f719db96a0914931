#!/usr/bin/env bash
# Records 5,000 steps of the soak, and plays them again.
#   replay_test.sh SOAK REPLAY
set -euo pipefail

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
SELVANE_RECORD=soak.record "$1" 5000 >recorded.txt || true # Writing a record may take memory.
verdict=$("$2" "$1" soak.record 5000 | tail -n 1)
[ "$verdict" = "5,001 steps, all the same" ] || {
    printf '%s\n' "$verdict"
    exit 1
}
