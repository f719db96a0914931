# Shared by play, check and pack, which source it: they run in the game's folder.
# shellcheck shell=bash
cd -P -- "$(dirname -- "${BASH_SOURCE[0]}")" || exit

fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# install_missing PACKAGE...: of Debian. Other systems are left alone.
install_missing() {
    command -v apt-get >/dev/null || return 0
    local missing=() as_root=() package
    for package in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
            missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    echo "Installing ${missing[*]}"
    # shellcheck disable=SC2016
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive sh -c \
        'apt-get -qq update; apt-get -qq -y install --no-install-recommends "$@" >/dev/null' \
        sh "${missing[@]}" || fail "as root, by hand: apt-get install ${missing[*]}"
}

# Configures and builds the game in the folder build.
build_game() {
    local fresh=()
    # CMake refuses a build folder that came along when the game was moved.
    grep -qsxF "CMAKE_HOME_DIRECTORY:INTERNAL=$PWD" build/CMakeCache.txt || fresh=(--fresh)
    echo "Building"
    cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release "${fresh[@]}" >/dev/null || exit
    NINJA_STATUS='  %f of %t ' cmake --build build || fail "the first error is above"
}
