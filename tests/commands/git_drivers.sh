#!/usr/bin/env bash
# git_drivers.sh PROGRAM SAMPLE: what README tells of git's drivers, in a repository of its own.
set -euo pipefail
program=$1
sample=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
export GIT_CONFIG_GLOBAL=/dev/null GIT_CONFIG_SYSTEM=/dev/null HOME=$folder LC_ALL=C.UTF-8
export GIT_AUTHOR_NAME=A GIT_AUTHOR_EMAIL=a@example.org GIT_COMMITTER_NAME=A GIT_COMMITTER_EMAIL=a@example.org

fail() {
    echo "$1" >&2
    exit 1
}
# Changes the interface of a package as text: edit FILE FROM TO
edit() {
    "$program" --unpack "$1" edited
    grep -q "$2" edited/scene.json || fail "the sample has no $2"
    sed -i "s/$2/$3/" edited/scene.json
    "$program" --pack edited "$1"
    rm -r edited
}

git init -q -b main .
printf '*.tarn diff=tarn merge=tarn\n' >.gitattributes
git config diff.tarn.command "'$program' --lang en diff --git"
git config merge.tarn.name 'Tarn studio'
git config merge.tarn.driver "'$program' --lang en merge %O %A %B -o %A"
cp "$sample" hud.tarn
git add . && git commit -qm base

git switch -qc theirs
edit hud.tarn '"name":"Inventory",' '"name":"Bag",'
git commit -qam theirs
git switch -q main
edit hud.tarn '"screen_width":1280' '"screen_width":1280,"vertical_guides":[640]'
git diff hud.tarn >words
grep -q 'vertical_guides changed' words || fail "git diff tells: $(cat words)"
git commit -qam ours
git merge -q theirs -m merged || fail "the merge has conflicts"
"$program" --unpack hud.tarn merged
grep -q '"name":"Bag",' merged/scene.json || fail "their change is lost"
grep -q 'vertical_guides":\[640\]' merged/scene.json || fail "our change is lost"

git switch -qc left && edit hud.tarn '"name":"Bag",' '"name":"Left",' && git commit -qam left
git switch -q main && edit hud.tarn '"name":"Bag",' '"name":"Right",' && git commit -qam right
if git merge -q left -m both >told 2>&1; then
    fail "a conflict went unnoticed"
fi
grep -q '"Right".*"Left"' told || fail "the conflict is told as: $(cat told)"
git status --porcelain | grep -q '^UU hud.tarn' || fail "git knows of no conflict"
"$program" --check hud.tarn >/dev/null || fail "what is left cannot be opened"
