# shellcheck shell=bash
# What ./run, ./test and bench/run share; sourced by them. Its messages go to standard error, so that standard output is
# the program's own.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say() { printf '%s\n' "$*" >&2; }
fail() {
    say "$*"
    exit 1
}

# Prints "<Needed|Optional> <package> <what its heading says>" for every package that is not installed.
missing_packages() {
    local installed
    installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' 2>/dev/null | sed -n 's/^installed //p')
    awk 'NR == FNR { installed[$1] = 1; next }
         /^# (Needed|Optional): / { kind = $2; sub(":", "", kind); sub(/^# [^:]*: /, ""); meaning = $0; next }
         NF && !/^#/ && !($1 in installed) { print kind, $1, meaning }' \
        <(printf '%s\n' "$installed") "$root/scripts/packages.txt"
}

# Changes whenever the list changes or any package is installed or removed.
package_stamp() {
    cat "$root/scripts/packages.txt" <(stat -c '%Y %s' /var/lib/dpkg/status) | sha256sum
}

# Installs the packages named; some may fail, the caller looks again.
apt_install() {
    local as_root=() options=(-y --no-install-recommends -o DPkg::Lock::Timeout=300)
    if [[ $(id -u) != 0 ]]; then
        if ! command -v sudo >/dev/null; then
            say "Packages can only be installed by root, and there is no sudo here."
            return
        fi
        as_root=(sudo)
    fi
    say "Installing: $*"
    "${as_root[@]}" apt-get update -q >&2 || say "The package lists could not be updated; trying with those at hand."
    if ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install "${options[@]}" "$@" >&2; then
        # One package that cannot be had keeps apt from installing the others.
        local package
        for package in "$@"; do
            "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install "${options[@]}" "$package" >&2 || true
        done
    fi
}

install_packages() {
    local stamp_file=$root/build/packages.stamp missing
    if ! command -v dpkg-query >/dev/null; then
        say "This is no Debian system, so packages are not checked; scripts/packages.txt lists what is needed."
        return
    fi
    [[ -f $stamp_file && $(<"$stamp_file") == "$(package_stamp)" ]] && return
    missing=$(missing_packages)
    if [[ -n $missing ]]; then
        # shellcheck disable=SC2046 # names of packages hold no spaces
        apt_install $(awk '{ print $2 }' <<<"$missing")
        missing=$(missing_packages)
    fi
    if [[ -n $missing ]]; then
        say "These packages could not be installed:"
        awk '{ package = $2; $1 = $2 = ""; printf "  %-24s%s\n", package, $0 }' <<<"$missing" >&2
        if grep -q '^Needed ' <<<"$missing"; then
            fail "Install the needed ones (as root: apt-get install <package>), then start again."
        fi
        say "Going on without them. Remove build/packages.stamp to have them tried again."
    fi
    mkdir -p "$root/build"
    package_stamp >"$stamp_file"
}

# configure PRESET [VARIABLE=VALUE...]: runs CMake when the folder is not configured yet, was copied from elsewhere, or
# has other values; ninja sees to everything else.
configure() {
    local preset=$1 options=() setting stale=0
    local folder=$root/build/$preset
    shift
    if [[ ! -f $folder/CMakeCache.txt || ! -f $folder/build.ninja ]]; then
        stale=1
    elif [[ $root/CMakePresets.json -nt $folder/build.ninja ]]; then
        stale=1
    elif ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$folder/CMakeCache.txt"; then
        stale=1
        options+=(--fresh)
    fi
    for setting in "$@"; do
        options+=("-D$setting")
        grep -qE "^${setting%%=*}:[A-Z]+=${setting#*=}\$" "$folder/CMakeCache.txt" 2>/dev/null || stale=1
    done
    [[ $stale == 0 ]] || (cd "$root" && cmake --preset "$preset" "${options[@]}") >&2
}

# build PRESET [TARGET...]
build() {
    local folder=$root/build/$1
    shift
    # Test programs are started during the build to list their tests; they need no display for that.
    QT_QPA_PLATFORM=offscreen ninja -C "$folder" "$@" >&2
}
