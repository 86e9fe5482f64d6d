#!/usr/bin/env bash
# deb_starts.sh BUILD: makes the Debian package of a build, unpacks it into a folder and starts the program from there.
set -euo pipefail
build=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
fail() {
    echo "$1" >&2
    exit 1
}

cpack -G DEB --config "$build/CPackConfig.cmake" -B "$folder/made" >"$folder/log" 2>&1 || fail "$(cat "$folder/log")"
deb=$(echo "$folder"/made/*.deb)
depends=$(dpkg-deb -f "$deb" Depends)
for needed in libqt6widgets6 libqt6network6 libqscintilla2-qt6 liblua5.4-0 libzip4 libassimp5; do
    [[ $depends == *"$needed"* ]] || fail "the package does not depend on $needed, but on: $depends"
done
# A folder whose name needs care; nothing of the build may be used from there.
root="$folder/a b"
dpkg -x "$deb" "$root"
program="$root/usr/bin/tarn-studio"
home="$root/usr/lib/tarn-studio"
export QT_QPA_PLATFORM=offscreen XDG_CONFIG_HOME=$folder/home XDG_DATA_HOME=$folder/home LC_ALL=C.UTF-8
export HOME=$folder/home
for file in "$home"/tarn-studio "$home"/tarn-import "$home"/*.so "$home"/plugins/*.so; do
    used=$(LD_LIBRARY_PATH='' ldd "$file")
    if grep -q 'not found' <<<"$used"; then
        fail "$file: $used"
    fi
    if grep -qF "$build" <<<"$used"; then
        fail "$file takes libraries of the build: $used"
    fi
done

"$program" --version | grep -q tarn-studio || fail "it does not tell its version"
"$program" --lang en --render "$folder/a.png" "$root/usr/share/doc/tarn-studio/samples/hud.tarn"
[[ -s $folder/a.png ]] || fail "it draws no picture"
cat >"$folder/starts.lua" <<'LUA'
local file = studio.args[1]
assert(studio.open(file), "the sample opens")
assert(#studio.dialogs() > 5, "the sample has dialogs")
assert(studio.page("CDlgGuiManager"), "the editor's pages are there")
LUA
"$program" --lang en --script "$folder/starts.lua" "$root/usr/share/doc/tarn-studio/samples/hud.tarn" \
    || fail "the editor does not start"
"$program" --check "$root/usr/share/doc/tarn-studio/samples/hud.tarn" || fail "a sample has errors"

# What the desktop and the shell are told.
share="$root/usr/share"
for file in applications/tarn-studio.desktop mime/packages/tarn-studio.xml icons/hicolor/scalable/apps/tarn-studio.svg \
    icons/hicolor/scalable/mimetypes/application-x-tarn-interface.svg doc/tarn-studio/copyright \
    bash-completion/completions/tarn-studio; do
    [[ -s $share/$file ]] || fail "$file is missing"
done
! command -v update-mime-database >/dev/null || update-mime-database "$share/mime" || fail "the file type is broken"
! command -v desktop-file-validate >/dev/null || desktop-file-validate "$share/applications/tarn-studio.desktop"
man_page=$(zcat -f "$share"/man/man1/tarn-studio.1* | sed 's/\\-/-/g; s/\\f.//g')
completion=$(cat "$share/bash-completion/completions/tarn-studio")
# Every option and command of the help.
"$program" --lang en --help >"$folder/help"
for word in $(grep -oE -- '--[a-z-]+' "$folder/help" | sort -u) diff merge; do
    grep -qwe "$word" <<<"$man_page" || fail "the man page lacks $word"
    grep -qwe "$word" <<<"$completion" || fail "the shell does not complete $word"
done
# shellcheck disable=SC1091
source "$share/bash-completion/completions/tarn-studio"
complete_line() {
    COMP_WORDS=("$@")
    COMP_CWORD=$(($# - 1))
    _tarn_studio
    echo "${COMPREPLY[*]}"
}
[[ $(complete_line tarn-studio --theme l) == light ]] || fail "--theme l is not completed"
[[ $(complete_line tarn-studio merge --th) == --theirs ]] || fail "merge --th is not completed"
echo "$(basename "$deb") starts"
