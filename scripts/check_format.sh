#!/usr/bin/env bash
# Checks the sources against .clang-format; with --fix it formats them. Versions of clang-format differ in what they
# write, so only the one that the settings are made for is asked.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

version=14
tool=
for candidate in clang-format-$version clang-format; do
    if command -v "$candidate" >/dev/null && "$candidate" --version | grep -q "version $version\."; then
        tool=$candidate
        break
    fi
done
if [[ -z $tool ]]; then
    echo "The format is not checked: clang-format $version is not installed." >&2
    exit 0
fi
options=(--dry-run -Werror)
[[ ${1:-} != --fix ]] || options=(-i)
git ls-files -z '*.cpp' '*.h' | xargs -0 -r "$tool" "${options[@]}" || exit 1
