#!/usr/bin/env bash
# Makes the pictures of the guide: scripts/guide.sh [-p PROGRAM] [PAGE...]
#
# Runs the scripts of scripts/guide in order, in English and in Chinese, on a virtual display. Each does what its page of
# the guide tells, so the interface that the guide builds is built here too, and a step that no longer works ends this with
# the script's error. With PAGE, such as 07, only the pictures of these pages are written. Besides what the program's tests
# need, this needs the Debian package imagemagick, which crops the pictures and gives them a palette.
set -euo pipefail
root=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/..
root=$(readlink -f "$root")

program=$root/build/release/bin/tarn-studio
if [[ ${1:-} == -p ]]; then
    program=$(readlink -f "$2")
    shift 2
fi
[[ -x $program ]] || { echo "There is no program $program; ./run builds it." >&2; exit 1; }
command -v convert >/dev/null || { echo "convert is missing; install the package imagemagick." >&2; exit 1; }

if [[ -z ${GUIDE_DISPLAY:-} ]]; then
    GUIDE_DISPLAY=1 exec xvfb-run -a -s "-screen 0 1920x1200x24" "$0" -p "$program" "$@"
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -m 700 "$work/run"
PATH=$(dirname "$program"):$PATH
export QT_QPA_PLATFORM=xcb LIBGL_ALWAYS_SOFTWARE=1 XDG_RUNTIME_DIR=$work/run LC_ALL=C.UTF-8

# A picture's name may end in the part of it that is wanted: 03-pages@300x400+900+20.png. 256 colours are enough.
take() {
    local name=${1##*/} area=
    [[ $name == *@* ]] && area=${name#*@} area=${area%.png}
    convert "$1" ${area:+-crop "$area" +repage} -strip -dither None -colors 255 \
        "png8:$2/${name%%[@.]*}.png"
}

for language in en zh; do
    export XDG_CONFIG_HOME=$work/$language/config XDG_DATA_HOME=$work/$language/data
    mkdir -p "$work/$language/pictures" "$root/docs/guide/$language"
    for script in "$root"/scripts/guide/[0-9]*.lua; do
        page=$(basename "$script" .lua)
        "$program" --lang $language --theme light --script "$script" "$work/$language" "$(dirname "$program")/samples" ||
            { echo "$page failed in $language." >&2; exit 1; }
        if [[ $# -gt 0 && " $* " != *" ${page%%-*} "* ]]; then
            rm -f "$work/$language/pictures"/*.png
        fi
        for picture in "$work/$language/pictures"/*.png; do
            [[ -e $picture ]] || continue
            take "$picture" "$root/docs/guide/$language"
            rm "$picture"
        done
    done
done
