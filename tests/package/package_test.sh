#!/usr/bin/env bash
# Builds and runs a game outside of this tree with what a build of the engine installs, or makes one.
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
# What takes time and tests nothing: to optimise, and to copy what a debugger wants to know of the library.
export LDFLAGS=-Wl,--strip-debug CMAKE_TOOLCHAIN_FILE=$work/toolchain.cmake
echo 'set(CMAKE_CXX_FLAGS_RELEASE -DNDEBUG CACHE STRING "")' >"$CMAKE_TOOLCHAIN_FILE"

fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

# logs_version: the log tells the version, and that the game came to its end.
logs_version() {
    grep -qF "** Selvane version $version **" selvane.log || fail "the log does not tell version $version"
    grep -qF "** Game engine stopped **" selvane.log || fail "the game did not come to its end"
}

# holds_only_the_engine FOLDER
holds_only_the_engine() {
    local others
    others=$(find "$1" -type f ! -path '*/include/selvane/*.h' ! -path '*/lib*/cmake/Selvane/*.cmake' \
        ! -name libselvane.a ! -name selvane.pc ! -path '*/bin/selvane-new' ! -path '*/bin/selvane-replay' \
        ! -path '*/bin/selvane-sprite' ! -path '*/selvane-starter/*')
    [ -z "$others" ] || fail "installed, and not the engine's: $others"
}

# By pkg-config, with all headers: none that is installed may need one that is not.
games_build_by_the_debian_package() {
    # The usual gzip takes seconds.
    cpack -G DEB -D CPACK_DEBIAN_COMPRESSION_TYPE=zstd --config "$build/CPackConfig.cmake" -B "$work/packages"
    local package=("$work"/packages/libselvane-dev_*"_$(dpkg --print-architecture).deb")
    [ -e "${package[0]}" ] || fail "another package was made: $(ls "$work/packages")"
    for name in libsfml-dev libx11-dev fonts-inconsolata; do
        [[ " $(dpkg-deb -f "${package[0]}" Depends)," == *" $name"[\ ,]* ]] ||
            fail "does not depend on $name"
    done
    dpkg-deb -x "${package[0]}" "$work/root"
    holds_only_the_engine "$work/root"
    cmake -G Ninja -S "$game" -B cmake-build -DCMAKE_PREFIX_PATH="$work/root/usr"
    grep -qF "Selvane_DIR:PATH=$work/root/usr/lib" cmake-build/CMakeCache.txt || fail "another Selvane was found"
    PKG_CONFIG_PATH=$(dirname "$(find "$work/root" -name selvane.pc)")
    export PKG_CONFIG_PATH
    (cd "$work/root/usr/include" && find . -name '*.h' -printf '#include "%P"\n') >game.cpp
    cat "$game/countdown.cpp" >>game.cpp
    local flags
    read -ra flags <<<"$(pkg-config --cflags --libs selvane)"
    "$CXX" -std=c++20 game.cpp -o countdown "${flags[@]}" "$LDFLAGS"
    env -u DISPLAY -u SELVANE_CONFIG ./countdown
    logs_version
    [ "$(dpkg-deb -f "${package[0]}" Version) $(pkg-config --modversion selvane)" = "$version $version" ] ||
        fail "the package has another version"
}

# Nothing is built, so that a library which is to be installed would be missed.
trees_inside_a_project_install_nothing() {
    cmake -G Ninja -S "$game" -B cmake-build -DSELVANE_TREE="$tree"
    cmake --install cmake-build --prefix "$work/prefix"
    [ ! -e "$work/prefix" ] || fail "installed: $(find "$work/prefix" -type f)"
}

# says TEXT COMMAND...: the command fails, and that is in its answer.
says() {
    local text=$1 answer
    shift
    ! answer=$("$@" 2>&1) || fail "succeeds: $*"
    [[ $answer == *"$text"* ]] || fail "does not say '$text': $*: $answer"
}

# By find_package(). The folder moves with its build folder. There, nothing of the engine's tree is at
# hand.
new_games_pass_their_check_wherever_they_are() {
    local prefix="$work/a prefix"
    cmake --install "$build" --prefix "$prefix"
    holds_only_the_engine "$prefix"
    export CMAKE_PREFIX_PATH="$prefix"
    "$prefix/bin/selvane-new" "My Game"
    grep -qF "window_title:My"$'\xc2\xa0'"Game," "My Game/sv-config.txt" || fail "the title is not My Game"
    cmake -G Ninja -S "My Game" -B "My Game/build"
    mkdir "$work/else where"
    mv "My Game" "$work/else where/it"
    "$work/else where/it/check"
    grep -qF "$work/outside" "$work/else where/it/build/CMakeCache.txt" && fail "the build is of the old place"
    grep -qF "Selvane_DIR:PATH=$prefix/lib" "$work/else where/it/build/CMakeCache.txt" ||
        fail "another Selvane was found"

    cmake --install "$work/else where/it/build" --prefix "$work/games"
    SELVANE_RECORD=game.record SELVANE_CONFIG=$PWD/sv-config.txt SELVANE_LOG_LEVEL=1 "$work/games/bin/My-Game" &
    until grep -qsF "starting game loop" selvane.log; do sleep 0.1; done
    kill $!
    wait $! || [ $? -eq 143 ] || fail "the game did not end by the signal"
    logs_version
    grep -qF "as '$work/games/share/selvane/My-Game/sprites/hero.txt'" selvane.log ||
        fail "the installed game does not find its data: $(cat selvane.log)"
    "$prefix/bin/selvane-replay" "$work/games/bin/My-Game" game.record || fail "its record does not play again"
    "$prefix/bin/selvane-sprite" check "$work/games/share/selvane/My-Game/sprites/"*.txt ||
        fail "its sprites are faulty"
}

new_games_know_the_tree() {
    "$tree/new" my-game "a folder/of games"
    local configure=(cmake -G Ninja -S "a folder/of games" -B cmake-build -DCMAKE_DISABLE_FIND_PACKAGE_Selvane=ON)
    "${configure[@]}"
    echo /nowhere >"a folder/of games/selvane-tree.txt"
    says "There is no engine in /nowhere" "${configure[@]}"
    says "write where it is into selvane-tree.txt" "a folder/of games/pack" --windows
    says "exists already" "$tree/new" other "a folder"
    local name
    for name in "" -x a/b "a " "a,b" Größe; do
        says "'$name' makes no program" "$tree/new" "$name" made
    done
    for name in test ALL selvane "edit_cache" sfml-graphics; do
        says "the name '$name' is taken" "$tree/new" "$name" made
    done
    [ ! -e made ] || fail "a folder was made"
}

version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
"$1"
