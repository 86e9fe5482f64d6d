#!/usr/bin/env bash
# Installs what Flash movies are played with; the program finds it at its next start. It is optional: without it a control
# shows what its movie's header says.
#
#   scripts/setup_movies.sh            into the user's data folder
#   scripts/setup_movies.sh FOLDER     into FOLDER; programs started with TARN_MOVIE_PLAYER=FOLDER take it from there
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
lists=$here # installed, they lie beside this script
[[ -f $lists/package-lock.json ]] || lists=$here/../host/movies/player
into=${1:-${XDG_DATA_HOME:-$HOME/.local/share}/tarn-studio/movie-player}

fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

for program in node npm; do
    command -v "$program" >/dev/null || fail "$program is missing: install Node 20 or later, with npm, and try again."
done
major=$(node --version | sed -E 's/^v([0-9]+).*/\1/')
((major >= 20)) || fail "Node $(node --version) is too old: version 20 or later is needed."

mkdir -p "$into"
cp "$lists/package.json" "$lists/package-lock.json" "$into/"
# Exactly the versions of the lock file, checked by their sums; nothing of theirs is run here. `npm ci` would insist on what
# the canvas has for other systems.
npm install --prefix "$into" --ignore-scripts --no-audit --no-fund
printf 'Movies are played with what is in %s now.\n' "$into"
