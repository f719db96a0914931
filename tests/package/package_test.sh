#!/usr/bin/env bash
# Builds and runs a game outside of this tree with what a build of the engine installs.
#   tests/package/package_test.sh CASE BUILD-FOLDER
# The compiler is the environment's CXX.
set -euo pipefail

tree=$(CDPATH='' cd -- "$(dirname -- "${BASH_SOURCE[0]}")/../.." && pwd -P)
game=$tree/tests/package/game
build=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/outside"
cd "$work/outside"
echo "headless:true," >sv-config.txt

fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

# runs_with_version PROGRAM VERSION: it plays to its end, and the log tells that version.
runs_with_version() {
    env -u DISPLAY -u SELVANE_CONFIG "$1" || fail "$1 failed"
    grep -qF "** Selvane version $2 **" selvane.log || fail "the log does not tell version $2"
    grep -qF "** Game engine stopped **" selvane.log || fail "the game did not come to its end"
}

# builds_by_find_package PREFIX
builds_by_find_package() {
    cmake -G Ninja -S "$game" -B cmake-build -DCMAKE_PREFIX_PATH="$1"
    grep -qF "Selvane_DIR:PATH=$1/lib" cmake-build/CMakeCache.txt || fail "another Selvane was found"
    cmake --build cmake-build
    runs_with_version cmake-build/countdown "$version"
}

# holds_only_the_engine FOLDER
holds_only_the_engine() {
    local others
    others=$(find "$1" -type f ! -path '*/include/selvane/*.h' ! -path '*/lib*/cmake/Selvane/*.cmake' \
        ! -name libselvane.a ! -name selvane.pc)
    [ -z "$others" ] || fail "installed, and not the engine's: $others"
}

games_build_by_find_package() {
    cmake --install "$build" --prefix "$work/a prefix"
    holds_only_the_engine "$work/a prefix"
    builds_by_find_package "$work/a prefix"
}

# All headers, too: none that is installed may need one that is not.
games_build_by_pkg_config() {
    cmake --install "$build" --prefix "$work/prefix"
    PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name selvane.pc)")
    export PKG_CONFIG_PATH
    (cd "$work/prefix/include" && find . -name '*.h' -printf '#include "%P"\n') >headers.cpp
    local flags
    read -ra flags <<<"$(pkg-config --cflags --libs selvane)"
    "$CXX" -std=c++20 "$game/countdown.cpp" headers.cpp -o countdown "${flags[@]}"
    runs_with_version ./countdown "$(pkg-config --modversion selvane)"
}

games_build_by_the_debian_package() {
    cpack -G DEB --config "$build/CPackConfig.cmake" -B "$work/packages"
    local package=("$work"/packages/libselvane-dev_*"_$(dpkg --print-architecture).deb")
    [ -e "${package[0]}" ] || fail "another package was made: $(ls "$work/packages")"
    for name in libsfml-dev libx11-dev fonts-inconsolata; do
        [[ " $(dpkg-deb -f "${package[0]}" Depends)," == *" $name"[\ ,]* ]] ||
            fail "does not depend on $name"
    done
    dpkg-deb -x "${package[0]}" "$work/root"
    holds_only_the_engine "$work/root"
    version=$(dpkg-deb -f "${package[0]}" Version)
    builds_by_find_package "$work/root/usr"
}

# Nothing is built, so that a library which is to be installed would be missed.
trees_inside_a_project_install_nothing() {
    cmake -G Ninja -S "$game" -B cmake-build -DSELVANE_TREE="$tree"
    cmake --install cmake-build --prefix "$work/prefix"
    [ ! -e "$work/prefix" ] || fail "installed: $(find "$work/prefix" -type f)"
}

version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
"$1"
